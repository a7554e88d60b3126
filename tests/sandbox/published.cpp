#include "sandbox/published.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <stdexcept>

namespace sorvan::test {

namespace {

constexpr int limitMilliseconds = 120'000;

QByteArray ran(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  if (!process.waitForFinished(limitMilliseconds) || process.exitCode() != 0)
    throw std::runtime_error("This failed: " + program.toStdString());
  return process.readAllStandardOutput();
}

QStringList sentences(const QByteArray& json) {
  QStringList all;
  for (const QJsonValue& each : QJsonDocument::fromJson(json).array()) all.append(each.toString());
  return all;
}

QString checker() { return QStringLiteral(SORVAN_SANDBOX_CHECKER); }

QJsonObject schemasOf(const QString& id) {
  const QJsonObject document = QJsonDocument::fromJson(documentBytes(id)).object();
  return document[QStringLiteral("components")][QStringLiteral("schemas")].toObject();
}

}  // namespace

const QString& documentsFolder() {
  static const QTemporaryDir folder;
  static const QString path = [] {
    const QString inside = folder.filePath(QStringLiteral("documents"));
    ran(QStringLiteral(SORVAN_SANDBOX), {QStringLiteral("--write-schemas"), inside});
    return inside;
  }();
  return path;
}

QString documentPath(const QString& id) {
  return documentsFolder() + QLatin1Char('/') + QString(id).replace(QLatin1Char('/'), QStringLiteral("__")) +
         QStringLiteral(".json");
}

QByteArray documentBytes(const QString& id) {
  QFile file(documentPath(id));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("There is no document of " + id.toStdString());
  return file.readAll();
}

QJsonObject publishedInput(const QString& id) {
  const QJsonObject schemas = schemasOf(id);
  for (auto type = schemas.begin(); type != schemas.end(); ++type)
    if (type.key().endsWith(QStringLiteral("Input")) && type.key() != QStringLiteral("ComboElementInput"))
      return type->toObject();
  return {};
}

QJsonObject publishedProperty(const QString& id, const QString& name) {
  return publishedInput(id)[QStringLiteral("properties")][name].toObject();
}

QJsonObject publishedType(const QString& id, const QString& name) { return schemasOf(id).value(name).toObject(); }

QStringList formBreaches() {
  return sentences(ran(QStringLiteral("python3"), {checker(), QStringLiteral("form"), documentsFolder()}));
}

QStringList valueBreaches(const QList<Judged>& values) {
  QJsonArray list;
  for (const Judged& each : values)
    list.append(QJsonObject{{QStringLiteral("document"), documentPath(each.id)},
                            {QStringLiteral("part"), each.part},
                            {QStringLiteral("value"), each.value}});
  return sentences(ran(QStringLiteral("python3"), {checker(), QStringLiteral("values")}, QJsonDocument(list).toJson()));
}

}  // namespace sorvan::test
