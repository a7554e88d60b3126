#include "base/file_layer.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace sorvan::base {

static int orErrno(int result) { return result < 0 ? -errno : result; }

int FileLayer::createFile(const QByteArray& path, mode_t mode) {
  return orErrno(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
}

int FileLayer::openForReading(const QByteArray& path) {
  // O_NONBLOCK: opening a pipe that stands where a file should be must not wait for a writer.
  return orErrno(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

int FileLayer::openFolder(const QByteArray& path) {
  return orErrno(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

qint64 FileLayer::write(int descriptor, const char* bytes, qint64 count) {
  const ssize_t written = ::write(descriptor, bytes, static_cast<size_t>(count));
  return written < 0 ? -errno : written;
}

qint64 FileLayer::read(int descriptor, char* bytes, qint64 count) {
  const ssize_t taken = ::read(descriptor, bytes, static_cast<size_t>(count));
  return taken < 0 ? -errno : taken;
}

int FileLayer::sync(int descriptor) { return orErrno(::fsync(descriptor)); }

int FileLayer::close(int descriptor) {
  // Linux has closed the descriptor even when it says EINTR.
  const int result = orErrno(::close(descriptor));
  return result == -EINTR ? 0 : result;
}

int FileLayer::rename(const QByteArray& from, const QByteArray& to) {
  return orErrno(::rename(from.constData(), to.constData()));
}

int FileLayer::renameNoReplace(const QByteArray& from, const QByteArray& to) {
  return orErrno(::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE));
}

int FileLayer::link(const QByteArray& from, const QByteArray& to) {
  return orErrno(::link(from.constData(), to.constData()));
}

int FileLayer::remove(const QByteArray& path) { return orErrno(::unlink(path.constData())); }

int FileLayer::makeFolder(const QByteArray& path, mode_t mode) { return orErrno(::mkdir(path.constData(), mode)); }

int FileLayer::removeFolder(const QByteArray& path) { return orErrno(::rmdir(path.constData())); }

int FileLayer::lock(int descriptor) { return orErrno(::flock(descriptor, LOCK_EX | LOCK_NB)); }

static FileLayer& realLayer() {
  static FileLayer layer;
  return layer;
}

static std::atomic<FileLayer*>& currentLayer() {
  static std::atomic<FileLayer*> layer = &realLayer();
  return layer;
}

FileLayer& FileLayer::current() { return *currentLayer().load(); }

FileLayerOverride::FileLayerOverride(FileLayer& layer) : previous(currentLayer().exchange(&layer)) {}

FileLayerOverride::~FileLayerOverride() { currentLayer().store(previous); }

}  // namespace sorvan::base
