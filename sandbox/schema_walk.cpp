#include "schema_walk.h"

namespace sandbox {

namespace {

constexpr int deepest = 32;

// Puts what `more` says into `schema`, where it says nothing itself; properties and required names are joined.
void merge(json::object& schema, const json::object& more) {
  for (const auto& [key, value] : more) {
    if (!schema.contains(key)) {
      schema[key] = value;
    } else if (key == "properties") {
      for (const auto& [name, property] : value.as_object()) schema["properties"].as_object().emplace(name, property);
    } else if (key == "required") {
      for (const json::value& name : value.as_array()) schema["required"].as_array().push_back(name);
    }
  }
}

std::string_view lastPartOf(std::string_view reference) { return reference.substr(reference.rfind('/') + 1); }

}  // namespace

const json::object* objectIn(const json::object& object, std::string_view key) {
  const json::value* value = object.if_contains(key);
  return value ? value->if_object() : nullptr;
}

const json::array* arrayIn(const json::object& object, std::string_view key) {
  const json::value* value = object.if_contains(key);
  return value ? value->if_array() : nullptr;
}

std::string textIn(const json::object& object, std::string_view key) {
  const json::value* value = object.if_contains(key);
  return value && value->is_string() ? std::string(value->get_string()) : std::string();
}

const json::object* SchemaWalk::bodyOf(std::string_view method, bool request) const {
  const json::object* paths = objectIn(document_, "paths");
  const json::object* body = nullptr;
  if (!paths) return nullptr;
  for (const auto& [path, item] : *paths) {
    if (path.ends_with("/status") || !item.as_object().contains(method)) continue;
    const json::object& operation = *objectIn(item.as_object(), method);
    body = request ? objectIn(operation, "requestBody") : objectIn(*objectIn(operation, "responses"), "200");
  }
  if (!body) return nullptr;
  return objectIn(*objectIn(*objectIn(*body, "content"), "application/json"), "schema");
}

const json::object* SchemaWalk::input() const { return bodyOf("post", true); }
const json::object* SchemaWalk::output() const { return bodyOf("get", false); }

json::object SchemaWalk::resolved(const json::object& schema) const { return resolved(schema, 0); }

json::object SchemaWalk::resolved(const json::object& schema, int depth) const {
  json::object whole = schema;
  if (depth > deepest) return {};
  if (const std::string reference = textIn(schema, "$ref"); !reference.empty()) {
    const json::object* schemas = objectIn(*objectIn(document_, "components"), "schemas");
    const json::object* target = schemas ? objectIn(*schemas, lastPartOf(reference)) : nullptr;
    whole.stable_erase("$ref");
    if (!target) return {};
    merge(whole, resolved(*target, depth + 1));
  }
  if (const json::array* parts = arrayIn(schema, "allOf")) {
    whole.stable_erase("allOf");
    for (const json::value& part : *parts) merge(whole, resolved(part.as_object(), depth + 1));
  }
  return whole;
}

std::vector<json::object> SchemaWalk::variantsOf(const json::object& schema) const {
  std::vector<json::object> variants;
  for (const char* keyword : {"anyOf", "oneOf"}) {
    const json::array* all = arrayIn(schema, keyword);
    if (!all) continue;
    for (const json::value& each : *all) variants.push_back(each.as_object());
  }
  if (variants.empty()) variants.push_back(schema);
  return variants;
}

}  // namespace sandbox
