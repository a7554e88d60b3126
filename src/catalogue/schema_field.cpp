#include "catalogue/schema_field.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QSet>

#include <cmath>

namespace sorvan::catalogue {

namespace {

/// Whole numbers beyond this are not exact as JSON numbers.
constexpr double largestWhole = 9007199254740992.0;

std::optional<double> numberIn(const json::value* value) {
  if (!value || !value->is_number()) return std::nullopt;
  const double number = value->to_number<double>();
  if (!std::isfinite(number)) return std::nullopt;
  return number;
}

bool isTrue(const json::value* value) { return value && value->is_bool() && value->get_bool(); }

bool isWhole(double number) { return number == std::floor(number) && std::abs(number) <= largestWhole; }

bool namesType(std::string_view name, ValueType type) {
  switch (type) {
    case ValueType::string:
      return name == "string";
    case ValueType::number:
      return name == "integer" || name == "number";
    case ValueType::boolean:
      return name == "boolean";
    case ValueType::array:
      return name == "array";
  }
  return false;
}

bool isOfType(const json::value& value, ValueType type) {
  switch (type) {
    case ValueType::string:
      return value.is_string();
    case ValueType::number:
      return value.is_number();
    case ValueType::boolean:
      return value.is_bool();
    case ValueType::array:
      return value.is_array();
  }
  return false;
}

/// What the `type` of a schema, one name or several, says of a type.
std::optional<bool> declaredType(const Schema& schema, ValueType type) {
  const json::value* declared = schema.member("type");
  if (!declared) return std::nullopt;
  if (declared->is_string()) return namesType(declared->get_string(), type);
  if (!declared->is_array()) return std::nullopt;
  return std::any_of(declared->get_array().begin(), declared->get_array().end(),
                     [&](const json::value& each) { return each.is_string() && namesType(each.get_string(), type); });
}

const json::array* enumOf(const Schema& schema) {
  const json::value* list = schema.member("enum");
  return list ? list->if_array() : nullptr;
}

/// What the values of a schema say of a type when it declares none.
std::optional<bool> listedType(const Schema& schema, ValueType type) {
  if (const json::value* only = schema.member("const")) return isOfType(*only, type);
  const json::array* list = enumOf(schema);
  if (!list) return std::nullopt;
  return std::any_of(list->begin(), list->end(), [&](const json::value& each) { return isOfType(each, type); });
}

/// The lower bound of one schema. An excluded bound of whole numbers is the next one.
std::optional<double> lowerOf(const Schema& schema) {
  const json::value* excluded = schema.member("exclusiveMinimum");
  const auto bound = numberIn(schema.member("minimum"));
  const auto beyond = numberIn(excluded);
  if (beyond && (!bound || *beyond >= *bound)) return std::floor(*beyond) + 1;
  if (bound && isTrue(excluded)) return std::floor(*bound) + 1;
  return bound;
}

std::optional<double> upperOf(const Schema& schema) {
  const json::value* excluded = schema.member("exclusiveMaximum");
  const auto bound = numberIn(schema.member("maximum"));
  const auto beyond = numberIn(excluded);
  if (beyond && (!bound || *beyond <= *bound)) return std::ceil(*beyond) - 1;
  if (bound && isTrue(excluded)) return std::ceil(*bound) - 1;
  return bound;
}

std::optional<ClosedRange<qint64>> wholeRangeOf(const Schema& schema) {
  if (declaredType(schema, ValueType::number) == false) return std::nullopt;
  // Bounds beside a list do not make more of it.
  if (enumOf(schema) || schema.member("const")) return std::nullopt;
  const auto lower = lowerOf(schema);
  const auto upper = upperOf(schema);
  if (!lower || !upper || !isWhole(*lower) || !isWhole(*upper) || *lower >= *upper) return std::nullopt;
  return ClosedRange<qint64>{static_cast<qint64>(*lower), static_cast<qint64>(*upper)};
}

bool isMultipleOf(double number, double step) {
  if (step <= 0) return true;
  const double times = number / step;
  return std::abs(times - std::round(times)) < 1e-6;
}

bool isOtherMedia(std::string_view mark) { return mark == "video" || mark == "audio" || mark == "archive"; }

std::string_view markOf(const Schema& schema) {
  if (const std::string_view mark = schema.text("_fal_ui_field"); !mark.empty()) return mark;
  const json::value* hints = schema.member("ui");
  const json::value* field = hints && hints->is_object() ? hints->get_object().if_contains("field") : nullptr;
  return field && field->is_string() ? std::string_view(field->get_string()) : std::string_view();
}

/// The limit of one schema, beside its other keywords or among the service's own.
std::optional<double> byteLimitOf(const Schema& schema) {
  if (const auto limit = numberIn(schema.member("max_file_size"))) return limit;
  const json::value* own = schema.member("x-fal");
  return own && own->is_object() ? numberIn(own->get_object().if_contains("max_file_size")) : std::nullopt;
}

QJsonValue qtValue(const json::value& value) {
  const std::string text = '[' + json::serialize(value) + ']';
  return QJsonDocument::fromJson(QByteArray::fromStdString(text)).array().at(0);
}

bool isSame(const json::value& left, const json::value& right) {
  const auto number = numberIn(&left);
  return number ? number == numberIn(&right) : left == right;
}

bool isAmong(const json::value& value, const json::array* list) {
  return !list || std::any_of(list->begin(), list->end(), [&](const json::value& each) { return isSame(each, value); });
}

}  // namespace

QString textOf(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

std::optional<QString> valueText(const json::value& value) {
  if (value.is_string()) return textOf(value.get_string());
  const auto number = numberIn(&value);
  if (!number) return std::nullopt;
  if (isWhole(*number)) return QString::number(static_cast<qint64>(*number));
  return QString::number(*number, 'g', QLocale::FloatingPointShortest);
}

SchemaField::SchemaField(const SchemaDocument& from, QString name, Schema schema, bool required)
    : document(&from), fieldName(std::move(name)), listed(required), places{std::move(schema)} {
  std::vector<Schema> variants = document->variants(places.front());
  places.insert(places.end(), std::make_move_iterator(variants.begin()), std::make_move_iterator(variants.end()));
  for (const Schema& place : places) {
    const json::value* only = place.member("const");
    if (!only || only->is_null() || !onlyValue.empty()) continue;
    onlyValue.push_back(*only);
  }
}

bool SchemaField::leadsNowhere() const {
  return places.size() > 1 &&
         std::all_of(places.begin() + 1, places.end(), [](const Schema& place) { return place.isAbsent(); });
}

std::optional<bool> SchemaField::typeAnswer(ValueType type) const {
  std::optional<bool> answer;
  for (const Schema& place : places) {
    const auto said = declaredType(place, type);
    const auto shown = said ? said : listedType(place, type);
    if (shown) answer = answer.value_or(false) || *shown;
  }
  return answer;
}

bool SchemaField::isImageSize() const {
  for (const Schema& place : places) {
    for (const std::string& name : place.names) {
      if (name == "ImageSize") return true;
    }
    const json::value* properties = place.member("properties");
    const json::object* sides = properties ? properties->if_object() : nullptr;
    if (sides && sides->contains("width") && sides->contains("height")) return true;
  }
  return false;
}

std::optional<SchemaField> SchemaField::side(std::string_view name) const {
  for (const Schema& place : places) {
    const json::value* properties = place.member("properties");
    const json::object* sides = properties ? properties->if_object() : nullptr;
    if (sides && sides->contains(name)) {
      return SchemaField(*document, textOf(name), document->resolved(sides->if_contains(name)), false);
    }
  }
  return std::nullopt;
}

std::vector<Schema> SchemaField::withItems() const {
  std::vector<Schema> all = places;
  for (const Schema& place : places) {
    const Schema items = document->resolved(place.member("items"));
    if (items.isAbsent()) continue;
    all.push_back(items);
    for (Schema& variant : document->variants(items)) all.push_back(std::move(variant));
  }
  return all;
}

bool SchemaField::isListOfTexts() const {
  if (!accepts(ValueType::array)) return false;
  bool anyItems = false;
  for (const Schema& place : places) {
    const json::value* items = place.member("items");
    if (!items) continue;
    anyItems = true;
    if (SchemaField(*document, fieldName, document->resolved(items), false).acceptsAnyText()) return true;
  }
  return !anyItems;
}

bool SchemaField::isMarkedAsOtherMedia() const {
  const std::vector<Schema> all = withItems();
  return std::any_of(all.begin(), all.end(), [](const Schema& schema) { return isOtherMedia(markOf(schema)); });
}

const json::array* SchemaField::list() const {
  for (const Schema& place : places) {
    if (const json::array* values = enumOf(place)) return values;
    if (const json::value* only = place.member("const"); only && !only->is_null()) return &onlyValue;
  }
  return nullptr;
}

std::optional<QStringList> SchemaField::texts() const {
  const json::array* values = list();
  // Texts in a field that takes none are no choice.
  if (!values || !accepts(ValueType::string)) return std::nullopt;
  QStringList found;
  for (const json::value& value : *values) {
    if (value.is_null()) continue;
    if (!value.is_string()) return std::nullopt;
    found << textOf(value.get_string());
  }
  found.removeDuplicates();
  if (found.isEmpty()) return std::nullopt;
  return found;
}

std::vector<ListedValue> SchemaField::textsAndNumbers() const {
  std::vector<ListedValue> found;
  const json::array* values = list();
  if (!values) return found;
  QSet<QString> seen;
  for (const json::value& value : *values) {
    const auto text = valueText(value);
    if (!text || seen.contains(*text) || !accepts(value.is_string() ? ValueType::string : ValueType::number)) continue;
    seen.insert(*text);
    found.push_back({*text, value.is_number()});
  }
  return found;
}

std::optional<ClosedRange<qint64>> SchemaField::wholeRange() const {
  for (const Schema& place : places) {
    if (const auto range = wholeRangeOf(place)) return range;
  }
  return std::nullopt;
}

std::optional<double> SchemaField::lowest() const {
  for (const Schema& place : places) {
    if (const auto bound = lowerOf(place)) return bound;
  }
  return std::nullopt;
}

std::optional<double> SchemaField::highest() const {
  for (const Schema& place : places) {
    if (const auto bound = upperOf(place)) return bound;
  }
  return std::nullopt;
}

std::optional<double> SchemaField::step() const {
  for (const Schema& place : places) {
    const auto said = numberIn(place.member("multipleOf"));
    if (said && *said > 0) return said;
  }
  return std::nullopt;
}

bool SchemaField::isMultiple(double number) const {
  return std::all_of(places.begin(), places.end(), [&](const Schema& place) {
    const auto step = numberIn(place.member("multipleOf"));
    return !step || isMultipleOf(number, *step);
  });
}

std::optional<QString> SchemaField::defaultText() const {
  for (const Schema& place : places) {
    const json::value* value = place.member("default");
    if (!value) continue;
    if (value->is_bool()) return value->get_bool() ? QStringLiteral("true") : QStringLiteral("false");
    if (const auto text = valueText(*value)) return text;
  }
  return std::nullopt;
}

bool SchemaField::takesNumber(double number) const {
  const auto least = lowest();
  const auto most = highest();
  return (!least || number >= *least) && (!most || number <= *most) && isMultiple(number);
}

bool SchemaField::takes(const json::value& value) const {
  if (value.is_null() || !isAmong(value, list())) return false;
  for (const ValueType type : {ValueType::string, ValueType::number, ValueType::boolean, ValueType::array}) {
    if (isOfType(value, type) && !accepts(type)) return false;
  }
  const auto number = numberIn(&value);
  return number ? takesNumber(*number) : !value.is_number();
}

std::optional<QJsonValue> SchemaField::fallback() const {
  for (const Schema& place : places) {
    const json::value* value = place.member("default");
    if (value && takes(*value)) return qtValue(*value);
  }
  if (const json::array* values = list()) {
    const auto first = std::find_if(values->begin(), values->end(), [&](const auto& each) { return takes(each); });
    if (first != values->end()) return qtValue(*first);
  }
  const auto bound = lowest();
  if (!bound || !takes(json::value(*bound))) return std::nullopt;
  return isWhole(*bound) ? QJsonValue(static_cast<qint64>(*bound)) : QJsonValue(*bound);
}

std::optional<qint64> SchemaField::byteLimit() const {
  std::optional<qint64> smallest;
  for (const Schema& schema : withItems()) {
    const auto limit = byteLimitOf(schema);
    if (!limit || *limit < 1 || *limit > largestWhole) continue;
    const auto bytes = static_cast<qint64>(*limit);
    smallest = std::min(smallest.value_or(bytes), bytes);
  }
  return smallest;
}

std::optional<int> SchemaField::count(std::string_view keyword) const {
  for (const Schema& place : places) {
    const auto number = numberIn(place.member(keyword));
    if (number && *number >= 1 && *number <= 1000000) return static_cast<int>(*number);
  }
  return std::nullopt;
}

}  // namespace sorvan::catalogue
