#include "core/workspace_files.h"

#include <sys/stat.h>

#include "base/durable_file.h"
#include "base/ids.h"
#include "base/text.h"
#include "core/plain_extension.h"
#include "core/records.h"

namespace sorvan::core {
namespace {

/// Counter, hyphen, point and extension stay within what a file system allows for a name, which is 255 bytes.
constexpr qsizetype longestSafeNameBytes = 200;
constexpr qsizetype longestSafeNameChars = 80;

const std::array<QString, 4>& mediaSubfolders() {
  static const std::array<QString, 4> names{QStringLiteral("generated"), QStringLiteral("imported"),
                                            QStringLiteral("references"), QStringLiteral("thumbnails")};
  return names;
}

QString inbox() { return QStringLiteral("Inbox"); }

/// Absolute paths that are promised to a writer in this process.
QSet<QString>& promisedPaths() {
  static QSet<QString> paths;
  return paths;
}

/// Asks the name itself, so that a link that points nowhere counts as something that stands there. A path that cannot
/// be asked is taken for free: the write, which replaces nothing, tells what is wrong with it.
bool standsAnything(const QString& absolutePath) {
  struct stat information {};
  return ::lstat(QFile::encodeName(absolutePath).constData(), &information) == 0;
}

bool isAllowedInName(char32_t character) {
  if (character == U' ' || character == U'-' || character == U'_') return true;
  return QChar::isLetterOrNumber(character) || QChar::isMark(character);
}

void makeMediaFolders(const QString& root) {
  for (const QString& name : mediaSubfolders()) ensureFolderDurably(root + u'/' + name);
}

}  // namespace

struct ReservedPath::Promise {
  QString root;
  QString relative;
  Promise(QString rootFolder, QString relativePath) : root(std::move(rootFolder)), relative(std::move(relativePath)) {
    promisedPaths().insert(absolute());
  }
  ~Promise() { promisedPaths().remove(absolute()); }
  Promise(const Promise&) = delete;
  Promise& operator=(const Promise&) = delete;
  QString absolute() const { return root + u'/' + relative; }
};

ReservedPath::ReservedPath(std::shared_ptr<const Promise> promise) : promise_(std::move(promise)) {}

const QString& ReservedPath::relative() const {
  Q_ASSERT(promise_);
  return promise_->relative;
}

QString ReservedPath::absolute() const {
  Q_ASSERT(promise_);
  return promise_->absolute();
}

void ReservedPath::release() { promise_.reset(); }

WorkspaceFiles::WorkspaceFiles(QString root) : root_(QDir::cleanPath(std::move(root))) {}

QString WorkspaceFiles::absolute(const QString& relative) const { return root_ + u'/' + relative; }
QString WorkspaceFiles::hiddenFolder() const { return absolute(QStringLiteral(".sorvan")); }
QString WorkspaceFiles::sidecar(const QString& name) const { return hiddenFolder() + u'/' + name; }
QString WorkspaceFiles::database() const { return sidecar(QStringLiteral("library.store")); }
QString WorkspaceFiles::schemaMarker() const { return sidecar(QStringLiteral("schema-version")); }
QString WorkspaceFiles::lockFile() const { return sidecar(QStringLiteral("workspace.lock")); }
QString WorkspaceFiles::backupsFolder() const { return sidecar(QStringLiteral("backups")); }

QString WorkspaceFiles::recoveryFolder(const QUuid& job) const {
  return sidecar(QStringLiteral("recovery/")) + uuidText(job);
}

QString WorkspaceFiles::submissionMarker(const QUuid& job) const {
  return recoveryFolder(job) + QStringLiteral("/submitting");
}

void WorkspaceFiles::prepare() const { ensureFolderDurably(hiddenFolder()); }

void WorkspaceFiles::prepareInbox() const { makeMediaFolders(absolute(inbox())); }

QString WorkspaceFiles::createProjectFolder(const QString& name) const {
  const QString folder = safeName(name) + u'-' + uuidText(newUuid()).left(8);
  makeMediaFolders(absolute(folder));
  return folder;
}

ReservedPath WorkspaceFiles::uniquePath(const QString& folder, const QString& stem, const QString& ext) const {
  const QString name = folder + u'/' + safeName(stem);
  const QString lower = ext.toLower();
  const QString ending = isPlainExtension(lower) ? u'.' + lower : QString();
  for (int counter = 1;; ++counter) {
    const QString relative = name + QString::asprintf("-%03d", counter) + ending;
    const QString path = absolute(relative);
    if (!promisedPaths().contains(path) && !standsAnything(path))
      return ReservedPath(std::make_shared<const ReservedPath::Promise>(root_, relative));
  }
}

QString WorkspaceFiles::mediaFolder(const Project* project) { return project ? project->rootFolder : inbox(); }

QString WorkspaceFiles::safeName(const QString& text) {
  // 1. Whatever is not allowed separates.
  QString allowed;
  for (const char32_t character : text.toUcs4()) {
    if (isAllowedInName(character))
      allowed += QChar::fromUcs4(character);
    else
      allowed += u' ';
  }
  // 2. One hyphen between the pieces.
  const QString joined = allowed.split(u' ', Qt::SkipEmptyParts).join(u'-');
  // 3. As long as a name may be.
  const QString cut = firstCharsWithinBytes(firstChars(joined, longestSafeNameChars), longestSafeNameBytes);
  // 4. Never nothing.
  return cut.isEmpty() ? QStringLiteral("Untitled") : cut;
}

QString WorkspaceFiles::mimeType(const QString& ext) {
  static const QHash<QString, QString> types{{QStringLiteral("png"), QStringLiteral("image/png")},
                                             {QStringLiteral("jpg"), QStringLiteral("image/jpeg")},
                                             {QStringLiteral("jpeg"), QStringLiteral("image/jpeg")},
                                             {QStringLiteral("heic"), QStringLiteral("image/heic")},
                                             {QStringLiteral("webp"), QStringLiteral("image/webp")},
                                             {QStringLiteral("tif"), QStringLiteral("image/tiff")},
                                             {QStringLiteral("tiff"), QStringLiteral("image/tiff")},
                                             {QStringLiteral("gif"), QStringLiteral("image/gif")},
                                             {QStringLiteral("mp4"), QStringLiteral("video/mp4")},
                                             {QStringLiteral("mov"), QStringLiteral("video/quicktime")},
                                             {QStringLiteral("m4v"), QStringLiteral("video/x-m4v")},
                                             {QStringLiteral("mp3"), QStringLiteral("audio/mpeg")},
                                             {QStringLiteral("wav"), QStringLiteral("audio/wav")},
                                             {QStringLiteral("m4a"), QStringLiteral("audio/mp4")}};
  return types.value(ext.toLower(), QStringLiteral("application/octet-stream"));
}

}  // namespace sorvan::core
