"""Holds request bodies against published documents, with code that shares nothing with the studio.

Reads a JSON list of {"document": path, "bodies": [...]} and prints a JSON list of sentences, empty when all hold. A field
that the document does not list is an error too.
"""
import json
import sys

from jsonschema import Draft202012Validator, RefResolver


def plain(schema):
    """The document's dialect told in the standard's words."""
    if isinstance(schema, list):
        return [plain(each) for each in schema]
    if not isinstance(schema, dict):
        return schema
    made = {key: plain(value) for key, value in schema.items()}
    for bound, beyond in (("minimum", "exclusiveMinimum"), ("maximum", "exclusiveMaximum")):
        if made.get(beyond) is True:
            made[beyond] = made.pop(bound)
        elif made.get(beyond) is False:
            del made[beyond]
    if made.get("nullable") is True and isinstance(made.get("type"), str):
        made["type"] = [made["type"], "null"]
    return made


def input_of(document):
    for path in document["paths"].values():
        if "post" in path:
            return path["post"]["requestBody"]["content"]["application/json"]["schema"]
    raise SystemExit("no POST in the document")


def names_in(schema, resolver):
    """The fields that a schema knows, wherever it takes them from."""
    if "$ref" in schema:
        yield from names_in(resolver.resolve(schema["$ref"])[1], resolver)
    yield from schema.get("properties", {})
    for word in ("allOf", "anyOf", "oneOf"):
        for part in schema.get(word, []):
            yield from names_in(part, resolver)


def breaches(path, bodies):
    with open(path, encoding="utf-8") as file:
        document = plain(json.load(file))
    resolver = RefResolver("", document)
    schema = input_of(document)
    known = set(names_in(schema, resolver))
    validator = Draft202012Validator(schema, resolver=resolver)
    for body in bodies:
        for error in validator.iter_errors(body):
            yield f"{path}: {'/'.join(map(str, error.path))}: {error.message} in {json.dumps(body)}"
        for field in body:
            if field not in known:
                yield f"{path}: {field} is unknown"


print(json.dumps([line for each in json.load(sys.stdin) for line in breaches(each["document"], each["bodies"])]))
