#include "published/document_forms.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>

#include <set>

#include <boost/json.hpp>

namespace sorvan::test {

using namespace Qt::StringLiterals;

namespace {

using Document = WrittenDocument;

QJsonObject schemaBehind(const QJsonObject& document, const QJsonObject& schemas, const QString& path,
                         const QStringList& keys) {
  QJsonValue here = document.value(u"paths"_s).toObject().value(path);
  for (const QString& key : keys) here = here.toObject().value(key);
  return schemas.value(here.toObject().value(u"$ref"_s).toString().section(u'/', -1)).toObject();
}

/// The order of an object's keys, which only a reader that keeps it can tell.
QStringList keysInOrder(const QByteArray& text, const QString& schema) {
  const boost::json::value tree = boost::json::parse(text.toStdString());
  const auto& schemas = tree.at("components").at("schemas").as_object();
  QStringList keys;
  const auto* found = schemas.if_contains(schema.toStdString());
  const auto* properties = found ? found->as_object().if_contains("properties") : nullptr;
  if (!properties) return keys;
  for (const auto& member : properties->as_object()) keys << QString::fromStdString(std::string(member.key()));
  return keys;
}

bool isNull(const QJsonValue& schema) { return schema[u"type"_s] == u"null"_s; }

QJsonArray variantsOf(const QJsonObject& schema, const QString& word) { return schema.value(word).toArray(); }

bool hasNull(const QJsonArray& variants) { return std::any_of(variants.begin(), variants.end(), isNull); }

QStringList textsOf(const QJsonObject& schema) {
  QStringList texts;
  for (const QJsonValue& each : schema.value(u"enum"_s).toArray()) texts << each.toString();
  return texts;
}

bool lists(const Document& document, const QString& name, const QStringList& words) {
  for (const QJsonObject& place : document.places(name)) {
    const QStringList texts = textsOf(place);
    const bool all = std::all_of(words.begin(), words.end(), [&](const QString& word) { return texts.contains(word); });
    if (all) return true;
  }
  return false;
}

bool hasAny(const Document& document, const QString& name, const QString& keyword) {
  for (const QJsonObject& place : document.places(name)) {
    if (place.contains(keyword)) return true;
  }
  return false;
}

bool anyWith(const Document& document, const QString& keyword) {
  return document.any([&](const QJsonObject& place) { return place.contains(keyword); });
}

bool anyMark(const Document& document, const QString& mark) {
  return document.any([&](const QJsonObject& place) {
    return place.value(u"_fal_ui_field"_s) == mark || place.value(u"items"_s)[u"_fal_ui_field"_s] == mark;
  });
}

bool isList(const QJsonObject& schema) { return schema.value(u"type"_s) == u"array"_s; }

bool allValues(const QJsonObject& schema, const std::function<bool(const QJsonValue&)>& passes) {
  const QJsonArray values = schema.value(u"enum"_s).toArray();
  return !values.isEmpty() && std::all_of(values.begin(), values.end(), passes);
}

bool someValue(const QJsonObject& schema, const std::function<bool(const QJsonValue&)>& passes) {
  const QJsonArray values = schema.value(u"enum"_s).toArray();
  return std::any_of(values.begin(), values.end(), passes);
}

bool isNumber(const QJsonValue& value) { return value.isDouble(); }
bool isText(const QJsonValue& value) { return value.isString(); }

bool isRange(const QJsonObject& schema) { return schema.contains(u"minimum"_s) && schema.contains(u"maximum"_s); }

bool refersTo(const QJsonObject& schema, const QString& end) {
  return schema.value(u"$ref"_s).toString().endsWith(u'/' + end);
}

bool isTyped(const QJsonObject& schema, const QString& type) { return schema.value(u"type"_s) == type; }

std::vector<DocumentForm> sizeForms() {
  const QString size = u"image_size"_s;
  const QString ratio = u"aspect_ratio"_s;
  return {
      {u"a size in pixels or a preset"_s,
       [=](const Document& in) {
         const auto places = in.places(size);
         return std::any_of(places.begin(), places.end(),
                            [](const auto& each) { return refersTo(each, u"ImageSize"_s); }) &&
                lists(in, size, {u"square_hd"_s});
       }},
      {u"a size by a plain reference"_s,
       [=](const Document& in) { return refersTo(in.property(size), u"ImageSize"_s); }},
      {u"a size behind allOf"_s, [=](const Document& in) { return in.property(size).contains(u"allOf"_s); }},
      {u"a size that starts with pixels"_s,
       [=](const Document& in) { return in.property(size).value(u"default"_s).isObject(); }},
      {u"presets with auto"_s,
       [=](const Document& in) {
         return lists(in, size, {u"auto"_s, u"square_hd"_s});
       }},
      {u"presets with automatic resolutions"_s,
       [=](const Document& in) {
         return lists(in, size, {u"auto_2K"_s, u"auto_4K"_s});
       }},
      {u"a preset beyond the six"_s, [=](const Document& in) { return lists(in, size, {u"square_uhd"_s}); }},
      {u"presets alone"_s,
       [=](const Document& in) { return textsOf(in.property(size)).contains(u"landscape_16_9"_s); }},
      {u"sizes as plain texts"_s, [=](const Document& in) { return lists(in, size, {u"1024x1024"_s}); }},
      {u"ratios with auto"_s, [=](const Document& in) { return textsOf(in.property(ratio)).contains(u"auto"_s); }},
      {u"ratios without auto"_s,
       [=](const Document& in) {
         const QStringList texts = textsOf(in.property(ratio));
         return texts.contains(u"16:9"_s) && !texts.contains(u"auto"_s);
       }},
      {u"ratios or null"_s,
       [=](const Document& in) {
         return hasNull(variantsOf(in.property(ratio), u"anyOf"_s)) && lists(in, ratio, {u"16:9"_s});
       }},
      {u"one fixed ratio"_s, [=](const Document& in) { return hasAny(in, ratio, u"const"_s); }},
      {u"a ratio as any text"_s,
       [=](const Document& in) {
         const auto places = in.places(ratio);
         const bool isClosed = std::any_of(places.begin(), places.end(), [](const QJsonObject& each) {
           return each.contains(u"enum"_s) || each.contains(u"const"_s) || each.contains(u"$ref"_s);
         });
         return !places.empty() && !isClosed;
       }},
      {u"ratios by a reference"_s, [=](const Document& in) { return hasAny(in, ratio, u"$ref"_s); }},
  };
}

std::vector<DocumentForm> lengthForms() {
  const QString length = u"duration"_s;
  const auto when = [=](std::function<bool(const QJsonObject&)> passes) {
    return [=](const Document& in) {
      const auto places = in.places(length);
      return std::any_of(places.begin(), places.end(), passes);
    };
  };
  return {
      {u"seconds as texts"_s,
       [=](const Document& in) {
         return lists(in, length, {u"5"_s, u"10"_s});
       }},
      {u"seconds with their unit"_s,
       [=](const Document& in) {
         return lists(in, length, {u"4s"_s, u"8s"_s});
       }},
      {u"seconds as listed numbers"_s, when([](const QJsonObject& each) { return allValues(each, isNumber); })},
      {u"seconds as numbers and texts together"_s,
       when([](const QJsonObject& each) { return someValue(each, isNumber) && someValue(each, isText); })},
      {u"seconds as a range of whole numbers"_s,
       when([](const QJsonObject& each) { return isTyped(each, u"integer"_s) && isRange(each); })},
      {u"seconds as a range of any numbers"_s,
       when([](const QJsonObject& each) { return isTyped(each, u"number"_s) && isRange(each); })},
      {u"one fixed length"_s, when([](const QJsonObject& each) { return each.contains(u"const"_s); })},
      {u"seconds with auto"_s, [=](const Document& in) { return lists(in, length, {u"auto"_s}); }},
      {u"seconds by a reference"_s, [=](const Document& in) { return hasAny(in, length, u"$ref"_s); }},
      {u"seconds or null"_s, [=](const Document& in) { return hasNull(variantsOf(in.property(length), u"anyOf"_s)); }},
      {u"a length that every request needs"_s, [=](const Document& in) { return in.required().contains(length); }},
  };
}

std::vector<DocumentForm> settingForms() {
  return {
      {u"resolutions as lines"_s, [](const Document& in) { return lists(in, u"resolution"_s, {u"720p"_s}); }},
      {u"resolutions as thousands"_s,
       [](const Document& in) {
         return lists(in, u"resolution"_s, {u"1K"_s, u"2K"_s});
       }},
      {u"half a thousand"_s, [](const Document& in) { return lists(in, u"resolution"_s, {u"0.5K"_s}); }},
      {u"qualities"_s, [](const Document& in) { return hasAny(in, u"quality"_s, u"enum"_s); }},
      {u"a switch for sound"_s,
       [](const Document& in) { return isTyped(in.property(u"generate_audio"_s), u"boolean"_s); }},
      {u"a switch or null"_s,
       [](const Document& in) { return hasNull(variantsOf(in.property(u"generate_audio"_s), u"anyOf"_s)); }},
      {u"a factor of enlarging"_s, [](const Document& in) { return hasAny(in, u"upscale_factor"_s, u"maximum"_s); }},
      {u"a scale"_s, [](const Document& in) { return hasAny(in, u"scale"_s, u"maximum"_s); }},
      {u"camera angles"_s,
       [](const Document& in) {
         return hasAny(in, u"horizontal_angle"_s, u"type"_s) && !in.property(u"zoom"_s).isEmpty();
       }},
      {u"a count with both bounds"_s, [](const Document& in) { return isRange(in.property(u"num_images"_s)); }},
      {u"a count without an upper bound"_s,
       [](const Document& in) {
         return !in.property(u"num_images"_s).isEmpty() && !hasAny(in, u"num_images"_s, u"maximum"_s);
       }},
      {u"a listed count"_s, [](const Document& in) { return hasAny(in, u"num_images"_s, u"enum"_s); }},
      {u"png among the formats"_s, [](const Document& in) { return lists(in, u"output_format"_s, {u"png"_s}); }},
      {u"formats without png"_s,
       [](const Document& in) {
         return hasAny(in, u"output_format"_s, u"enum"_s) && !lists(in, u"output_format"_s, {u"png"_s});
       }},
      {u"a seed or null"_s, [](const Document& in) { return hasNull(variantsOf(in.property(u"seed"_s), u"anyOf"_s)); }},
      {u"a plain seed"_s, [](const Document& in) { return isTyped(in.property(u"seed"_s), u"integer"_s); }},
      {u"a seed that every request needs"_s, [](const Document& in) { return in.required().contains(u"seed"_s); }},
      {u"another fixed word"_s,
       [](const Document& in) {
         const QStringList known{u"duration"_s, u"aspect_ratio"_s};
         for (const QString& name : in.propertyNames()) {
           if (!known.contains(name) && hasAny(in, name, u"const"_s)) return true;
         }
         return false;
       }},
      {u"weights as a list of objects"_s,
       [](const Document& in) {
         return in.any([](const QJsonObject& each) {
           return each.value(u"items"_s)[u"$ref"_s].isString() && each.value(u"default"_s).isArray();
         });
       }},
  };
}

std::vector<DocumentForm> pictureForms() {
  const QString list = u"image_urls"_s;
  return {
      {u"a list of pictures"_s,
       [=](const Document& in) {
         return isList(in.property(list)) && !in.property(list).value(u"items"_s)[u"_fal_ui_field"_s].isString();
       }},
      {u"a list of marked pictures"_s,
       [=](const Document& in) { return in.property(list).value(u"items"_s)[u"_fal_ui_field"_s] == u"image"_s; }},
      {u"a least number of pictures"_s, [=](const Document& in) { return hasAny(in, list, u"minItems"_s); }},
      {u"a greatest number of pictures"_s, [=](const Document& in) { return hasAny(in, list, u"maxItems"_s); }},
      {u"a list of pictures or null"_s,
       [=](const Document& in) { return hasNull(variantsOf(in.property(list), u"anyOf"_s)); }},
      {u"a list under another name"_s,
       [=](const Document& in) {
         for (const QString& name : in.propertyNames()) {
           if (name != list && name.endsWith(list)) return true;
         }
         return false;
       }},
      {u"a picture without a mark"_s,
       [](const Document& in) {
         const QJsonObject field = in.property(u"image_url"_s);
         return isTyped(field, u"string"_s) && !field.contains(u"_fal_ui_field"_s);
       }},
      {u"a marked picture"_s, [](const Document& in) { return anyMark(in, u"image"_s); }},
      {u"a first picture"_s,
       [](const Document& in) {
         return !in.property(u"start_image_url"_s).isEmpty() || !in.property(u"first_frame_url"_s).isEmpty();
       }},
      {u"a last picture"_s,
       [](const Document& in) {
         for (const auto& name : {u"end_image_url"_s, u"tail_image_url"_s, u"last_frame_url"_s, u"end_frame_url"_s}) {
           if (!in.property(name).isEmpty()) return true;
         }
         return false;
       }},
      {u"a marked clip"_s, [](const Document& in) { return anyMark(in, u"video"_s); }},
      {u"a marked sound"_s, [](const Document& in) { return anyMark(in, u"audio"_s); }},
      {u"a marked mask"_s, [](const Document& in) { return anyMark(in, u"image_mask"_s); }},
      {u"a marked archive"_s, [](const Document& in) { return anyMark(in, u"archive"_s); }},
      {u"limits of the service's own"_s, [](const Document& in) { return anyWith(in, u"x-fal"_s); }},
      {u"a limit in bytes beside the field"_s, [](const Document& in) { return anyWith(in, u"max_file_size"_s); }},
      {u"limits told in words"_s, [](const Document& in) { return anyWith(in, u"limit_description"_s); }},
      {u"a hint inside a variant"_s, [](const Document& in) { return anyWith(in, u"ui"_s); }},
  };
}

std::vector<DocumentForm> writingForms() {
  const auto under = [](const QString& word) { return [=](const Document& in) { return anyWith(in, word); }; };
  return {
      {u"a reference with more beside it"_s,
       [](const Document& in) {
         return in.any([](const QJsonObject& each) { return each.contains(u"$ref"_s) && each.size() > 1; });
       }},
      {u"a reference to a reference"_s,
       [](const Document& in) {
         return in.any([&](const QJsonObject& each) {
           const QString name = each.value(u"$ref"_s).toString().section(u'/', -1);
           return !name.isEmpty() && in.schema(name).contains(u"$ref"_s);
         });
       }},
      {u"null before the type"_s,
       [](const Document& in) {
         return in.any([](const QJsonObject& each) { return isNull(each.value(u"anyOf"_s)[0]); });
       }},
      {u"oneOf"_s, under(u"oneOf"_s)},
      {u"allOf"_s, under(u"allOf"_s)},
      {u"null among the values"_s,
       [](const Document& in) {
         return in.any([](const QJsonObject& each) {
           return someValue(each, [](const QJsonValue& value) { return value.isNull(); });
         });
       }},
      {u"nullable"_s, under(u"nullable"_s)},
      {u"a greatest length of text"_s, under(u"maxLength"_s)},
      {u"a least length of text"_s, under(u"minLength"_s)},
      {u"a step"_s, under(u"multipleOf"_s)},
      {u"a bound that is left out"_s, under(u"exclusiveMinimum"_s)},
      {u"a format"_s, under(u"format"_s)},
      {u"a deprecated field"_s, under(u"deprecated"_s)},
      {u"examples"_s, under(u"examples"_s)},
      {u"a pattern"_s, under(u"pattern"_s)},
      {u"a prompt that may be missing"_s,
       [](const Document& in) { return !in.property(u"prompt"_s).isEmpty() && !in.required().contains(u"prompt"_s); }},
      {u"no prompt"_s, [](const Document& in) { return in.property(u"prompt"_s).isEmpty(); }},
      {u"no display order"_s, [](const Document& in) { return !in.input().contains(u"x-fal-order-properties"_s); }},
      {u"a display order unlike the written one"_s,
       [](const Document& in) {
         const QJsonArray shown = in.input().value(u"x-fal-order-properties"_s).toArray();
         return !shown.isEmpty() && shown.at(0).toString() != in.order().value(0);
       }},
      {u"an input that is described"_s, [](const Document& in) { return in.input().contains(u"description"_s); }},
      {u"timings of any name"_s,
       [](const Document& in) {
         return in.output().value(u"properties"_s)[u"timings"_s][u"additionalProperties"_s].isObject() ||
                in.output().value(u"properties"_s)[u"timings"_s][u"additionalProperties"_s].isBool();
       }},
  };
}

/// One more document for a form, moving others where that helps.
bool place(std::size_t form, const std::vector<std::vector<std::size_t>>& carriers, std::vector<int>& formOf,
           std::set<std::size_t>& tried) {
  for (const std::size_t document : carriers[form]) {
    if (!tried.insert(document).second) continue;
    const int other = formOf[document];
    if (other >= 0 && !place(static_cast<std::size_t>(other), carriers, formOf, tried)) continue;
    formOf[document] = static_cast<int>(form);
    return true;
  }
  return false;
}

}  // namespace

WrittenDocument::WrittenDocument(const QByteArray& text) {
  const QJsonObject document = QJsonDocument::fromJson(text).object();
  schemas = document.value(u"components"_s)[u"schemas"_s].toObject();
  for (const QString& path : document.value(u"paths"_s).toObject().keys()) {
    const QStringList content{u"content"_s, u"application/json"_s, u"schema"_s};
    const QJsonObject in = schemaBehind(document, schemas, path, QStringList{u"post"_s, u"requestBody"_s} + content);
    const QJsonObject out =
        schemaBehind(document, schemas, path, QStringList{u"get"_s, u"responses"_s, u"200"_s} + content);
    if (!in.isEmpty()) {
      inputSchema = in;
      const QString reference = document
                                    .value(u"paths"_s)[path][u"post"_s][u"requestBody"_s][u"content"_s]
                                                      [u"application/json"_s][u"schema"_s][u"$ref"_s]
                                    .toString();
      written = keysInOrder(text, reference.section(u'/', -1));
    }
    if (path.endsWith(u"{request_id}"_s)) outputSchema = out;
  }
  properties = inputSchema.value(u"properties"_s).toObject();
}

QJsonObject WrittenDocument::property(const QString& name) const { return properties.value(name).toObject(); }

QStringList WrittenDocument::required() const {
  QStringList names;
  for (const QJsonValue& each : inputSchema.value(u"required"_s).toArray()) names << each.toString();
  return names;
}

std::vector<QJsonObject> WrittenDocument::places(const QString& name) const {
  std::vector<QJsonObject> found;
  if (!properties.contains(name)) return found;
  found.push_back(property(name));
  for (const auto& word : {u"anyOf"_s, u"oneOf"_s, u"allOf"_s}) {
    for (const QJsonValue& each : property(name).value(word).toArray()) found.push_back(each.toObject());
  }
  return found;
}

bool WrittenDocument::any(const std::function<bool(const QJsonObject&)>& passes) const {
  const QStringList names = propertyNames();
  return std::any_of(names.begin(), names.end(), [&](const QString& name) {
    const auto found = places(name);
    return std::any_of(found.begin(), found.end(), passes);
  });
}

const std::vector<DocumentForm>& documentForms() {
  static const std::vector<DocumentForm> all = [] {
    std::vector<DocumentForm> forms;
    for (auto part : {sizeForms(), lengthForms(), settingForms(), pictureForms(), writingForms()}) {
      for (DocumentForm& form : part) forms.push_back(std::move(form));
    }
    return forms;
  }();
  return all;
}

std::map<QString, QString> formsSpreadOver(const std::map<QString, WrittenDocument>& documents) {
  const auto& forms = documentForms();
  std::vector<std::vector<std::size_t>> carriers(forms.size());
  QStringList ids;
  for (const auto& [id, document] : documents) {
    for (std::size_t form = 0; form < forms.size(); ++form) {
      if (forms[form].isIn(document)) carriers[form].push_back(static_cast<std::size_t>(ids.size()));
    }
    ids << id;
  }
  std::vector<int> formOf(documents.size(), -1);
  for (std::size_t form = 0; form < forms.size(); ++form) {
    std::set<std::size_t> tried;
    place(form, carriers, formOf, tried);
  }
  std::map<QString, QString> spread;
  for (std::size_t index = 0; index < formOf.size(); ++index) {
    if (formOf[index] >= 0)
      spread[ids[static_cast<qsizetype>(index)]] = forms[static_cast<std::size_t>(formOf[index])].name;
  }
  return spread;
}

}  // namespace sorvan::test
