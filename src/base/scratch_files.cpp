#include "base/scratch_files.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/durable_file.h"
#include "base/ids.h"
#include "base/invariant.h"

namespace sorvan::base {

static constexpr double oldAfterSeconds = 24 * 60 * 60;

static const QStringList& prefixes() {
  static const QStringList ours{QStringLiteral("sorvan-piece-"),  QStringLiteral("sorvan-markup-"),
                                QStringLiteral("sorvan-upload-"), QStringLiteral("sorvan-sound-"),
                                QStringLiteral("sorvan-track-"),  QStringLiteral("sorvan-clip-"),
                                QStringLiteral("Pasted-")};
  return ours;
}

static bool hasOurPrefix(const QString& name) {
  return std::any_of(prefixes().begin(), prefixes().end(), [&](const QString& ours) { return name.startsWith(ours); });
}

static QString folderPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/sorvan-studio/tmp");
}

QString scratchFolder() {
  const QString folder = folderPath();
  ensureFolderDurably(folder, 0700);
  return folder;
}

QString scratchPath(const QString& prefix, const QString& extension) {
  invariant(hasOurPrefix(prefix), "scratch files have a prefix that is swept");
  return scratchFolder() + u'/' + prefix + uuidText(newUuid()) + u'.' + extension;
}

void sweepScratchFiles(Instant now) {
  const auto entries = QDir(folderPath()).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
  for (const QFileInfo& entry : entries) {
    const bool old = now - Instant::fromDateTime(entry.lastModified()) > oldAfterSeconds;
    if (old && (hasOurPrefix(entry.fileName()) || isDurableTemporary(entry.fileName())))
      FileLayer::current().remove(QFile::encodeName(entry.filePath()));
  }
}

}  // namespace sorvan::base
