// One field of an endpoint's published document, put together keyword by keyword. Each step gives a new field.
#pragma once
#include <boost/json.hpp>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sandbox {

// Documents keep the order of their keys, which the published ones rely on.
namespace json = boost::json;

class Field {
 public:
  Field(std::string name, json::object schema);

  const std::string& name() const { return name_; }
  bool isRequired() const { return required_; }
  const json::object& schema() const { return schema_; }
  // Types of the document that this field alone needs.
  const std::vector<std::pair<std::string, json::object>>& types() const { return types_; }

  Field required() const;
  Field with(std::string_view keyword, json::value value) const;
  Field without(std::string_view keyword) const;
  Field about(std::string_view description) const { return with("description", json::value(description)); }
  Field startingWith(json::value value) const { return with("default", std::move(value)); }
  Field between(json::value least, json::value most) const;

  // The ways in which published documents write down a field that may also be null, or whose type stands elsewhere.
  Field orNull() const;                                   // anyOf with the type null
  Field orNullFirst() const;                              // the same, null before the type
  Field orNullByOneOf() const;                            // oneOf with the type null
  Field markedNullable() const;                           // "nullable": true
  Field nullAmongValues() const;                          // null as one of the values
  Field behindReference(std::string type) const;          // "$ref" with what is said about the field beside it
  Field behindTwoReferences(std::string type) const;      // a "$ref" to a "$ref"
  Field behindAllOf(std::string type) const;              // allOf of one "$ref"
  Field behindNullableReference(std::string type) const;  // anyOf of a "$ref" and the type null

 private:
  // What the value is, taken out of the schema; what is said about it stays.
  json::object takeNature();
  Field variants(std::string_view keyword, json::array all) const;

  std::string name_;
  json::object schema_;
  bool required_ = false;
  std::vector<std::pair<std::string, json::object>> types_;
};

using Words = std::initializer_list<const char*>;
json::array listOf(Words words);
json::object referenceTo(std::string_view type);
json::object nothing();  // the type null

// Plain fields. Titles follow from the names.
Field text(std::string name);
Field oneOf(std::string name, json::array values, json::value start);
Field oneOf(std::string name, Words words, const char* start);
Field whole(std::string name, int least, int most, int start);
Field real(std::string name, double least, double most, double start);
Field flag(std::string name, bool start);
Field listOfTexts(std::string name);
Field objects(std::string name, std::string_view type);  // a list of them
Field object(std::string name, std::string_view type);   // a "$ref" with what is said about the field beside it
Field only(std::string name, const char* value);         // const, beside its type and default

// Fields that most models share.
Field prompt();
Field seed();  // a whole number or null
Field pictureCount(int most);
// A size in pixels or one of the words.
Field imageSize(Words words, json::value start);
Field safetyChecker();
Field syncMode();

}  // namespace sandbox
