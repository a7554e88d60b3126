#include "catalogue.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMutex>
#include <map>
#include <stdexcept>

#include "document.h"

namespace sandbox {

namespace {

Entries gathered() {
  Entries all;
  for (const auto part : {pictureEntries, editEntries, toolEntries, clipEntries, speechEntries, musicEntries,
                          effectEntries, soundToolEntries, refusedEntries, furtherEntries}) {
    for (Entry& entry : part()) all.push_back(std::move(entry));
  }
  return all;
}

QHash<QString, const Entry*> byId() {
  QHash<QString, const Entry*> all;
  for (const Entry& entry : catalogue()) all.insert(QString::fromStdString(entry.id), &entry);
  return all;
}

void writeDocument(const QString& folder, const Entry& entry, const json::object& document) {
  const QString name = QString::fromStdString(entry.id).replace(QLatin1Char('/'), QStringLiteral("__"));
  QFile file(QDir(folder).filePath(name + QStringLiteral(".json")));
  const std::string bytes = json::serialize(document) + '\n';
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes.data(), qint64(bytes.size())) < 0 ||
      !file.flush())
    throw std::runtime_error("A document cannot be written: " + file.errorString().toStdString());
}

}  // namespace

const Entries& catalogue() {
  static const Entries all = gathered();
  return all;
}

const Entry* entryOf(const QString& id) {
  static const QHash<QString, const Entry*> all = byId();
  return all.value(id, nullptr);
}

const json::object* publishedDocument(const QString& id) {
  static QMutex guard;
  static std::map<QString, json::object> made;
  const Entry* entry = entryOf(id);
  if (!entry || !entry->sheet) return nullptr;
  const QMutexLocker lock(&guard);
  auto known = made.find(id);
  if (known == made.end())
    known = made.emplace(id, documentOf({entry->id, entry->category, entry->about}, entry->sheet())).first;
  return &known->second;
}

void writeDocuments(const QString& folder) {
  if (!QDir().mkpath(folder)) throw std::runtime_error("The folder of documents cannot be made.");
  for (const Entry& entry : catalogue())
    if (const auto* document = publishedDocument(QString::fromStdString(entry.id)))
      writeDocument(folder, entry, *document);
}

}  // namespace sandbox
