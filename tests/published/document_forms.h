// The forms in which published documents write things down, each with a way to recognise it.
#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>
#include <map>
#include <vector>

namespace sorvan::test {

/// A document, looked at as plain JSON: nothing here is shared with the reader.
class WrittenDocument {
 public:
  explicit WrittenDocument(const QByteArray& text);

  const QJsonObject& input() const { return inputSchema; }
  const QJsonObject& output() const { return outputSchema; }
  /// The property as it is written, references not followed; empty when there is none.
  QJsonObject property(const QString& name) const;
  QStringList propertyNames() const { return properties.keys(); }
  /// The names in the order of the text.
  const QStringList& order() const { return written; }
  QStringList required() const;
  /// The schema itself and the variants that are written into it.
  std::vector<QJsonObject> places(const QString& name) const;
  /// Whether any property, or a variant of one, passes.
  bool any(const std::function<bool(const QJsonObject&)>& passes) const;
  QJsonObject schema(const QString& name) const { return schemas.value(name).toObject(); }

 private:
  QJsonObject schemas;
  QJsonObject inputSchema;
  QJsonObject outputSchema;
  QJsonObject properties;
  QStringList written;
};

struct DocumentForm {
  QString name;
  std::function<bool(const WrittenDocument&)> isIn;
};

/// Every form, by a name of its own.
const std::vector<DocumentForm>& documentForms();

/// A form for as many documents as possible, each document with a form of its own: the form's name by document.
std::map<QString, QString> formsSpreadOver(const std::map<QString, WrittenDocument>& documents);

}  // namespace sorvan::test
