// Walks over the schemas of a published document.
#pragma once
#include <optional>

#include "field.h"

namespace sandbox {

class SchemaWalk {
 public:
  explicit SchemaWalk(const json::object& document) : document_(document) {}

  // The input and the output of the document's endpoint; null when they lead nowhere.
  const json::object* input() const;
  const json::object* output() const;

  // The schema behind a `$ref`, with what stands beside the reference, and with the parts of an `allOf` merged into it.
  // Empty when a reference leads nowhere or in a circle.
  json::object resolved(const json::object& schema) const;
  // What stands under `anyOf` or `oneOf`; the schema itself alone when it has neither.
  std::vector<json::object> variantsOf(const json::object& schema) const;

 private:
  json::object resolved(const json::object& schema, int depth) const;
  const json::object* bodyOf(std::string_view method, bool request) const;

  const json::object& document_;
};

// The member when it is an object, else null.
const json::object* objectIn(const json::object& object, std::string_view key);
const json::array* arrayIn(const json::object& object, std::string_view key);
std::string textIn(const json::object& object, std::string_view key);

}  // namespace sandbox
