"""Judges published documents, and what is sent and answered under them, with code that shares nothing with the program.

`form FOLDER` prints what of each document is not of the published form. `values` reads a JSON list of
{"document": path, "part": "input" or "output", "value": …} and prints what is wrong. Both print a JSON list of sentences.
"""
import json
import os
import re
import sys

from jsonschema import Draft202012Validator, RefResolver

TOP = ["openapi", "info", "components", "paths", "servers", "security"]


def type_name(model):
    words = re.split(r"[/\-. ]", model.split("/", 1)[1])
    return "".join(word[:1].upper() + word[1:] for word in words)


def references(value):
    if isinstance(value, list):
        for each in value:
            yield from references(each)
    if isinstance(value, dict):
        for key, each in value.items():
            if key == "$ref":
                yield each
            yield from references(each)


def schema_of(document, part):
    for path, item in document["paths"].items():
        if part == "input" and "post" in item:
            return item["post"]["requestBody"]["content"]["application/json"]["schema"]
        if part == "output" and path.endswith("{request_id}"):
            return item["get"]["responses"]["200"]["content"]["application/json"]["schema"]
    raise SystemExit("no such path")


def form(document, name):
    model = document["info"]["x-fal-metadata"]["endpointId"]
    base = "/" + model
    follow = base + "/requests/{request_id}"
    if model.replace("/", "__") + ".json" != name:
        yield "the file has another name"
    if list(document) != TOP:
        yield "top keys are " + ", ".join(document)
    if document["openapi"] != "3.0.4" or document["servers"] != [{"url": "https://queue.fal.run"}]:
        yield "version or servers"
    if list(document["paths"]) != [follow + "/status", follow + "/cancel", base, follow]:
        yield "paths are " + ", ".join(document["paths"])
    for part in ("input", "output"):
        if schema_of(document, part) != {"$ref": f"#/components/schemas/{type_name(model)}{part.capitalize()}"}:
            yield "the name of its " + part
    input_type = document["components"]["schemas"].get(type_name(model) + "Input", {})
    order = input_type.get("x-fal-order-properties")
    if order is not None and sorted(order) != sorted(input_type.get("properties", order)):
        yield "the order of its properties"


def dangling(document):
    schemas = document["components"]["schemas"]
    return [each for each in references(document) if each.split("/")[-1] not in schemas]


def plain(value):
    """The document's dialect told in the standard's words."""
    if isinstance(value, list):
        return [plain(each) for each in value]
    if not isinstance(value, dict):
        return value
    made = {key: plain(each) for key, each in value.items()}
    if made.pop("nullable", None) is True:
        made = {"anyOf": [made, {"type": "null"}]}
    return made


def problems(path, part, value):
    with open(path, encoding="utf-8") as file:
        document = plain(json.load(file))
    validator = Draft202012Validator(schema_of(document, part), resolver=RefResolver("", document))
    for error in validator.iter_errors(value):
        yield f"{os.path.basename(path)}: {'/'.join(map(str, error.path))}: {error.message}"


def judged_folder(folder):
    for name in sorted(os.listdir(folder)):
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            document = json.load(file)
        for sentence in form(document, name):
            yield f"{name}: {sentence}"
        for reference in dangling(document):
            yield f"{name}: {reference} leads nowhere"


if sys.argv[1] == "form":
    print(json.dumps(list(judged_folder(sys.argv[2]))))
else:
    print(json.dumps([line for each in json.load(sys.stdin) for line in problems(each["document"], each["part"], each["value"])]))
