#include "field.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace sandbox {

namespace {

// "image_size" becomes "Image Size".
std::string titleOf(std::string_view name) {
  std::string title;
  bool starts = true;
  for (const char sign : name) {
    const bool joins = sign == '_';
    title += joins ? ' ' : starts ? char(std::toupper(static_cast<unsigned char>(sign))) : sign;
    starts = joins;
  }
  return title;
}

bool saysWhatItIs(std::string_view keyword) {
  static constexpr std::array<std::string_view, 19> words{
      "type",       "enum",       "const",    "minimum", "maximum", "exclusiveMinimum", "exclusiveMaximum",
      "items",      "minItems",   "maxItems", "pattern", "format",  "minLength",        "maxLength",
      "multipleOf", "properties", "required", "$ref",    "ui"};
  return std::find(words.begin(), words.end(), keyword) != words.end();
}

const char* const schemasPath = "#/components/schemas/";

}  // namespace

Field::Field(std::string name, json::object schema) : name_(std::move(name)) {
  schema_ = std::move(schema);
  if (!schema_.contains("title")) schema_["title"] = titleOf(name_);
}

Field Field::required() const {
  Field field = *this;
  field.required_ = true;
  field.schema_.stable_erase("default");
  return field;
}

Field Field::with(std::string_view keyword, json::value value) const {
  Field field = *this;
  field.schema_[keyword] = std::move(value);
  return field;
}

Field Field::without(std::string_view keyword) const {
  Field field = *this;
  field.schema_.stable_erase(keyword);
  return field;
}

Field Field::between(json::value least, json::value most) const {
  return with("minimum", std::move(least)).with("maximum", std::move(most));
}

json::object Field::takeNature() {
  json::object nature;
  json::object said;
  for (const auto& [keyword, value] : schema_) (saysWhatItIs(keyword) ? nature : said)[keyword] = value;
  schema_ = std::move(said);
  return nature;
}

Field Field::variants(std::string_view keyword, json::array all) const {
  Field field = *this;
  field.schema_[keyword] = std::move(all);
  return field;
}

Field Field::orNull() const {
  Field field = *this;
  if (json::value* already = field.schema_.if_contains("anyOf")) {
    already->as_array().emplace_back(nothing());
    return field;
  }
  const json::object nature = field.takeNature();
  return field.variants("anyOf", json::array{nature, nothing()});
}

Field Field::orNullFirst() const {
  Field field = *this;
  const json::object nature = field.takeNature();
  return field.variants("anyOf", json::array{nothing(), nature});
}

Field Field::orNullByOneOf() const {
  Field field = *this;
  const json::object nature = field.takeNature();
  return field.variants("oneOf", json::array{nature, nothing()});
}

Field Field::markedNullable() const { return with("nullable", true); }

Field Field::nullAmongValues() const {
  Field field = *this;
  field.schema_["enum"].as_array().emplace_back(nullptr);
  return field.markedNullable();
}

Field Field::behindReference(std::string type) const {
  Field field = *this;
  json::object nature = field.takeNature();
  nature["title"] = type;
  field.schema_["$ref"] = schemasPath + type;
  field.types_.emplace_back(std::move(type), std::move(nature));
  return field;
}

Field Field::behindTwoReferences(std::string type) const {
  Field field = behindReference(type + "Value");
  field.schema_["$ref"] = schemasPath + type;
  json::object between = referenceTo(type + "Value");
  field.types_.emplace_back(std::move(type), std::move(between));
  return field;
}

Field Field::behindAllOf(std::string type) const {
  Field field = behindReference(type);
  field.schema_.stable_erase("$ref");
  return field.variants("allOf", json::array{referenceTo(type)});
}

Field Field::behindNullableReference(std::string type) const {
  Field field = behindReference(type);
  field.schema_.stable_erase("$ref");
  return field.variants("anyOf", json::array{referenceTo(type), nothing()});
}

json::array listOf(Words words) {
  json::array list;
  for (const char* word : words) list.emplace_back(word);
  return list;
}

json::object referenceTo(std::string_view type) {
  json::object reference;
  reference["$ref"] = schemasPath + std::string(type);
  return reference;
}

json::object nothing() {
  json::object null;
  null["type"] = "null";
  return null;
}

namespace {

Field typed(std::string name, const char* type) {
  json::object schema;
  schema["type"] = type;
  return {std::move(name), std::move(schema)};
}

}  // namespace

Field text(std::string name) { return typed(std::move(name), "string"); }

Field oneOf(std::string name, json::array values, json::value start) {
  const bool areNumbers = !values.empty() && values.front().is_number();
  Field field = typed(std::move(name), areNumbers ? "integer" : "string").with("enum", std::move(values));
  return start.is_null() ? field : field.startingWith(std::move(start));
}

Field oneOf(std::string name, Words words, const char* start) {
  return oneOf(std::move(name), listOf(words), start ? json::value(start) : json::value());
}

Field whole(std::string name, int least, int most, int start) {
  return typed(std::move(name), "integer").between(least, most).startingWith(start);
}

Field real(std::string name, double least, double most, double start) {
  return typed(std::move(name), "number").between(least, most).startingWith(start);
}

Field flag(std::string name, bool start) { return typed(std::move(name), "boolean").startingWith(start); }

Field listOfTexts(std::string name) {
  json::object element;
  element["type"] = "string";
  return typed(std::move(name), "array").with("items", std::move(element));
}

Field objects(std::string name, std::string_view type) {
  return typed(std::move(name), "array").with("items", referenceTo(type));
}

Field object(std::string name, std::string_view type) { return {std::move(name), referenceTo(type)}; }

Field only(std::string name, const char* value) {
  return typed(std::move(name), "string").with("const", value).startingWith(value);
}

Field prompt() { return text("prompt").about("What to make, in words.").required(); }

Field seed() {
  return typed("seed", "integer").orNull().about("The same seed and the same prompt give the same result.");
}

Field pictureCount(int most) {
  return whole("num_images", 1, most, 1).with("title", "Number of Images").about("How many images to make.");
}

Field imageSize(Words words, json::value start) {
  json::object word;
  word["enum"] = listOf(words);
  word["type"] = "string";
  json::object schema;
  schema["anyOf"] = json::array{referenceTo("ImageSize"), word};
  return Field("image_size", std::move(schema)).about("The size of the image.").startingWith(std::move(start));
}

Field safetyChecker() { return flag("enable_safety_checker", true); }

Field syncMode() { return flag("sync_mode", false).about("If `True`, the media will be returned as a data URI."); }

}  // namespace sandbox
