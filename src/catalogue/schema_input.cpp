#include "catalogue/schema_input.h"

#include <QSet>

namespace sorvan::catalogue {

namespace {

const json::object* propertiesOf(const Schema& schema) {
  const json::value* properties = schema.member("properties");
  const json::object* found = properties ? properties->if_object() : nullptr;
  return found && !found->empty() ? found : nullptr;
}

/// The texts of a list, each once.
QStringList namesIn(const Schema& schema, std::string_view key) {
  QStringList names;
  const json::value* list = schema.member(key);
  if (!list || !list->is_array()) return names;
  for (const json::value& each : list->get_array()) {
    if (each.is_string()) names << textOf(each.get_string());
  }
  names.removeDuplicates();
  return names;
}

QStringList inOrder(const Schema& input, const json::object& properties) {
  QStringList names = namesIn(input, "x-fal-order-properties");
  for (const auto& property : properties) names << textOf(property.key());
  names.removeDuplicates();
  return names;
}

bool isUsable(const SchemaField& field) { return field.exists() || field.isImageSize(); }

}  // namespace

SchemaInput::SchemaInput(const SchemaDocument& document, const Schema& input) {
  const json::object* properties = propertiesOf(input);
  if (!properties) return;
  requiredNames = namesIn(input, "required");
  const QSet<QString> needed(requiredNames.begin(), requiredNames.end());
  fields.reserve(properties->size());
  for (const QString& name : inOrder(input, *properties)) {
    const json::value* property = properties->if_contains(name.toStdString());
    if (!property) continue;
    SchemaField each(document, name, document.resolved(property), needed.contains(name));
    if (!isUsable(each)) continue;
    places.emplace(name, fields.size());
    fields.push_back(std::move(each));
  }
}

const SchemaField* SchemaInput::field(const QString& name) const {
  const auto found = places.find(name);
  return found == places.end() ? nullptr : &fields[found->second];
}

Schema withProperties(const SchemaDocument& document, const Schema& schema) {
  if (propertiesOf(schema)) return schema;
  for (Schema& variant : document.variants(schema)) {
    if (propertiesOf(variant)) return std::move(variant);
  }
  return {};
}

}  // namespace sorvan::catalogue
