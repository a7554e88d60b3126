#include "core/workspace_lease.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

#include "base/file_layer.h"
#include "base/sorvan_error.h"
#include "core/texts.h"
#include "core/workspace_files.h"

namespace sorvan::core {
namespace {

/// The path without links, so that two ways of writing one folder share one lock.
QString resolved(const QString& path) {
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return canonical.isEmpty() ? QDir::cleanPath(QDir(path).absolutePath()) : canonical;
}

}  // namespace

class WorkspaceLease::Handle {
 public:
  Handle(int descriptor, QByteArray path) : descriptor_(descriptor), path_(std::move(path)) {}
  ~Handle() { ::close(descriptor_); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isInPlace() const {
    struct stat held {};
    struct stat there {};
    if (::fstat(descriptor_, &held) != 0 || ::lstat(path_.constData(), &there) != 0) return false;
    return held.st_dev == there.st_dev && held.st_ino == there.st_ino;
  }

  static std::shared_ptr<const Handle> lock(const QByteArray& path);

 private:
  int descriptor_;
  QByteArray path_;
};

std::shared_ptr<const WorkspaceLease::Handle> WorkspaceLease::Handle::lock(const QByteArray& path) {
  // A lock lives as long as anybody holds its descriptor, so no child process may inherit it.
  const int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) throw SorvanError(texts::cannotLock());
  const int locked = FileLayer::current().lock(descriptor);
  if (locked == 0) return std::make_shared<const Handle>(descriptor, path);
  ::close(descriptor);
  // Only that answer speaks of another process; any other says that there are no locks here.
  throw SorvanError(locked == -EWOULDBLOCK ? texts::lockedByAnother() : texts::cannotLock());
}

WorkspaceLease::WorkspaceLease(const QString& root) {
  static std::mutex mutex;
  static QHash<QString, std::weak_ptr<const Handle>> handles;

  // 1. One path for one folder.
  const QString path = resolved(root);
  // 2. The table of handles is shared by all threads.
  const std::scoped_lock guard(mutex);
  // 3. A second store of this process on the same folder shares the lock; one whose file was taken away does not.
  handle_ = handles.value(path).lock();
  if (handle_ && handle_->isInPlace()) return;
  // 4. to 8. Otherwise lock the file.
  handle_ = Handle::lock(QFile::encodeName(WorkspaceFiles(path).lockFile()));
  handles.removeIf([](auto entry) { return entry.value().expired(); });
  handles.insert(path, handle_);
}

bool WorkspaceLease::isInPlace() const { return handle_->isInPlace(); }

std::optional<std::uint64_t> freeBytes(const QString& folder) {
  struct statvfs information {};
  if (::statvfs(QFile::encodeName(folder).constData(), &information) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(information.f_bavail) * information.f_frsize;
}

}  // namespace sorvan::core
