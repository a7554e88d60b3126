#include "document.h"

#include <cctype>

#include "document_types.h"

namespace sandbox {

namespace {

constexpr std::string_view schemasPath = "#/components/schemas/";

Field answerField(const char* name, const char* type, const char* about) {
  json::object schema;
  schema["type"] = type;
  return Field(name, std::move(schema)).without("title").about(about);
}

Field openObject(const char* name, const char* about) {
  return answerField(name, "object", about).with("additionalProperties", true);
}

json::object queueStatus() {
  json::object status = objectOfFields(
      "QueueStatus",
      {oneOf("status", {"IN_QUEUE", "IN_PROGRESS", "COMPLETED"}, nullptr).without("title").required(),
       answerField("request_id", "string", "The request id.").required(),
       answerField("response_url", "string", "The response url."),
       answerField("status_url", "string", "The status url."), answerField("cancel_url", "string", "The cancel url."),
       openObject("logs", "The logs."), openObject("metrics", "The metrics."),
       answerField("queue_position", "integer", "The queue position.")},
      false);
  status.stable_erase("title");
  return status;
}

json::object information(const Titles& titles) {
  const std::string page = "https://fal.ai/models/" + titles.id;
  json::object metadata;
  metadata["endpointId"] = titles.id;
  metadata["category"] = titles.category;
  metadata["thumbnailUrl"] = "";
  metadata["playgroundUrl"] = page;
  metadata["documentationUrl"] = page + "/api";
  metadata["about"] = titles.about;
  json::object about;
  about["title"] = "Queue OpenAPI for " + titles.id;
  about["version"] = "1.0.0";
  about["description"] = "The OpenAPI schema for the " + titles.id + " queue.";
  about["x-fal-metadata"] = std::move(metadata);
  return about;
}

json::object withContent(json::object schema) {
  json::object content;
  content["application/json"].emplace_object()["schema"] = std::move(schema);
  return content;
}

json::object responses(const char* about, json::object schema) {
  json::object answer;
  answer["description"] = about;
  answer["content"] = withContent(std::move(schema));
  json::object all;
  all["200"] = std::move(answer);
  return all;
}

json::object parameter(const char* name, const char* place, bool required, const char* type, const char* about) {
  json::object all;
  all["name"] = name;
  all["in"] = place;
  all["required"] = required;
  json::object& schema = all["schema"].emplace_object();
  schema["type"] = type;
  schema["description"] = about;
  return all;
}

json::object followUp(const char* method, json::array parameters, json::object answers) {
  parameters.insert(parameters.begin(), parameter("request_id", "path", true, "string", "Request ID"));
  json::object operation;
  operation["parameters"] = std::move(parameters);
  operation["responses"] = std::move(answers);
  json::object path;
  path[method] = std::move(operation);
  return path;
}

json::object success() {
  json::object flag;
  flag["type"] = "boolean";
  flag["description"] = "Whether the request was cancelled successfully.";
  json::object schema;
  schema["type"] = "object";
  schema["properties"].emplace_object()["success"] = std::move(flag);
  return schema;
}

json::object submission(const std::string& input) {
  json::object body;
  body["required"] = true;
  body["content"] = withContent(referenceTo(input));
  json::object post;
  post["requestBody"] = std::move(body);
  post["responses"] = responses("The request status.", referenceTo("QueueStatus"));
  json::object path;
  path["post"] = std::move(post);
  return path;
}

json::object paths(const std::string& id, const std::string& type) {
  const std::string base = "/" + id;
  const std::string request = base + "/requests/{request_id}";
  const auto logs =
      parameter("logs", "query", false, "number", "Whether to include logs (`1`) in the response or not (`0`).");
  json::object all;
  all[request + "/status"] =
      followUp("get", json::array{logs}, responses("The request status.", referenceTo("QueueStatus")));
  all[request + "/cancel"] = followUp("put", {}, responses("The request was cancelled.", success()));
  all[base] = submission(type + "Input");
  all[request] = followUp("get", {}, responses("Result of the request.", referenceTo(type + "Output")));
  return all;
}

json::object inputOf(const Sheet& sheet, const std::string& title) {
  json::object input = objectOfFields(title, sheet.input, sheet.saysOrder);
  if (sheet.withoutProperties) input.stable_erase("properties");
  if (sheet.closed) input["additionalProperties"] = false;
  if (!sheet.aboutInput.empty()) input["description"] = sheet.aboutInput;
  if (sheet.undescribed) input["required"].as_array().emplace_back(*sheet.undescribed);
  return input;
}

// The first half of the fields in one type, the others in another, and the input made of both.
void putInParts(json::object& schemas, const std::string& name, const Sheet& sheet) {
  const auto middle = sheet.input.begin() + std::ptrdiff_t(sheet.input.size() / 2);
  schemas[name + "Base"] = objectOfFields(name + "Base", {sheet.input.begin(), middle});
  schemas[name + "More"] = objectOfFields(name + "More", {middle, sheet.input.end()});
  json::object whole;
  whole["title"] = name;
  whole["allOf"] = json::array{referenceTo(name + "Base"), referenceTo(name + "More")};
  schemas[name] = std::move(whole);
}

void putInput(json::object& schemas, const std::string& type, const Sheet& sheet) {
  const std::string name = type + "Input";
  if (sheet.circular) {
    schemas[name] = referenceTo(name + "Settings");
    schemas[name + "Settings"] = referenceTo(name);
  } else if (sheet.inputInParts) {
    putInParts(schemas, name, sheet);
  } else if (sheet.inputByTwoSteps) {
    schemas[name] = referenceTo(type + "Request");
    schemas[type + "Request"] = inputOf(sheet, type + "Request");
  } else {
    schemas[name] = inputOf(sheet, type + "Request");
  }
}

void collectReferences(const json::value& value, std::vector<std::string>& names) {
  if (const auto* array = value.if_array())
    for (const json::value& each : *array) collectReferences(each, names);
  const auto* object = value.if_object();
  if (!object) return;
  for (const auto& [key, each] : *object) {
    if (key == "$ref" && each.is_string())
      names.push_back(std::string(std::string_view(each.get_string()).substr(schemasPath.size())));
    else
      collectReferences(each, names);
  }
}

// Shared types refer to others, so it goes on until nothing is missing that could be had.
void addSharedTypes(json::object& schemas) {
  std::vector<std::string> names;
  collectReferences(json::value(schemas), names);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = names[i];
    if (schemas.contains(name)) continue;
    const auto type = sharedType(name);
    if (!type) continue;
    schemas[name] = *type;
    collectReferences(json::value(*type), names);
  }
}

json::object schemasOf(const std::string& type, const Sheet& sheet) {
  json::object schemas;
  schemas["QueueStatus"] = queueStatus();
  if (sheet.dangling) return schemas;
  putInput(schemas, type, sheet);
  schemas[type + "Output"] = objectOfFields(type + "Result", sheet.output);
  for (const auto* fields : {&sheet.input, &sheet.output})
    for (const Field& field : *fields)
      for (const auto& [name, schema] : field.types()) schemas[name] = schema;
  addSharedTypes(schemas);
  return schemas;
}

json::object securitySchemes() {
  json::object key;
  key["type"] = "apiKey";
  key["in"] = "header";
  key["name"] = "Authorization";
  key["description"] = "Fal Key";
  json::object all;
  all["apiKeyAuth"] = std::move(key);
  return all;
}

json::array listOfOne(const char* key, json::value value) {
  json::object one;
  one[key] = std::move(value);
  return json::array{json::value(std::move(one))};
}

}  // namespace

std::string typeNameOf(std::string_view id) {
  std::string name;
  bool starts = true;
  for (const char sign : id.substr(id.find('/') + 1)) {
    const bool cuts = sign == '/' || sign == '-' || sign == '.' || sign == ' ';
    if (!cuts) name += starts ? char(std::toupper(static_cast<unsigned char>(sign))) : sign;
    starts = cuts;
  }
  return name;
}

json::object documentOf(const Titles& titles, const Sheet& sheet) {
  const std::string type = typeNameOf(titles.id);
  json::object document;
  document["openapi"] = "3.0.4";
  document["info"] = information(titles);
  json::object& components = document["components"].emplace_object();
  components["securitySchemes"] = securitySchemes();
  components["schemas"] = schemasOf(type, sheet);
  document["paths"] = paths(titles.id, type);
  document["servers"] = listOfOne("url", "https://queue.fal.run");
  document["security"] = listOfOne("apiKeyAuth", json::array());
  return document;
}

}  // namespace sandbox
