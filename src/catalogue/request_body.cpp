#include "catalogue/request_body.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSize>

#include "base/sorvan_error.h"
#include "base/text.h"
#include "catalogue/dialogue.h"
#include "catalogue/named_ratios.h"
#include "catalogue/schema_size.h"
#include "catalogue/texts.h"
#include "core/image_format.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int millisecondsPerMinute = 60000;

QJsonObject startingBody(const FalModel& model) {
  return QJsonDocument::fromJson(model.defaultsJSON.value_or(QString()).toUtf8()).object();
}

void addPrompt(const FalModel& model, const BodyParts& parts, QJsonObject& body) {
  if (!model.hasPrompt) return;
  if (parts.prompt.isEmpty() && !model.promptRequired.value_or(true)) return;
  body.insert(model.promptField.value_or(u"prompt"_s), parts.prompt);
}

QJsonValue converted(const Setting& setting, const QString& value) {
  if (setting.kind == Setting::Kind::toggle) return value == u"true"_s;
  const bool isNumber = setting.numbers && setting.numbers->contains(value);
  if (setting.kind == Setting::Kind::choice && !isNumber) return value;
  bool reads = false;
  const qint64 whole = value.toLongLong(&reads);
  if (reads) return whole;
  const double number = value.toDouble(&reads);
  return reads ? QJsonValue(number) : QJsonValue(value);
}

void setField(QJsonObject& body, const QString& field, const QJsonValue& value) {
  const QStringList path = field.split(u'.');
  if (path.size() != 2) {
    body.insert(field, value);
    return;
  }
  QJsonObject nested = body.value(path[0]).toObject();
  nested.insert(path[1], value);
  body.insert(path[0], nested);
}

bool isValidChoice(const Setting& setting, const TextByKey& options) {
  return options.contains(setting.field) && setting.isValid(options.value(setting.field));
}

bool hasItsCompanion(const Setting& setting, const TextByKey& options) {
  return !setting.onlyWith || !options.value(*setting.onlyWith).trimmed().isEmpty();
}

void addSettings(const FalModel& model, const TextByKey& options, QJsonObject& body) {
  for (const Setting& setting : model.allSettings()) {
    if (!isValidChoice(setting, options) || !hasItsCompanion(setting, options)) continue;
    setField(body, setting.field, converted(setting, options.value(setting.field)));
  }
}

void addTexts(const FalModel& model, const TextByKey& options, QJsonObject& body) {
  for (const TextInput& input : model.texts.value_or(std::vector<TextInput>())) {
    const QString text = options.value(input.field).trimmed();
    if (text.isEmpty() && input.required) throw SorvanError(texts::textNeeded(model.name, input.label));
    if (!text.isEmpty()) body.insert(input.field, firstChars(text, input.limit));
  }
}

/// A track of exactly so many minutes would be billed for one minute more.
void avoidTheNextMinute(const FalModel& model, QJsonObject& body) {
  const QString field = u"music_length_ms"_s;
  if (!model.billedPerMinute.value_or(false) || !body.value(field).isDouble()) return;
  const double length = body.value(field).toDouble();
  if (length == std::floor(length) && std::fmod(length, millisecondsPerMinute) == 0) {
    body.insert(field, static_cast<qint64>(length) - 1000);
  }
}

/// What a setting without its companion says, such as the singer's voice without lyrics, still goes with the prompt.
void tellVoicesInPrompt(const FalModel& model, const TextByKey& options, QJsonObject& body) {
  const QString field = model.promptField.value_or(u"prompt"_s);
  for (const Setting& setting : model.allSettings()) {
    if (!setting.onlyWith || hasItsCompanion(setting, options) || !isValidChoice(setting, options)) continue;
    const QString value = options.value(setting.field);
    const QJsonValue prompt = body.value(field);
    if (!prompt.isString() || prompt.toString().contains(value, Qt::CaseInsensitive)) continue;
    body.insert(field, u"%1, %2 vocals"_s.arg(prompt.toString(), value));
  }
}

void addDialogue(const FalModel& model, const BodyParts& parts, QJsonObject& body) {
  if (!model.dialogue.value_or(false)) return;
  body.remove(u"prompt"_s);
  body.insert(u"inputs"_s, dialogueInputs(parts.prompt));
}

void addCamera(const FalModel& model, const TextByKey& options, QJsonObject& body) {
  if (!model.camera.value_or(false)) return;
  for (const QString& field : {u"horizontal_angle"_s, u"vertical_angle"_s, u"zoom"_s}) {
    bool reads = false;
    const double number = options.value(field).toDouble(&reads);
    if (reads && std::isfinite(number)) body.insert(field, number);
  }
}

void addEndImage(const FalModel& model, const BodyParts& parts, QJsonObject& body) {
  if (!parts.endImage && model.endImageRequired.value_or(false)) throw SorvanError(texts::needsEndFrame(model.name));
  if (!parts.endImage) return;
  if (!model.endImageField) throw SorvanError(texts::noEndFrame(model.name));
  body.insert(*model.endImageField, *parts.endImage);
}

void addCount(const FalModel& model, const BodyParts& parts, QJsonObject& body) {
  if (parts.count > model.maxCount) throw SorvanError(texts::tooManyOutputs(model.name, model.maxCount));
  if (model.maxCount >= 2) body.insert(u"num_images"_s, parts.count);
}

QJsonObject dimensionsOf(const FalModel& model, const QString& size) {
  const QStringList sides = size.split(u'x');
  bool wideReads = false;
  bool highReads = false;
  const int width = sides.value(0).toInt(&wideReads);
  const int height = sides.value(1).toInt(&highReads);
  if (sides.size() != 2 || !wideReads || !highReads) throw SorvanError(texts::unsupportedSize());
  const QSize sent = model.sides ? fittedSize(QSize(width, height), *model.sides) : QSize(width, height);
  return {{u"width"_s, sent.width()}, {u"height"_s, sent.height()}};
}

QString ratioFor(const FalModel& model, const SizeByAspect& sizing, const BodyParts& parts) {
  const auto* format = ImageFormat::find(parts.size);
  const QString ratio = format ? QString(format->ratio) : QString();
  const auto free = freeChoice(sizing.values);
  const bool keepsShape = parts.keepImageShape && model.output == MediaType::video && !parts.inputs.isEmpty();
  if (keepsShape && free) return *free;
  if (sizing.values.contains(ratio)) return ratio;
  if (free) return *free;
  throw SorvanError(texts::supportedRatios(model.name, sizing.values));
}

/// The size itself, else one of the same shape, else the model's own choice: a picture of another shape is paid for
/// too.
std::optional<QString> namedSizeFor(const QStringList& values, const QString& size) {
  if (values.contains(size)) return size;
  const auto* format = ImageFormat::find(size);
  const auto sameShape = format ? firstWithRatio(values, format->ratio) : std::nullopt;
  return sameShape ? sameShape : freeChoice(values);
}

void addSize(const FalModel& model, const BodyParts& parts, QJsonObject& body) {
  if (const auto* dimensions = std::get_if<SizeByDimensions>(&model.sizing)) {
    body.insert(dimensions->field, dimensionsOf(model, parts.size));
  } else if (const auto* aspect = std::get_if<SizeByAspect>(&model.sizing)) {
    // Values of which the composer knows none are left to the service.
    if (canChooseRatio(aspect->values)) body.insert(aspect->field, ratioFor(model, *aspect, parts));
  } else if (const auto* named = std::get_if<SizeByName>(&model.sizing)) {
    if (const auto size = namedSizeFor(named->values, parts.size)) body.insert(named->field, *size);
  }
}

void addSingleInput(const FalModel& model, const SingleInput& input, const QStringList& addresses, QJsonObject& body) {
  if (addresses.size() > 1) throw SorvanError(texts::acceptsOneInput(model.name));
  if (addresses.isEmpty() && input.required) throw SorvanError(texts::needsInput(model.name));
  if (!addresses.isEmpty()) body.insert(input.field, addresses.constFirst());
}

void addInputs(const FalModel& model, const QStringList& addresses, QJsonObject& body) {
  if (const auto* single = std::get_if<SingleInput>(&model.imageInput)) {
    addSingleInput(model, *single, addresses, body);
  } else if (const auto* list = std::get_if<ListInput>(&model.imageInput)) {
    if (addresses.isEmpty() && list->required) throw SorvanError(texts::needsAtLeastOneInput(model.name));
    const int fewest = model.minInputs.value_or(1);
    if (!addresses.isEmpty() && addresses.size() < fewest)
      throw SorvanError(texts::needsMoreInputs(model.name, fewest));
    if (!addresses.isEmpty()) body.insert(list->field, QJsonArray::fromStringList(addresses));
  } else if (!addresses.isEmpty()) {
    throw SorvanError(texts::noReferences(model.name));
  }
}

}  // namespace

QJsonObject requestBody(const FalModel& model, const BodyParts& parts) {
  // The order matters: later steps overwrite earlier ones.
  QJsonObject body = startingBody(model);
  addPrompt(model, parts, body);
  addSettings(model, parts.options, body);
  addTexts(model, parts.options, body);
  avoidTheNextMinute(model, body);
  tellVoicesInPrompt(model, parts.options, body);
  addDialogue(model, parts, body);
  addCamera(model, parts.options, body);
  addEndImage(model, parts, body);
  addCount(model, parts, body);
  addSize(model, parts, body);
  if (model.hasSeed && parts.seed) body.insert(u"seed"_s, static_cast<qint64>(*parts.seed));
  if (model.pngOutput) body.insert(u"output_format"_s, u"png"_s);
  addInputs(model, parts.inputs, body);
  return body;
}

}  // namespace sorvan::catalogue
