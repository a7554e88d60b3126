#include "catalogue/schema_reader.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <array>
#include <cmath>

#include "base/text.h"
#include "catalogue/named_ratios.h"
#include "catalogue/schema_input.h"
#include "catalogue/schema_settings.h"
#include "catalogue/schema_size.h"
#include "catalogue/texts.h"
#include "core/image_format.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualMostOutputs = 4;
constexpr qsizetype mostNamedFields = 40;
constexpr qsizetype longestNamedField = 80;

const std::array singleNames{u"image_url"_s, u"start_image_url"_s, u"first_frame_url"_s, u"input_image_url"_s};
const std::array endNames{u"end_image_url"_s, u"tail_image_url"_s, u"last_frame_url"_s, u"end_frame_url"_s};
const std::array cameraNames{u"horizontal_angle"_s, u"vertical_angle"_s, u"zoom"_s};

template <std::size_t count>
bool isOneOf(const std::array<QString, count>& names, const QString& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

Schema inputSchema(const SchemaDocument& document, const std::string& id) {
  return withProperties(
      document, document.at({"paths", "/" + id, "post", "requestBody", "content", "application/json", "schema"}));
}

Schema outputSchema(const SchemaDocument& document, const std::string& id) {
  return withProperties(document, document.at({"paths", "/" + id + "/requests/{request_id}", "get", "responses", "200",
                                               "content", "application/json", "schema"}));
}

std::optional<MediaType> outputOf(const Schema& output) {
  const json::value* properties = output.member("properties");
  const json::object* named = properties ? properties->if_object() : nullptr;
  if (!named) return std::nullopt;
  if (named->contains("video")) return MediaType::video;
  if (named->contains("images") || named->contains("image")) return MediaType::image;
  return std::nullopt;
}

const SchemaField* promptOf(const SchemaInput& input) {
  const SchemaField* field = input.field(u"prompt"_s);
  return field && field->acceptsAnyText() ? field : nullptr;
}

/// How far the listed values go from one without a gap.
int listedCounts(const std::vector<ListedValue>& values) {
  QSet<QString> counts;
  for (const ListedValue& value : values) {
    if (value.isNumber) counts.insert(value.text);
  }
  int most = 0;
  while (counts.contains(QString::number(most + 1))) ++most;
  return most;
}

/// A number of outputs that the service might refuse is never asked for.
int maxCountOf(const SchemaInput& input) {
  const SchemaField* field = input.field(u"num_images"_s);
  if (!field || !field->accepts(ValueType::number)) return 1;
  if (field->lowest().value_or(1) > 1 || !field->isMultiple(1)) return 1;
  const double highest = field->highest().value_or(usualMostOutputs);
  const int most = static_cast<int>(std::clamp(std::floor(highest), 1.0, 10000.0));
  const std::vector<ListedValue> values = field->textsAndNumbers();
  return values.empty() ? most : std::clamp(listedCounts(values), 1, most);
}

QStringList composerRatios() {
  QStringList ratios;
  for (const ImageFormat& format : ImageFormat::all()) ratios << QString(format.ratio);
  ratios.removeDuplicates();
  return ratios;
}

Sizing aspectOf(const SchemaInput& input) {
  const SchemaField* field = input.field(u"aspect_ratio"_s);
  if (!field) return NoSizing{};
  if (const auto values = field->texts()) return SizeByAspect{field->name(), *values};
  const bool isFree = field->textsAndNumbers().empty() && field->accepts(ValueType::string);
  if (isFree) return SizeByAspect{field->name(), composerRatios()};
  return NoSizing{};
}

Sizing sizingOf(const SchemaInput& input) {
  if (const SchemaField* field = input.field(u"image_size"_s)) {
    if (field->isImageSize()) return SizeByDimensions{field->name()};
    if (const auto values = field->texts()) return SizeByName{field->name(), *values};
  }
  return aspectOf(input);
}

bool isPictureList(const SchemaField& field) {
  const bool isArray = field.name() == u"image_urls"_s || field.declares(ValueType::array);
  // A list that needs more than can be sent is none that can be filled.
  const bool canFill = field.count("minItems").value_or(1) <= mostListInputs;
  return isArray && canFill && field.isListOfTexts() && !field.isMarkedAsOtherMedia();
}

bool isPicture(const SchemaField& field) { return field.acceptsAnyText() && !field.isMarkedAsOtherMedia(); }

const SchemaField* pictureListOf(const SchemaInput& input) {
  const SchemaField* usual = input.field(u"image_urls"_s);
  if (usual && isPictureList(*usual)) return usual;
  for (const SchemaField& field : input.all()) {
    if (field.name().endsWith(u"image_urls"_s) && isPictureList(field)) return &field;
  }
  return nullptr;
}

const SchemaField* singlePictureOf(const SchemaInput& input) {
  for (const QString& name : singleNames) {
    const SchemaField* field = input.field(name);
    if (field && isPicture(*field)) return field;
  }
  for (const SchemaField& field : input.all()) {
    if (field.isRequired() && field.name().endsWith(u"image_url"_s) && isPicture(field)) return &field;
  }
  return nullptr;
}

const SchemaField* endPictureOf(const SchemaInput& input, const SchemaField* chosen) {
  for (const QString& name : endNames) {
    const SchemaField* field = input.field(name);
    if (field && field != chosen && isPicture(*field)) return field;
  }
  return nullptr;
}

void addByteLimit(FalModel& model, const SchemaField& field) {
  const auto limit = field.byteLimit();
  if (limit) model.inputByteLimit = std::min(model.inputByteLimit.value_or(*limit), *limit);
}

/// How pictures are sent, and the limits that the document names for them.
void readPictures(FalModel& model, const SchemaInput& input) {
  const SchemaField* chosen = pictureListOf(input);
  if (chosen) {
    model.imageInput = ListInput{chosen->name(), chosen->isRequired()};
    model.maxInputs = chosen->count("maxItems");
    const auto fewest = chosen->count("minItems");
    if (fewest && *fewest > 1) model.minInputs = fewest;
  } else {
    chosen = singlePictureOf(input);
    if (chosen) model.imageInput = SingleInput{chosen->name(), chosen->isRequired()};
  }
  if (chosen) addByteLimit(model, *chosen);
  const SchemaField* end = endPictureOf(input, chosen);
  if (!end) return;
  model.endImageField = end->name();
  if (end->isRequired()) model.endImageRequired = true;
  addByteLimit(model, *end);
}

bool hasCamera(const SchemaInput& input) {
  return std::all_of(cameraNames.begin(), cameraNames.end(), [&](const QString& name) {
    const SchemaField* field = input.field(name);
    return field && field->accepts(ValueType::number);
  });
}

void readPlainFields(FalModel& model, const SchemaInput& input) {
  const SchemaField* prompt = promptOf(input);
  model.hasPrompt = prompt != nullptr;
  model.promptRequired = prompt && prompt->isRequired();
  if (prompt) model.promptLimit = prompt->count("maxLength");
  model.maxCount = maxCountOf(input);
  model.sizing = sizingOf(input);
  if (std::holds_alternative<SizeByDimensions>(model.sizing)) model.sides = sideBoundsOf(*input.field(u"image_size"_s));
  const SchemaField* seed = input.field(u"seed"_s);
  model.hasSeed = seed && seed->accepts(ValueType::number);
  if (model.hasSeed && seed->isRequired()) model.seedRequired = true;
  const SchemaField* format = input.field(u"output_format"_s);
  model.pngOutput = format && format->texts().value_or(QStringList()).contains(u"png"_s);
  if (hasCamera(input)) model.camera = true;
}

/// How a field that every body needs gets into it.
enum class Carrier { everyBody, defaults, nothing };

bool isImageField(const FalModel& model, const QString& name) {
  if (const auto* single = std::get_if<SingleInput>(&model.imageInput)) return single->field == name;
  const auto* list = std::get_if<ListInput>(&model.imageInput);
  return list && list->field == name;
}

/// Whether the sizing writes the field, and writes it into every body.
std::optional<Carrier> carrierOfSize(const FalModel& model, const QString& name) {
  if (const auto* dimensions = std::get_if<SizeByDimensions>(&model.sizing)) {
    if (dimensions->field == name) return Carrier::everyBody;
  } else if (const auto* aspect = std::get_if<SizeByAspect>(&model.sizing)) {
    if (aspect->field == name) return canChooseRatio(aspect->values) ? Carrier::everyBody : Carrier::defaults;
  } else if (const auto* named = std::get_if<SizeByName>(&model.sizing)) {
    if (named->field == name) return Carrier::defaults;
  }
  return std::nullopt;
}

Carrier carrierOf(const FalModel& model, const SchemaField& field) {
  const QString& name = field.name();
  if (name == u"prompt"_s && model.hasPrompt) return Carrier::everyBody;
  if (name == u"seed"_s && model.hasSeed) return Carrier::everyBody;
  if (isImageField(model, name) || model.endImageField == name) return Carrier::everyBody;
  if (name == u"output_format"_s) return model.pngOutput ? Carrier::everyBody : Carrier::defaults;
  if (name == u"num_images"_s) return model.maxCount >= 2 ? Carrier::everyBody : Carrier::defaults;
  if (const auto sized = carrierOfSize(model, name)) return *sized;
  if (model.camera && isOneOf(cameraNames, name)) return Carrier::defaults;
  return isKnownSetting(field) ? Carrier::defaults : Carrier::nothing;
}

/// Whether every body will hold the field. One that a body may leave out is given a value that the service takes.
bool isSupplied(const FalModel& model, const SchemaField* field, QJsonObject& defaults) {
  if (!field || !field->exists()) return field && carrierOf(model, *field) == Carrier::everyBody;
  const Carrier carrier = carrierOf(model, *field);
  if (carrier != Carrier::defaults) return carrier == Carrier::everyBody;
  const auto value = field->fallback();
  if (value) defaults.insert(field->name(), *value);
  return value.has_value();
}

void supplyRequired(FalModel& model, const SchemaInput& input) {
  QStringList missing;
  QJsonObject defaults;
  for (const QString& name : input.required()) {
    if (!isSupplied(model, input.field(name), defaults)) missing << firstChars(name, longestNamedField);
  }
  if (!missing.isEmpty()) {
    throw SchemaRefusal(texts::needsUnknownInputs(model.name, missing.mid(0, mostNamedFields)), missing);
  }
  if (!defaults.isEmpty()) {
    model.defaultsJSON = QString::fromUtf8(QJsonDocument(defaults).toJson(QJsonDocument::Compact));
  }
}

QString onlyPostPath(const SchemaDocument& document) {
  QString found;
  const Schema paths = document.at({"paths"});
  if (paths.isAbsent()) return found;
  for (const auto& [path, item] : *paths.object) {
    const Schema each = document.resolved(&item);
    if (!each.member("post")) continue;
    if (!found.isEmpty()) return {};
    found = textOf(path).mid(1);
  }
  return found;
}

}  // namespace

FalModel modelFromSchema(const FalListing& listing, const QByteArray& openAPI) {
  const SchemaDocument document(openAPI);
  const std::string id = listing.id.toStdString();
  FalModel model;
  model.id = listing.id;
  model.name = listing.name;
  model.category = listing.category;
  model.summary = listing.summary;
  // 1. What goes in and what comes out.
  const SchemaInput input(document, inputSchema(document, id));
  if (input.isEmpty()) throw SchemaRefusal(texts::noUsableSettings(model.name));
  const auto output = outputOf(outputSchema(document, id));
  if (!output) throw SchemaRefusal(texts::returnsNoPicture(model.name));
  model.output = *output;
  // 2. What is known by name.
  readPlainFields(model, input);
  readPictures(model, input);
  if (auto settings = settingsFrom(input); !settings.empty()) model.settings = std::move(settings);
  // 3. What every body needs must be in every body.
  supplyRequired(model, input);
  return model;
}

SchemaIdentity schemaIdentity(const QByteArray& openAPI) {
  const SchemaDocument document(openAPI);
  const Schema about = document.at({"info", "x-fal-metadata"});
  SchemaIdentity identity{textOf(about.text("endpointId")), textOf(about.text("category"))};
  if (identity.id.isEmpty()) identity.id = onlyPostPath(document);
  return identity;
}

}  // namespace sorvan::catalogue
