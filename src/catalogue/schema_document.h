// A published OpenAPI document, with its references followed.
#pragma once

#include <QByteArray>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json.hpp>

#include "base/sorvan_error.h"
#include "catalogue/room.h"

namespace sorvan::catalogue {

namespace json = boost::json;

/// A schema object after its references were followed.
struct Schema {
  /// Null when there is none: it is missing, its reference leads nowhere or in a circle.
  const json::object* object = nullptr;
  /// The names of the references on the way, noted before each was followed, so also of one that leads nowhere.
  std::vector<std::string> names;

  bool isAbsent() const { return object == nullptr; }
  /// The member, or null.
  const json::value* member(std::string_view key) const;
  /// The member when it is a text; else empty.
  std::string_view text(std::string_view key) const;
};

/// Objects that are handed out live as long as the document. Merged ones are made on demand, so a document is used by
/// one thread at a time. Whatever the document holds, the work is bounded: what would go beyond is absent.
class SchemaDocument {
 public:
  static constexpr qsizetype largest = 10LL << 20;  ///< bytes
  static constexpr std::size_t deepest = 200;       ///< objects and arrays in each other

  /// Throws SorvanError "Invalid provider response." when the bytes are no JSON object or are too large or too deep.
  explicit SchemaDocument(const QByteArray& bytes);

  const json::object& root() const { return *top; }

  /// Follows `$ref`, by the last part of the reference, into the document's schemas, and merges `allOf`; what stands
  /// beside either stays and wins. At most 32 references are followed one after the other.
  Schema resolved(const json::value* value) const;
  /// The schema at the end of the keys, with references followed at each step.
  Schema at(const std::vector<std::string_view>& path) const;
  /// What the schema may be instead of itself: its `anyOf` or `oneOf`, nested ones flattened, those of type null left
  /// out. Empty when it has neither. Absent ones are kept for their names.
  std::vector<Schema> variants(const Schema& schema) const;

 private:
  struct Walk;
  Schema follow(const json::object& object, Walk& walk) const;
  Schema followReference(const json::object& object, std::string_view reference, Walk& walk) const;
  Schema mergeParts(const json::object& object, const json::array& parts, Walk& walk) const;
  const json::object* keep(json::object merged) const;
  void collectVariants(const Schema& schema, int depth, std::vector<Schema>& found) const;
  bool spend(std::size_t amount) const;
  bool canCopy(const json::object& object) const;

  json::monotonic_resource memory;
  json::value tree;
  const json::object* top = nullptr;
  const json::object* schemas = nullptr;
  mutable std::deque<json::object> merged;
  mutable std::size_t work = 0;
};

/// Whether the schema stands for nothing but null.
bool isNullSchema(const json::object& schema);

}  // namespace sorvan::catalogue
