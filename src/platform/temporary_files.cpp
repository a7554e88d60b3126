#include "platform/temporary_files.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "base/durable_file.h"
#include "base/ids.h"

namespace sorvan::platform {
namespace {

constexpr mode_t privateMode = 0700;
constexpr qint64 longestLife = 24 * 3600;  // seconds

QString folderPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/sorvan-studio/tmp");
}

}  // namespace

QString temporaryFolder() {
  const QString folder = folderPath();
  ensureFolderDurably(folder, privateMode);
  // A folder that was there before may be open to others.
  if (::chmod(QFile::encodeName(folder).constData(), privateMode) != 0)
    throw FileError(folder, QStringLiteral("protected"), errno);
  return folder;
}

TemporaryFile::TemporaryFile(const QString& kind, const QString& ext) : TemporaryFile(kind, ext, newUuid()) {}

TemporaryFile::TemporaryFile(const QString& kind, const QString& ext, const QUuid& owner)
    : path_(QStringLiteral("%1/sorvan-%2-%3").arg(temporaryFolder(), kind, uuidText(owner))) {
  if (!ext.isEmpty()) path_ += QLatin1Char('.') + ext;
}

TemporaryFile::~TemporaryFile() { remove(); }

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept : path_(std::exchange(other.path_, {})) {}

TemporaryFile& TemporaryFile::operator=(TemporaryFile&& other) noexcept {
  if (this != &other) {
    remove();
    path_ = std::exchange(other.path_, {});
  }
  return *this;
}

void TemporaryFile::remove() {
  if (!path_.isEmpty()) QFile::remove(path_);  // not durable: a temporary file
}

void sweepTemporaryFiles(const QDateTime& now) {
  const QDir folder(folderPath());
  const auto entries = folder.entryInfoList({QStringLiteral("sorvan-*"), QStringLiteral("Pasted-*")},
                                            QDir::Files | QDir::Hidden | QDir::System);
  for (const QFileInfo& entry : entries)
    if (entry.lastModified().secsTo(now) > longestLife)
      QFile::remove(entry.absoluteFilePath());  // not durable: a temporary file
}

}  // namespace sorvan::platform
