// The documents that the sandbox publishes, and a validator for them that shares no code with it.
#pragma once
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

namespace sorvan::test {

// Written once for the whole test program.
const QString& documentsFolder();
QString documentPath(const QString& id);
QByteArray documentBytes(const QString& id);

// The schema of the input's property, as it stands in the document; empty when there is none.
QJsonObject publishedProperty(const QString& id, const QString& name);
QJsonObject publishedInput(const QString& id);
QJsonObject publishedType(const QString& id, const QString& name);

// What is not of the published form, one sentence each.
QStringList formBreaches();
struct Judged {
  QString id;
  QString part;  // "input" or "output"
  QJsonObject value;
};
// What the documents forbid of these values, one sentence each.
QStringList valueBreaches(const QList<Judged>& values);

}  // namespace sorvan::test
