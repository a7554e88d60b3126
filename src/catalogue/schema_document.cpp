#include "catalogue/schema_document.h"

#include <array>

#include "catalogue/texts.h"

namespace sorvan::catalogue {

namespace {

constexpr std::size_t mostReferences = 32;
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
constexpr int deepestVariants = 16;
/// Members that may be copied, and variants looked at, for one document: far above any real one.
constexpr std::size_t mostWork = 200000;

bool isPlainWord(std::string_view key) { return key == "title" || key == "description" || key == "examples"; }

/// Whether anything beside a reference says what is accepted.
bool saysSomething(const json::object& object) {
  return std::any_of(object.begin(), object.end(), [](const auto& member) {
    return member.key() != "$ref" && member.key() != "default" && !isPlainWord(member.key());
  });
}

const json::object* objectIn(const json::object& parent, std::string_view key) {
  const json::value* found = parent.if_contains(key);
  return found ? found->if_object() : nullptr;
}

std::string_view lastPart(std::string_view reference) { return reference.substr(reference.rfind('/') + 1); }

/// The name as its schema spells it: in a reference "/" stands as "~1", "~" as "~0", and other signs as in addresses.
std::string plainName(std::string_view written) {
  const auto size = static_cast<qsizetype>(written.size());
  QByteArray name = QByteArray::fromPercentEncoding(QByteArray::fromRawData(written.data(), size));
  return name.replace("~1", "/").replace("~0", "~").toStdString();
}

const json::object* schemaNamed(const json::object& schemas, std::string_view written) {
  const json::object* found = objectIn(schemas, written);
  const bool isEscaped = written.find_first_of("~%") != std::string_view::npos;
  return found || !isEscaped ? found : objectIn(schemas, plainName(written));
}

void addProperties(json::object& into, const json::value& more) {
  const json::object* others = more.if_object();
  if (!others) return;
  json::value& place = into["properties"];
  if (!place.is_object()) place = json::object();
  for (const auto& [name, schema] : *others) place.as_object().insert_or_assign(name, schema);
}

void addRequired(json::object& into, const json::value& more) {
  const json::array* names = more.if_array();
  if (!names) return;
  json::value& place = into["required"];
  if (!place.is_array()) place = json::array();
  place.as_array().insert(place.as_array().end(), names->begin(), names->end());
}

/// Lays the members of `more` over `into`; properties and required names are added up.
void layOver(json::object& into, const json::object& more) {
  for (const auto& [key, value] : more) {
    if (key == "$ref" || key == "allOf") continue;
    if (key == "properties") {
      addProperties(into, value);
    } else if (key == "required") {
      addRequired(into, value);
    } else {
      into.insert_or_assign(key, value);
    }
  }
}

/// What a copy costs: every value in it, long texts by their length. Stops counting beyond the limit.
std::size_t weightOf(const json::value& value, std::size_t limit);

template <class Members, class ValueOf>
std::size_t weightOfAll(const Members& members, std::size_t limit, ValueOf valueOf) {
  std::size_t sum = 1;
  for (const auto& member : members) {
    if (sum > limit) break;
    sum += weightOf(valueOf(member), limit - sum);
  }
  return sum;
}

std::size_t weightOf(const json::object& object, std::size_t limit) {
  return weightOfAll(object, limit, [](const auto& member) -> const json::value& { return member.value(); });
}

std::size_t weightOf(const json::value& value, std::size_t limit) {
  if (const json::object* object = value.if_object()) return weightOf(*object, limit);
  if (const json::array* array = value.if_array()) {
    return weightOfAll(*array, limit, [](const json::value& each) -> const json::value& { return each; });
  }
  const json::string* text = value.if_string();
  return 1 + (text ? text->size() / 64 : 0);
}

}  // namespace

/// Most trees take no more than this, so one allocation serves them.
static std::size_t firstMemoryFor(qsizetype bytes) {
  constexpr qsizetype perByte = 6;
  return static_cast<std::size_t>(std::clamp<qsizetype>(bytes * perByte, 1 << 10, 1 << 20));
}

static json::value parsed(std::string_view text, boost::system::error_code& problem, const json::storage_ptr& storage) {
  json::parse_options options;
  options.max_depth = SchemaDocument::deepest;
  std::array<unsigned char, 16384> scratch;
  json::parser parser(json::storage_ptr(), options, scratch.data(), scratch.size());
  parser.reset(storage);
  parser.write(text, problem);
  return problem ? json::value(storage) : parser.release();
}

struct SchemaDocument::Walk {
  std::vector<std::string> names;
  std::vector<const json::object*> chain;  ///< the schemas whose references are being followed
};

const json::value* Schema::member(std::string_view key) const { return object ? object->if_contains(key) : nullptr; }

std::string_view Schema::text(std::string_view key) const {
  const json::value* found = member(key);
  return found && found->is_string() ? std::string_view(found->get_string()) : std::string_view();
}

SchemaDocument::SchemaDocument(const QByteArray& bytes)
    : memory(firstMemoryFor(bytes.size())), tree(json::storage_ptr(&memory)) {
  boost::system::error_code problem;
  if (bytes.size() <= largest) {
    std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    tree = parsed(text, problem, json::storage_ptr(&memory));
  }
  top = problem ? nullptr : tree.if_object();
  if (!top) throw SorvanError(texts::invalidProviderResponse());
  if (const json::object* components = objectIn(*top, "components")) schemas = objectIn(*components, "schemas");
}

bool SchemaDocument::spend(std::size_t amount) const {
  work += amount;
  return work <= mostWork;
}

bool SchemaDocument::canCopy(const json::object& object) const { return spend(weightOf(object, mostWork)); }

const json::object* SchemaDocument::keep(json::object object) const {
  merged.push_back(std::move(object));
  return &merged.back();
}

Schema SchemaDocument::resolved(const json::value* value) const {
  const json::object* object = value ? value->if_object() : nullptr;
  if (!object) return {};
  Walk walk;
  Schema found = follow(*object, walk);
  found.names = std::move(walk.names);
  return found;
}

Schema SchemaDocument::follow(const json::object& object, Walk& walk) const {
  if (!spend(1)) return {};
  if (const json::value* reference = object.if_contains("$ref"); reference && reference->is_string()) {
    return followReference(object, reference->get_string(), walk);
  }
  if (const json::value* parts = object.if_contains("allOf"); parts && parts->is_array()) {
    return mergeParts(object, parts->get_array(), walk);
  }
  return {&object, {}};
}

Schema SchemaDocument::followReference(const json::object& object, std::string_view reference, Walk& walk) const {
  const std::string_view name = lastPart(reference);
  walk.names.emplace_back(name);
  const json::object* target = schemas ? schemaNamed(*schemas, name) : nullptr;
  const bool circles = std::find(walk.chain.begin(), walk.chain.end(), target) != walk.chain.end();
  Schema found;
  if (target && !circles && walk.chain.size() < mostReferences) {
    walk.chain.push_back(target);
    found = follow(*target, walk);
    walk.chain.pop_back();
  }
  // What stands beside a reference that leads nowhere may still describe the field by itself.
  if (!saysSomething(object)) {
    if (found.isAbsent() || object.size() == 1) return found;
  }
  if (!canCopy(object)) return {};
  json::object whole = found.object && canCopy(*found.object) ? *found.object : json::object();
  layOver(whole, object);
  return {keep(std::move(whole)), {}};
}

Schema SchemaDocument::mergeParts(const json::object& object, const json::array& parts, Walk& walk) const {
  if (!canCopy(object)) return {};
  json::object whole;
  bool any = false;
  for (const json::value& part : parts) {
    const json::object* inner = part.if_object();
    const Schema found = inner ? follow(*inner, walk) : Schema();
    if (found.isAbsent() || !canCopy(*found.object)) continue;
    layOver(whole, *found.object);
    any = true;
  }
  if (!any && !saysSomething(object)) return {};
  layOver(whole, object);
  return {keep(std::move(whole)), {}};
}

Schema SchemaDocument::at(const std::vector<std::string_view>& path) const {
  Schema here{top, {}};
  for (const std::string_view key : path) {
    here = resolved(here.member(key));
    if (here.isAbsent()) break;
  }
  return here;
}

std::vector<Schema> SchemaDocument::variants(const Schema& schema) const {
  std::vector<Schema> found;
  collectVariants(schema, 0, found);
  return found;
}

void SchemaDocument::collectVariants(const Schema& schema, int depth, std::vector<Schema>& found) const {
  if (schema.isAbsent() || depth > deepestVariants) return;
  for (const std::string_view key : {"anyOf", "oneOf"}) {
    const json::value* list = schema.member(key);
    if (!list || !list->is_array()) continue;
    for (const json::value& each : list->get_array()) {
      if (!spend(1)) return;
      Schema variant = resolved(&each);
      if (variant.object && isNullSchema(*variant.object)) continue;
      found.push_back(variant);
      collectVariants(variant, depth + 1, found);
    }
  }
}

bool isNullSchema(const json::object& schema) {
  const json::value* type = schema.if_contains("type");
  if (type && type->is_string()) return type->get_string() == "null";
  const json::value* only = schema.if_contains("const");
  if (only) return only->is_null();
  const json::value* list = schema.if_contains("enum");
  if (!list || !list->is_array() || list->get_array().empty()) return false;
  return std::all_of(list->get_array().begin(), list->get_array().end(),
                     [](const json::value& each) { return each.is_null(); });
}

}  // namespace sorvan::catalogue
