// A published document: a model whose requests it takes, or a refusal that says why. Documents are changed as trees:
// values swapped, dropped, renamed, wrapped; some as bytes.
#include <random>

#include <QJsonArray>
#include <QJsonDocument>

#include "catalogue/fal_model_json.h"
#include "catalogue/request_body.h"
#include "catalogue/schema_input.h"
#include "catalogue/schema_lines.h"
#include "catalogue/schema_reader.h"
#include "core/image_format.h"
#include "fuzz/reading.h"

extern "C" __attribute__((weak)) std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;
using namespace sorvan::catalogue;

/// The input as the reader of the rules finds it, looked at once more by hand.
static SchemaInput inputOf(const SchemaDocument& document, const std::string& id) {
  return SchemaInput(document, withProperties(document, document.at({"paths", "/" + id, "post", "requestBody",
                                                                     "content", "application/json", "schema"})));
}

static QString usableSize(const FalModel& model) {
  const auto ratios = model.option().ratios;
  for (const auto& format : core::ImageFormat::all())
    if (!ratios || ratios->contains(format.ratio)) return QString(format.size);
  return {};
}

static BodyParts smallest(const FalModel& model) {
  const auto option = model.option();
  BodyParts parts;
  if (model.hasPrompt && model.promptRequired.value_or(true)) parts.prompt = u"fox"_s;
  parts.size = usableSize(model);
  const QString address = u"https://v3.fal.media/files/a.png"_s;
  if (option.requiresReference) parts.inputs = QStringList(model.minInputs.value_or(1), address);
  if (model.endImageRequired) parts.endImage = address;
  if (model.seedRequired) parts.seed = 1;
  return parts;
}

/// Sizes are objects beside listed words, and the seed is the user's own.
static void requireTaken(const SchemaInput& input, const QString& name, const QJsonValue& value) {
  const SchemaField* field = input.field(name);
  if (!field || value.isObject() || name == u"seed"_s) return;
  const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  require(field->takes(json::parse(text.toStdString()).at(0)), "what is sent is what the field takes");
}

static void requireComplete(const FalModel& model, const QByteArray& text) {
  const SchemaDocument document(text);
  const SchemaInput input = inputOf(document, model.id.toStdString());
  const auto body = readOrRefused([&] { return requestBody(model, smallest(model)); });
  if (!body) return;
  for (const QString& name : input.required()) require(body->contains(name), "what is needed is sent");
  for (auto each = body->begin(); each != body->end(); ++each) {
    require(input.field(each.key()) != nullptr, "only known fields are sent");
    requireTaken(input, each.key(), each.value());
  }
}

static void readDocument(const QByteArray& text) {
  const auto identity = readOrRefused([&] { return schemaIdentity(text); });
  const QString id = identity && !identity->id.isEmpty() ? identity->id : u"acme/paint"_s;
  const auto model = readOrRefused([&] { return modelFromSchema({id, u"It"_s, {}, {}, {}}, text); });
  if (!model) return;
  require(model->maxCount >= 1, "a model makes at least one output");
  const StoredModels kept = modelsFromText(modelsToText({*model}));
  require(kept.complete && kept.models.size() == 1 && kept.models[0] == *model, "a model is stored as it is");
  requireComplete(*model, text);
}

/// Every value of a document, with what stands above it.
struct Node {
  json::value* value;
  json::object* parent;
  std::string key;
};

static void collect(json::value& value, std::vector<Node>& nodes) {
  if (json::object* object = value.if_object()) {
    for (auto& member : *object) {
      nodes.push_back({&member.value(), object, std::string(member.key())});
      collect(member.value(), nodes);
    }
  } else if (json::array* array = value.if_array()) {
    for (json::value& each : *array) {
      nodes.push_back({&each, nullptr, {}});
      collect(each, nodes);
    }
  }
}

class Mutation {
 public:
  explicit Mutation(unsigned seed) : random_(seed) {}

  void apply(json::value& document) {
    const std::size_t changes = 1 + pick(4);
    for (std::size_t change = 0; change < changes; ++change) {
      std::vector<Node> nodes;
      collect(document, nodes);
      if (nodes.empty()) return;
      changeOne(nodes[pick(nodes.size())], nodes);
    }
  }
  std::size_t pick(std::size_t count) { return random_() % count; }

 private:
  void changeOne(Node& node, std::vector<Node>& nodes) {
    switch (pick(6)) {
      case 0:
        *node.value = simpleValue();
        break;
      case 1:
        *node.value = json::value(*nodes[pick(nodes.size())].value);
        break;
      case 2:
        if (node.parent) node.parent->erase(node.key);
        break;
      case 3:
        if (node.parent) (*node.parent)[word()] = json::value(*node.value);
        break;
      case 4:
        wrap(*node.value);
        break;
      default:
        if (json::object* object = node.value->if_object()) (*object)[word()] = simpleValue();
        break;
    }
  }

  void wrap(json::value& value) {
    static constexpr std::array words{"anyOf", "oneOf", "allOf"};
    json::array list;
    list.push_back(json::value(value));
    if (pick(2) == 0) list.push_back(json::object{{"type", "null"}});
    value = json::object{{words[pick(words.size())], std::move(list)}};
  }

  const char* word() {
    static constexpr std::array words{"$ref",
                                      "anyOf",
                                      "oneOf",
                                      "allOf",
                                      "enum",
                                      "const",
                                      "type",
                                      "default",
                                      "minimum",
                                      "maximum",
                                      "multipleOf",
                                      "items",
                                      "minItems",
                                      "maxItems",
                                      "properties",
                                      "required",
                                      "prompt",
                                      "seed",
                                      "num_images",
                                      "image_size",
                                      "aspect_ratio",
                                      "image_url",
                                      "image_urls",
                                      "duration",
                                      "quality",
                                      "resolution",
                                      "end_image_url",
                                      "output_format",
                                      "video",
                                      "images",
                                      "audio",
                                      "scale",
                                      "_fal_ui_field",
                                      "x-fal",
                                      "max_file_size",
                                      "nullable",
                                      "zoom",
                                      "upscale_factor",
                                      "generate_audio",
                                      "exclusiveMinimum",
                                      "x-fal-order-properties"};
    return words[pick(words.size())];
  }

  json::value simpleValue() {
    switch (pick(12)) {
      case 0:
        return nullptr;
      case 1:
        return json::array();
      case 2:
        return json::object();
      case 3:
        return true;
      case 4:
        return -1;
      case 5:
        return 1e300;
      case 6:
        return 0.5;
      case 7:
        return "#/components/schemas/ImageSize";
      case 8:
        return "auto";
      case 9:
        return json::array{5, "10", nullptr, 2.5};
      case 10:
        return static_cast<std::int64_t>(pick(20));
      default:
        return word();
    }
  }

  std::minstd_rand random_;
};

static std::size_t mutated(std::uint8_t* data, std::size_t size, std::size_t limit, unsigned seed) {
  Mutation mutation(seed);
  if (LLVMFuzzerMutate && mutation.pick(5) == 0) return LLVMFuzzerMutate(data, size, limit);
  json::error_code problem;
  json::parse_options options;
  options.max_depth = SchemaDocument::deepest + 20;
  json::value document =
      json::parse({reinterpret_cast<const char*>(data), size}, problem, json::storage_ptr(), options);
  if (problem) return LLVMFuzzerMutate ? LLVMFuzzerMutate(data, size, limit) : size;
  mutation.apply(document);
  const std::string text = json::serialize(document);
  if (text.size() > limit) return size;
  std::copy(text.begin(), text.end(), data);
  return text.size();
}

}  // namespace sorvan::fuzz

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t limit, unsigned seed) {
  return sorvan::fuzz::mutated(data, size, limit, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  sorvan::fuzz::readDocument(text);
  for (const QByteArray& line : sorvan::catalogue::schemaLines(QStringLiteral("a.json"), text))
    sorvan::fuzz::require(line.count('\n') == 1, "a document is told on one line");
  return 0;
}
