// A model's published description, as far as a request body can be held against it.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace sorvan::test {

class PublishedDocument {
 public:
  /// `name` is a file of tests/data/openapi without ".json".
  explicit PublishedDocument(const QString& name);

  /// What the body breaks, one sentence each: unknown fields, missing ones, values of another type, outside the list or
  /// outside the bounds.
  QStringList breaches(const QJsonObject& body) const;
  bool has(const QString& field) const { return properties.contains(field); }

 private:
  QJsonObject resolved(const QJsonObject& schema) const;
  bool accepts(const QJsonObject& schema, const QJsonValue& value) const;

  QJsonObject schemas;
  QJsonObject properties;
  QStringList required;
};

}  // namespace sorvan::test
