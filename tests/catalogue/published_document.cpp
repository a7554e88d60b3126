#include "catalogue/published_document.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

namespace sorvan::test {

using namespace Qt::StringLiterals;

namespace {

QJsonObject inputSchema(const QJsonObject& document, const QJsonObject& schemas) {
  const QJsonObject paths = document.value(u"paths"_s).toObject();
  for (const QJsonValue& path : paths) {
    const QString reference =
        path[u"post"_s][u"requestBody"_s][u"content"_s][u"application/json"_s][u"schema"_s][u"$ref"_s].toString();
    if (!reference.isEmpty()) return schemas.value(reference.section(u'/', -1)).toObject();
  }
  return {};
}

bool isOfType(const QString& type, const QJsonValue& value) {
  if (type == u"string"_s) return value.isString();
  if (type == u"boolean"_s) return value.isBool();
  if (type == u"array"_s) return value.isArray();
  if (type == u"object"_s) return value.isObject();
  if (type == u"null"_s) return value.isNull();
  if (type == u"integer"_s) return value.isDouble() && value.toDouble() == std::floor(value.toDouble());
  return type != u"number"_s || value.isDouble();
}

bool isInBounds(const QJsonObject& schema, const QJsonValue& value) {
  const QJsonValue least = schema.value(u"minimum"_s);
  const QJsonValue most = schema.value(u"maximum"_s);
  if (!value.isDouble()) return true;
  return (!least.isDouble() || value.toDouble() >= least.toDouble()) &&
         (!most.isDouble() || value.toDouble() <= most.toDouble());
}

}  // namespace

PublishedDocument::PublishedDocument(const QString& name) {
  QFile file(QStringLiteral(SORVAN_TEST_DATA) + u"/openapi/"_s + name + u".json"_s);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no document " + name.toStdString());
  const QJsonObject document = QJsonDocument::fromJson(file.readAll()).object();
  schemas = document.value(u"components"_s).toObject().value(u"schemas"_s).toObject();
  const QJsonObject input = inputSchema(document, schemas);
  properties = input.value(u"properties"_s).toObject();
  for (const QJsonValue& field : input.value(u"required"_s).toArray()) required << field.toString();
  if (properties.isEmpty()) throw std::runtime_error("no input in " + name.toStdString());
}

QJsonObject PublishedDocument::resolved(const QJsonObject& schema) const {
  const QString reference = schema.value(u"$ref"_s).toString();
  return reference.isEmpty() ? schema : schemas.value(reference.section(u'/', -1)).toObject();
}

bool PublishedDocument::accepts(const QJsonObject& given, const QJsonValue& value) const {
  const QJsonObject schema = resolved(given);
  const QJsonArray variants = schema.value(u"anyOf"_s).toArray();
  if (!variants.isEmpty()) {
    return std::any_of(variants.begin(), variants.end(),
                       [&](const QJsonValue& variant) { return accepts(variant.toObject(), value); });
  }
  const QJsonArray list = schema.value(u"enum"_s).toArray();
  if (!list.isEmpty() && !list.contains(value)) return false;
  return isOfType(schema.value(u"type"_s).toString(), value) && isInBounds(schema, value);
}

QStringList PublishedDocument::breaches(const QJsonObject& body) const {
  QStringList found;
  for (const QString& field : required) {
    if (!body.contains(field)) found << u"misses “%1”"_s.arg(field);
  }
  for (auto field = body.begin(); field != body.end(); ++field) {
    if (!properties.contains(field.key())) {
      found << u"“%1” is unknown"_s.arg(field.key());
    } else if (!accepts(properties.value(field.key()).toObject(), field.value())) {
      found << u"“%1” is refused"_s.arg(field.key());
    }
  }
  return found;
}

}  // namespace sorvan::test
