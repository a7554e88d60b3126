#include "base/settings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/durable_file.h"
#include "base/file_lock.h"
#include "base/texts.h"

namespace sorvan::base {

// Another process holds the lock for a few milliseconds; a stopped one must not freeze this one.
static constexpr std::chrono::milliseconds lockPatience(2000);
static constexpr qint64 maximumBytes = 32LL << 20;

Settings::Settings(QObject* parent) : QObject(parent) {}

Settings::Settings(QString file, QObject* parent) : QObject(parent), path(std::move(file)) { reload(); }

QString Settings::defaultPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/sorvan-studio/settings.json");
}

static QJsonObject readObject(const QString& path) {
  const auto bytes = readIfPresent(path, maximumBytes);
  return bytes ? decodeJson<QJsonObject>(*bytes, maximumBytes) : QJsonObject();
}

void Settings::reload() {
  if (path.isEmpty()) return;
  try {
    const QJsonObject onDisk = readObject(path);
    readProblem.clear();
    adopt(onDisk);
  } catch (const SorvanError& failure) {
    readProblem = failure.message();
  }
}

// The file's values with this process's unwritten ones on top, told key by key.
void Settings::adopt(const QJsonObject& onDisk) {
  QJsonObject merged = onDisk;
  for (const QString& key : unwritten) {
    merged.remove(key);
    if (values.contains(key)) merged.insert(key, values.value(key));
  }
  const QJsonObject before = std::exchange(values, merged);
  QStringList all = before.keys() + merged.keys();
  all.removeDuplicates();
  all.sort();
  for (const QString& key : all) {
    if (before.value(key) != merged.value(key)) Q_EMIT changed(key);
  }
}

void Settings::setValue(const QString& key, const QJsonValue& value) {
  if (values.contains(key) && values.value(key) == value && !unwritten.contains(key)) return;
  values.insert(key, value);
  unwritten.insert(key);
  Q_EMIT changed(key);
  write();
}

void Settings::remove(const QString& key) {
  if (!values.contains(key)) return;
  values.remove(key);
  unwritten.insert(key);
  Q_EMIT changed(key);
  write();
}

// What cannot be parsed is put aside and counts as empty; what cannot be read throws, and nothing is written.
QJsonObject Settings::readForMerging() {
  try {
    return readObject(path);
  } catch (const JsonError&) {
    const QString aside = path + QStringLiteral(".unreadable-") + uuidText(newUuid());
    renameDurably(path, aside, Replacing::NoReplace);
    readProblem = texts::settingsUnreadable(QFileInfo(aside).fileName());
    return {};
  }
}

void Settings::write() {
  if (path.isEmpty()) return unwritten.clear();
  // 1. The folder, private to the user.
  ensureFolderDurably(QFileInfo(path).path(), 0700);
  // 2. The lock, so that no other process writes between the reading and the writing.
  const FileLock lock(path + QStringLiteral(".lock"), lockPatience);
  if (!lock.isHeld()) throw SorvanError(texts::settingsLocked());
  // 3. What another process has written meanwhile.
  adopt(readForMerging());
  // 4. The whole file.
  writeDurably(path, jsonText(values, JsonForm::Indented), DurableMode::Sidecar);
  unwritten.clear();
}

}  // namespace sorvan::base
