#include "result_shape.h"

#include <QJsonArray>

#include "schema_walk.h"
#include "validation.h"

namespace sandbox {

namespace {

bool isFile(const QJsonValue& value) { return value.toObject().contains(QStringLiteral("url")); }
bool isFileList(const QJsonValue& value) { return isFile(value.toArray().first()); }

// The files of the result, in the order of their fields.
QJsonArray filesOf(const QJsonObject& result) {
  QJsonArray files;
  for (const QJsonValue& value : result) {
    if (isFile(value)) files.append(value);
    if (isFileList(value))
      for (const QJsonValue& each : value.toArray()) files.append(each);
  }
  return files;
}

bool takesFiles(const PublishedOutput& output) {
  static const QStringList names{QStringLiteral("images"),   QStringLiteral("image"),      QStringLiteral("video"),
                                 QStringLiteral("audio"),    QStringLiteral("audio_file"), QStringLiteral("masks"),
                                 QStringLiteral("model_glb")};
  return names.contains(output.name);
}

QJsonValue emptyOf(const PublishedOutput& output) {
  if (output.isList) return QJsonArray();
  if (output.type == "object") return QJsonObject();
  if (output.type == "string") return QString();
  if (output.type == "boolean") return false;
  return 0;
}

QJsonValue asListOrOne(const PublishedOutput& output, const QJsonArray& files) {
  return output.isList ? QJsonValue(files) : files.first();
}

}  // namespace

QJsonObject asPublished(const json::object& document, const QJsonObject& result) {
  const std::vector<PublishedOutput> outputs = outputsOf(document);
  if (outputs.empty()) return result;
  const QJsonArray files = filesOf(result);
  QJsonObject published;
  for (const PublishedOutput& output : outputs) {
    const QJsonValue made = result.value(output.name);
    const bool fits = !made.isUndefined() && made.isArray() == output.isList;
    if (fits)
      published.insert(output.name, made);
    else if (takesFiles(output) && !files.isEmpty())
      published.insert(output.name, asListOrOne(output, files));
    else if (output.required)
      published.insert(output.name, emptyOf(output));
  }
  return published;
}

QJsonObject withDefaults(const json::object& document, const QJsonObject& input) {
  QJsonObject whole = input;
  const SchemaWalk walk(document);
  const json::object* schema = walk.input();
  if (!schema) return whole;
  const json::object resolved = walk.resolved(*schema);
  const json::object* properties = objectIn(resolved, "properties");
  if (!properties) return whole;
  for (const auto& [key, property] : *properties) {
    const QString name = QString::fromUtf8(key.data(), qsizetype(key.size()));
    const json::value* start = property.as_object().if_contains("default");
    if (!start || whole.contains(name) || name == QStringLiteral("resolution")) continue;
    whole.insert(name, plainValue(*start));
  }
  return whole;
}

}  // namespace sandbox
