#include "support/failing_file_layer.h"

namespace sorvan::test {

bool FailingFileLayer::failsNow() {
  ++count;
  const bool now =
      count == failingStep || (extent == Failing::ThisAndAllAfter && failingStep > 0 && count > failingStep);
  if (now) failed = true;
  return now;
}

int FailingFileLayer::createFile(const QByteArray& path, mode_t mode) {
  return failsNow() ? -number : FileLayer::createFile(path, mode);
}

int FailingFileLayer::openForReading(const QByteArray& path) {
  return failsNow() ? -number : FileLayer::openForReading(path);
}

int FailingFileLayer::openFolder(const QByteArray& path) { return failsNow() ? -number : FileLayer::openFolder(path); }

qint64 FailingFileLayer::write(int descriptor, const char* bytes, qint64 bytesCount) {
  if (failsNow()) {
    FileLayer::write(descriptor, bytes, bytesCount / 2);
    return -number;
  }
  return FileLayer::write(descriptor, bytes, shortWrites > 0 ? std::min(shortWrites, bytesCount) : bytesCount);
}

qint64 FailingFileLayer::read(int descriptor, char* bytes, qint64 bytesCount) {
  return failsNow() ? -number : FileLayer::read(descriptor, bytes, bytesCount);
}

int FailingFileLayer::sync(int descriptor) { return failsNow() ? -number : FileLayer::sync(descriptor); }

// The descriptor is closed even when the system says that it failed.
int FailingFileLayer::close(int descriptor) {
  const bool failing = failsNow();
  const int result = FileLayer::close(descriptor);
  return failing ? -number : result;
}

int FailingFileLayer::rename(const QByteArray& from, const QByteArray& to) {
  return failsNow() ? -number : FileLayer::rename(from, to);
}

int FailingFileLayer::renameNoReplace(const QByteArray& from, const QByteArray& to) {
  return failsNow() ? -number : FileLayer::renameNoReplace(from, to);
}

int FailingFileLayer::remove(const QByteArray& path) { return failsNow() ? -number : FileLayer::remove(path); }

int FailingFileLayer::makeFolder(const QByteArray& path, mode_t mode) {
  return failsNow() ? -number : FileLayer::makeFolder(path, mode);
}

int FailingFileLayer::removeFolder(const QByteArray& path) {
  return failsNow() ? -number : FileLayer::removeFolder(path);
}

}  // namespace sorvan::test
