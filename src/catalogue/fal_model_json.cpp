#include "catalogue/fal_model_json.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "base/sorvan_error.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

/// Reads one object field by field; every refusal names the field.
class FieldReader {
 public:
  explicit FieldReader(QJsonObject object) : m_object(std::move(object)) {}

  bool has(const QString& key) const {
    const QJsonValue value = m_object.value(key);
    return !value.isUndefined() && !value.isNull();
  }

  QString text(const QString& key) const {
    const QJsonValue value = m_object.value(key);
    if (!value.isString()) refuse(key);
    return value.toString();
  }

  bool flag(const QString& key) const {
    const QJsonValue value = m_object.value(key);
    if (!value.isBool()) refuse(key);
    return value.toBool();
  }

  qint64 number(const QString& key) const { return wholeNumber(m_object.value(key), key); }

  QStringList texts(const QString& key) const {
    QStringList list;
    for (const QJsonValue& value : array(key)) {
      if (!value.isString()) refuse(key);
      list << value.toString();
    }
    return list;
  }

  QJsonArray array(const QString& key) const {
    const QJsonValue value = m_object.value(key);
    if (!value.isArray()) refuse(key);
    return value.toArray();
  }

  QJsonObject object(const QString& key) const { return asObject(m_object.value(key), key); }

  /// The name of the object's single key, and the object under it.
  std::pair<QString, FieldReader> taggedCase(const QString& key) const {
    const QJsonObject tagged = object(key);
    if (tagged.size() != 1) refuse(key);
    const QString name = tagged.keys().constFirst();
    return {name, FieldReader(asObject(tagged.value(name), key))};
  }

  static QJsonObject asObject(const QJsonValue& value, const QString& key) {
    if (!value.isObject()) refuse(key);
    return value.toObject();
  }

  static qint64 wholeNumber(const QJsonValue& value, const QString& key) {
    const double number = value.toDouble();
    if (!value.isDouble() || number != std::floor(number) || std::abs(number) > 9e15) refuse(key);
    return static_cast<qint64>(number);
  }

  [[noreturn]] static void refuse(const QString& key) {
    throw SorvanError(u"A stored model could not be read: “%1” is missing or not as expected."_s.arg(key));
  }

 private:
  QJsonObject m_object;
};

QString kindName(Setting::Kind kind) {
  if (kind == Setting::Kind::number) return u"number"_s;
  return kind == Setting::Kind::toggle ? u"toggle"_s : u"choice"_s;
}

Setting::Kind kindOf(const QString& name) {
  if (name == u"choice"_s) return Setting::Kind::choice;
  if (name == u"number"_s) return Setting::Kind::number;
  if (name == u"toggle"_s) return Setting::Kind::toggle;
  FieldReader::refuse(u"kind"_s);
}

QString outputName(MediaType type) {
  if (type == MediaType::video) return u"video"_s;
  return type == MediaType::audio ? u"audio"_s : u"image"_s;
}

MediaType outputOf(const QString& name) {
  if (name == u"image"_s) return MediaType::image;
  if (name == u"video"_s) return MediaType::video;
  if (name == u"audio"_s) return MediaType::audio;
  FieldReader::refuse(u"output"_s);
}

template <class T>
void put(QJsonObject& object, const QString& key, const std::optional<T>& value) {
  if (value) object.insert(key, *value);
}

QJsonObject tagged(const QString& name, const QJsonObject& values) { return QJsonObject{{name, values}}; }

QJsonObject settingToJson(const Setting& setting) {
  QJsonObject object{{u"field"_s, setting.field},
                     {u"label"_s, setting.label},
                     {u"kind"_s, kindName(setting.kind)},
                     {u"values"_s, QJsonArray::fromStringList(setting.values)}};
  put(object, u"defaultValue"_s, setting.defaultValue);
  if (setting.accepts) object.insert(u"accepts"_s, QJsonArray{setting.accepts->lower, setting.accepts->upper});
  put(object, u"onlyWith"_s, setting.onlyWith);
  return object;
}

WholeRange rangeFromJson(const QJsonArray& bounds) {
  if (bounds.size() != 2) FieldReader::refuse(u"accepts"_s);
  const WholeRange range{FieldReader::wholeNumber(bounds[0], u"accepts"_s),
                         FieldReader::wholeNumber(bounds[1], u"accepts"_s)};
  if (range.lower > range.upper) FieldReader::refuse(u"accepts"_s);
  return range;
}

Setting settingFromJson(const FieldReader& reader) {
  Setting setting;
  setting.field = reader.text(u"field"_s);
  setting.label = reader.text(u"label"_s);
  setting.kind = kindOf(reader.text(u"kind"_s));
  setting.values = reader.texts(u"values"_s);
  if (reader.has(u"defaultValue"_s)) setting.defaultValue = reader.text(u"defaultValue"_s);
  if (reader.has(u"accepts"_s)) setting.accepts = rangeFromJson(reader.array(u"accepts"_s));
  if (reader.has(u"onlyWith"_s)) setting.onlyWith = reader.text(u"onlyWith"_s);
  return setting;
}

QJsonObject textInputToJson(const TextInput& text) {
  return {{u"field"_s, text.field},
          {u"label"_s, text.label},
          {u"placeholder"_s, text.placeholder},
          {u"required"_s, text.required},
          {u"limit"_s, text.limit}};
}

TextInput textInputFromJson(const FieldReader& reader) {
  TextInput text;
  text.field = reader.text(u"field"_s);
  text.label = reader.text(u"label"_s);
  text.placeholder = reader.text(u"placeholder"_s);
  text.required = reader.flag(u"required"_s);
  text.limit = static_cast<int>(reader.number(u"limit"_s));
  return text;
}

template <class T, class Convert>
QJsonArray listToJson(const std::vector<T>& list, Convert convert) {
  QJsonArray array;
  for (const T& each : list) array.append(convert(each));
  return array;
}

template <class T, class Convert>
std::vector<T> listFromJson(const QJsonArray& array, const QString& key, Convert convert) {
  std::vector<T> list;
  for (const QJsonValue& each : array) list.push_back(convert(FieldReader(FieldReader::asObject(each, key))));
  return list;
}

QJsonObject sizingToJson(const Sizing& sizing) {
  if (const auto* dimensions = std::get_if<SizeByDimensions>(&sizing)) {
    return tagged(u"dimensions"_s, {{u"field"_s, dimensions->field}});
  }
  if (const auto* aspect = std::get_if<SizeByAspect>(&sizing)) {
    return tagged(u"aspect"_s, {{u"field"_s, aspect->field}, {u"values"_s, QJsonArray::fromStringList(aspect->values)}});
  }
  if (const auto* named = std::get_if<SizeByName>(&sizing)) {
    return tagged(u"sizes"_s, {{u"field"_s, named->field}, {u"values"_s, QJsonArray::fromStringList(named->values)}});
  }
  return tagged(u"none"_s, {});
}

Sizing sizingFromJson(const FieldReader& reader) {
  const auto [name, values] = reader.taggedCase(u"sizing"_s);
  if (name == u"dimensions"_s) return SizeByDimensions{values.text(u"field"_s)};
  if (name == u"aspect"_s) return SizeByAspect{values.text(u"field"_s), values.texts(u"values"_s)};
  if (name == u"sizes"_s) return SizeByName{values.text(u"field"_s), values.texts(u"values"_s)};
  if (name != u"none"_s) FieldReader::refuse(u"sizing"_s);
  return NoSizing{};
}

QJsonObject inputToJson(const ImageInput& input) {
  if (const auto* single = std::get_if<SingleInput>(&input)) {
    return tagged(u"single"_s, {{u"field"_s, single->field}, {u"required"_s, single->required}});
  }
  if (const auto* list = std::get_if<ListInput>(&input)) {
    return tagged(u"list"_s, {{u"field"_s, list->field}, {u"required"_s, list->required}});
  }
  return tagged(u"none"_s, {});
}

ImageInput inputFromJson(const FieldReader& reader) {
  const auto [name, values] = reader.taggedCase(u"imageInput"_s);
  if (name == u"single"_s) return SingleInput{values.text(u"field"_s), values.flag(u"required"_s)};
  if (name == u"list"_s) return ListInput{values.text(u"field"_s), values.flag(u"required"_s)};
  if (name != u"none"_s) FieldReader::refuse(u"imageInput"_s);
  return NoInput{};
}

void readFlag(const FieldReader& reader, const QString& key, std::optional<bool>& into) {
  if (reader.has(key)) into = reader.flag(key);
}
void readText(const FieldReader& reader, const QString& key, std::optional<QString>& into) {
  if (reader.has(key)) into = reader.text(key);
}
template <class T>
void readNumber(const FieldReader& reader, const QString& key, std::optional<T>& into) {
  if (reader.has(key)) into = static_cast<T>(reader.number(key));
}

void readRequired(const FieldReader& reader, FalModel& model) {
  model.id = reader.text(u"id"_s);
  model.name = reader.text(u"name"_s);
  model.category = reader.text(u"category"_s);
  model.summary = reader.text(u"summary"_s);
  model.output = outputOf(reader.text(u"output"_s));
  model.hasPrompt = reader.flag(u"hasPrompt"_s);
  model.maxCount = static_cast<int>(reader.number(u"maxCount"_s));
  model.sizing = sizingFromJson(reader);
  model.hasSeed = reader.flag(u"hasSeed"_s);
  model.pngOutput = reader.flag(u"pngOutput"_s);
  model.imageInput = inputFromJson(reader);
}

void readOptional(const FieldReader& reader, FalModel& model) {
  readFlag(reader, u"promptRequired"_s, model.promptRequired);
  if (reader.has(u"settings"_s)) {
    model.settings = listFromJson<Setting>(reader.array(u"settings"_s), u"settings"_s, settingFromJson);
  }
  readText(reader, u"endImageField"_s, model.endImageField);
  readText(reader, u"defaultsJSON"_s, model.defaultsJSON);
  readFlag(reader, u"camera"_s, model.camera);
  readFlag(reader, u"dialogue"_s, model.dialogue);
  readText(reader, u"promptField"_s, model.promptField);
  readFlag(reader, u"videoInput"_s, model.videoInput);
  readNumber(reader, u"promptLimit"_s, model.promptLimit);
  readFlag(reader, u"billedPerMinute"_s, model.billedPerMinute);
  readNumber(reader, u"billedEvery"_s, model.billedEvery);
  readFlag(reader, u"audioInput"_s, model.audioInput);
  if (reader.has(u"texts"_s)) {
    model.texts = listFromJson<TextInput>(reader.array(u"texts"_s), u"texts"_s, textInputFromJson);
  }
  readNumber(reader, u"inputByteLimit"_s, model.inputByteLimit);
}

void writeOptional(const FalModel& model, QJsonObject& object) {
  put(object, u"promptRequired"_s, model.promptRequired);
  if (model.settings) object.insert(u"settings"_s, listToJson(*model.settings, settingToJson));
  put(object, u"endImageField"_s, model.endImageField);
  put(object, u"defaultsJSON"_s, model.defaultsJSON);
  put(object, u"camera"_s, model.camera);
  put(object, u"dialogue"_s, model.dialogue);
  put(object, u"promptField"_s, model.promptField);
  put(object, u"videoInput"_s, model.videoInput);
  put(object, u"promptLimit"_s, model.promptLimit);
  put(object, u"billedPerMinute"_s, model.billedPerMinute);
  put(object, u"billedEvery"_s, model.billedEvery);
  put(object, u"audioInput"_s, model.audioInput);
  if (model.texts) object.insert(u"texts"_s, listToJson(*model.texts, textInputToJson));
  put(object, u"inputByteLimit"_s, model.inputByteLimit);
}

}  // namespace

QJsonObject modelToJson(const FalModel& model) {
  QJsonObject object{{u"id"_s, model.id},
                     {u"name"_s, model.name},
                     {u"category"_s, model.category},
                     {u"summary"_s, model.summary},
                     {u"output"_s, outputName(model.output)},
                     {u"hasPrompt"_s, model.hasPrompt},
                     {u"maxCount"_s, model.maxCount},
                     {u"sizing"_s, sizingToJson(model.sizing)},
                     {u"hasSeed"_s, model.hasSeed},
                     {u"pngOutput"_s, model.pngOutput},
                     {u"imageInput"_s, inputToJson(model.imageInput)}};
  writeOptional(model, object);
  return object;
}

FalModel modelFromJson(const QJsonObject& object) {
  const FieldReader reader(object);
  FalModel model;
  readRequired(reader, model);
  readOptional(reader, model);
  return model;
}

StoredModels modelsFromText(const QByteArray& text) {
  StoredModels stored;
  const QJsonDocument document = QJsonDocument::fromJson(text);
  stored.complete = document.isArray();
  for (const QJsonValue& element : document.array()) {
    try {
      stored.models.push_back(modelFromJson(FieldReader::asObject(element, u"model"_s)));
    } catch (const SorvanError&) {
      // A newer release may have written a case that this one does not know; the other models stay.
      stored.complete = false;
    }
  }
  return stored;
}

QByteArray modelsToText(const std::vector<FalModel>& models) {
  return QJsonDocument(listToJson(models, modelToJson)).toJson(QJsonDocument::Compact);
}

}  // namespace sorvan::catalogue
