#include "base/file_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include <QFile>

#include "base/file_layer.h"
#include "base/file_steps.h"

namespace sorvan::base {

FileLock::FileLock(const QString& path, std::chrono::milliseconds patience) {
  descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (descriptor < 0) throw steps::failure(path, QStringLiteral("opened"), -errno);
  const auto end = std::chrono::steady_clock::now() + patience;
  for (;;) {
    const int result = FileLayer::current().lock(descriptor);
    held = result == 0;
    // Where the file system knows no locks there is nothing to wait for.
    if (held || result != -EWOULDBLOCK || std::chrono::steady_clock::now() >= end) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

FileLock::~FileLock() { ::close(descriptor); }

}  // namespace sorvan::base
