#include "base/file_reading.h"

#include <sys/stat.h>

#include <cerrno>

#include <QFile>

#include "base/file_layer.h"
#include "base/file_steps.h"

namespace sorvan::base {

static qint64 checkedSize(int descriptor, qint64 maximumBytes) {
  struct stat facts {};
  if (fstat(descriptor, &facts) < 0) return -errno;
  if (S_ISDIR(facts.st_mode)) return -EISDIR;
  if (!S_ISREG(facts.st_mode)) return -EINVAL;
  return facts.st_size > maximumBytes ? -EFBIG : facts.st_size;
}

// Zero, or the negative errno.
static int readAll(FileLayer& layer, int descriptor, qint64 maximumBytes, QByteArray& bytes) {
  const qint64 size = checkedSize(descriptor, maximumBytes);
  if (size < 0) return static_cast<int>(size);
  bytes.reserve(size);
  QByteArray piece(64 * 1024, Qt::Uninitialized);
  while (true) {
    const qint64 taken = layer.read(descriptor, piece.data(), piece.size());
    if (taken == -EINTR) continue;
    if (taken <= 0) return static_cast<int>(taken);
    bytes.append(piece.constData(), taken);
    // The file may grow while it is read.
    if (bytes.size() > maximumBytes) return -EFBIG;
  }
}

std::optional<QByteArray> readIfPresent(const QString& path, qint64 maximumBytes) {
  FileLayer& layer = FileLayer::current();
  const int descriptor = layer.openForReading(QFile::encodeName(path));
  if (descriptor == -ENOENT) return std::nullopt;
  if (descriptor < 0) throw steps::failure(path, QStringLiteral("read"), descriptor);
  QByteArray bytes;
  const int result = readAll(layer, descriptor, maximumBytes, bytes);
  layer.close(descriptor);
  if (result < 0) throw steps::failure(path, QStringLiteral("read"), result);
  return bytes;
}

QByteArray readFile(const QString& path, qint64 maximumBytes) {
  auto bytes = readIfPresent(path, maximumBytes);
  if (!bytes) throw steps::failure(path, QStringLiteral("read"), -ENOENT);
  return std::move(*bytes);
}

}  // namespace sorvan::base
