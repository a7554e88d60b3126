#include "base/durable_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/durable_writer.h"
#include "base/file_steps.h"
#include "base/ids.h"
#include "base/planted_bug.h"
#include "base/task.h"

namespace sorvan::base {

static constexpr qint64 pieceBytes = 1 << 20;

void writeDurably(const QString& path, const QByteArray& bytes, DurableMode mode, Replacing replacing) {
  DurableWriter writer(path, mode);
  writer.append(bytes);
  writer.commit(replacing);
}

static void makeOneFolder(FileLayer& layer, const QString& path, mode_t mode) {
  const int made = layer.makeFolder(QFile::encodeName(path), mode);
  if (made == -EEXIST && QFileInfo(path).isDir()) return;
  if (made < 0) throw steps::failure(path, QStringLiteral("created"), made);
  const int synced = steps::syncFolder(layer, steps::folderOf(path));
  if (synced >= 0) return;
  // Or the next attempt would find the folder and never sync it.
  layer.removeFolder(QFile::encodeName(path));
  throw steps::failure(path, QStringLiteral("created"), synced);
}

void ensureFolderDurably(const QString& path, mode_t mode) {
  std::vector<QString> missing;
  QString folder = QDir::cleanPath(path);
  while (!QFileInfo(folder).isDir()) {
    missing.push_back(folder);
    const QString parent = steps::folderOf(folder);
    if (parent == folder) break;
    folder = parent;
  }
  for (auto next = missing.rbegin(); next != missing.rend(); ++next) makeOneFolder(FileLayer::current(), *next, mode);
}

void renameDurably(const QString& from, const QString& to, Replacing replacing) {
  FileLayer& layer = FileLayer::current();
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  const int renamed = steps::rename(layer, source, target, replacing);
  if (renamed < 0) throw steps::failure(from, QStringLiteral("moved"), renamed);
  int synced = steps::syncFolder(layer, steps::folderOf(to));
  if (synced >= 0 && steps::folderOf(from) != steps::folderOf(to))
    synced = steps::syncFolder(layer, steps::folderOf(from));
  if (synced >= 0) return;
  // The caller will go on as if nothing had moved, so nothing may have moved.
  if (replacing == Replacing::NoReplace) layer.renameNoReplace(target, source);
  throw steps::failure(from, QStringLiteral("moved"), synced);
}

void moveDurably(const QString& from, const QString& to, DurableMode mode, Replacing replacing,
                 const std::stop_token& stop) {
  try {
    return renameDurably(from, to, replacing);
  } catch (const FileError& failure) {
    if (failure.number() != EXDEV) throw;
  }
  copyDurably(from, to, mode, replacing, stop);
  removeDurably(from);
}

namespace {
// A file open for reading, closed at the end of its scope.
struct Source {
  FileLayer& layer;
  const QString& path;
  int descriptor;

  Source(FileLayer& files, const QString& from)
      : layer(files), path(from), descriptor(files.openForReading(QFile::encodeName(from))) {
    if (descriptor < 0) throw steps::failure(path, QStringLiteral("copied"), descriptor);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() { layer.close(descriptor); }

  void requireFile() const {
    struct stat facts {};
    if (fstat(descriptor, &facts) < 0) throw steps::failure(path, QStringLiteral("copied"), -errno);
    if (S_ISDIR(facts.st_mode)) throw steps::failure(path, QStringLiteral("copied"), -EISDIR);
    if (!S_ISREG(facts.st_mode)) throw steps::failure(path, QStringLiteral("copied"), -EINVAL);
  }
  // Zero at the end.
  qint64 take(QByteArray& piece) const {
    qint64 taken = 0;
    do {
      taken = layer.read(descriptor, piece.data(), piece.size());
    } while (taken == -EINTR);
    if (taken < 0) throw steps::failure(path, QStringLiteral("copied"), static_cast<int>(taken));
    return taken;
  }
};
}  // namespace

void copyDurably(const QString& from, const QString& to, DurableMode mode, Replacing replacing,
                 const std::stop_token& stop) {
  const Source source(FileLayer::current(), from);
  source.requireFile();
  DurableWriter writer(to, mode);
  QByteArray piece(pieceBytes, Qt::Uninitialized);
  while (const qint64 taken = source.take(piece)) {
    throwIfStopped(stop);
    writer.append(piece.constData(), taken);
  }
  writer.commit(replacing);
}

void linkOrCopyDurably(const QString& from, const QString& to, DurableMode mode) {
  FileLayer& layer = FileLayer::current();
  const QByteArray target = QFile::encodeName(to);
  const int linked = layer.link(QFile::encodeName(from), target);
  const bool noSecondNames = linked == -EPERM || linked == -EXDEV || linked == -EMLINK || linked == -EOPNOTSUPP;
  if (noSecondNames) return copyDurably(from, to, mode, Replacing::NoReplace);
  if (linked < 0) throw steps::failure(from, QStringLiteral("copied"), linked);
  const int synced = steps::syncFolder(layer, steps::folderOf(to));
  if (synced >= 0) return;
  layer.remove(target);
  throw steps::failure(from, QStringLiteral("copied"), synced);
}

void syncFile(const QString& path) {
  FileLayer& layer = FileLayer::current();
  const int descriptor = layer.openForReading(QFile::encodeName(path));
  if (descriptor < 0) throw steps::failure(path, QStringLiteral("written"), descriptor);
  const int synced = planted("no-file-sync") ? 0 : layer.sync(descriptor);
  const int closed = layer.close(descriptor);
  if (synced < 0) throw steps::failure(path, QStringLiteral("written"), synced);
  if (closed < 0) throw steps::failure(path, QStringLiteral("written"), closed);
}

void syncFolder(const QString& path) {
  const int synced = steps::syncFolder(FileLayer::current(), path);
  if (synced < 0) throw steps::failure(path, QStringLiteral("written"), synced);
}

static void removeAndSync(const QString& path, int removed) {
  if (removed == -ENOENT) return;
  if (removed < 0) throw steps::failure(path, QStringLiteral("removed"), removed);
  const int synced = steps::syncFolder(FileLayer::current(), steps::folderOf(path));
  if (synced < 0) throw steps::failure(path, QStringLiteral("removed"), synced);
}

void removeDurably(const QString& path) { removeAndSync(path, FileLayer::current().remove(QFile::encodeName(path))); }

// Everything below the folder, children before their parents; links are listed, never followed.
static std::vector<std::filesystem::directory_entry> contentsOf(const QString& folder) {
  namespace fs = std::filesystem;
  std::vector<fs::directory_entry> found;
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(QFile::encodeName(folder).toStdString())))
    found.push_back(entry);
  std::reverse(found.begin(), found.end());
  return found;
}

void removeFolderDurably(const QString& path) {
  FileLayer& layer = FileLayer::current();
  struct stat facts {};
  if (lstat(QFile::encodeName(path).constData(), &facts) < 0) return removeAndSync(path, -errno);
  if (!S_ISDIR(facts.st_mode)) throw steps::failure(path, QStringLiteral("removed"), -ENOTDIR);
  for (const auto& entry : contentsOf(path)) {
    const QByteArray child = QByteArray::fromStdString(entry.path().native());
    const bool folder = entry.is_directory() && !entry.is_symlink();
    const int removed = folder ? layer.removeFolder(child) : layer.remove(child);
    if (removed < 0 && removed != -ENOENT)
      throw steps::failure(QFile::decodeName(child), QStringLiteral("removed"), removed);
  }
  removeAndSync(path, layer.removeFolder(QFile::encodeName(path)));
}

bool isDurableTemporary(const QString& fileName) {
  const QString suffix = steps::temporarySuffix;
  if (!fileName.startsWith(u'.') || !fileName.endsWith(suffix)) return false;
  return !uuidFromText(fileName.sliced(1, fileName.size() - 1 - suffix.size())).isNull();
}

}  // namespace sorvan::base
