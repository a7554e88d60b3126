// The settings file: whatever it holds, its keys survive a change of another key, and what is no settings file survives
// aside, byte for byte.
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/settings.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

/// A folder in memory: each input is written and synced.
static QString folder() {
  static const QTemporaryDir folder((QFile::exists(u"/dev/shm"_s) ? u"/dev/shm"_s : QDir::tempPath()) +
                                    u"/settings-XXXXXX"_s);
  require(folder.isValid(), "there is room for a temporary folder");
  return folder.path();
}

static void writeInput(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the input can be written");
}

static QByteArray bytesOf(const QString& path) {
  QFile file(path);
  require(file.open(QIODevice::ReadOnly), "the file is there");
  return file.readAll();
}

/// What was put aside, removed again so that the next input finds the folder as this one did.
static QList<QByteArray> takeAside() {
  QList<QByteArray> found;
  const QDir place(folder());
  for (const QString& name : place.entryList({u"*.unreadable-*"_s}, QDir::Files)) {
    found << bytesOf(place.filePath(name));
    QFile::remove(place.filePath(name));
  }
  return found;
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  using namespace Qt::StringLiterals;
  const QByteArray bytes = fuzz::Input(data, size).rest();
  const QString path = fuzz::folder() + u"/settings.json"_s;
  fuzz::writeInput(path, bytes);

  base::Settings settings(path);
  const bool readable = settings.problem().isEmpty();
  QStringList keys = settings.keys();
  for (const QString& key : keys) {
    settings.get<bool>(key);
    settings.get<int>(key);
    settings.get<QString>(key);
    settings.get<QStringList>(key);
  }
  fuzz::require(readable || keys.isEmpty(), "nothing is believed of a file that does not read");
  settings.set(u"fuzz/mark"_s, 7);

  const base::Settings again(path);
  fuzz::require(again.problem().isEmpty() && again.get<int>(u"fuzz/mark"_s) == 7, "a change is on disk");
  for (const QString& key : keys)
    if (key != u"fuzz/mark"_s)
      fuzz::require(again.get<QJsonValue>(key) == settings.get<QJsonValue>(key), "other keys survive a change");
  const auto aside = fuzz::takeAside();
  fuzz::require(readable ? aside.isEmpty() : aside == QList<QByteArray>{bytes},
                "what cannot be read is put aside as it was");
  return 0;
}
