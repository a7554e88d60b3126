#include "base/checksum.h"

#include <fcntl.h>
#include <openssl/evp.h>

#include <cerrno>
#include <memory>

#include <QFile>

#include "base/file_layer.h"
#include "base/file_steps.h"
#include "base/task.h"

namespace sorvan::base {

namespace {
// OpenSSL's digest: it uses the processor's SHA instructions where there are any, which Qt's own does not.
class Sha256 {
 public:
  Sha256() : context(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
  }
  void add(const char* bytes, qint64 count) { EVP_DigestUpdate(context.get(), bytes, static_cast<size_t>(count)); }
  QString hex() {
    QByteArray digest(32, '\0');
    EVP_DigestFinal_ex(context.get(), reinterpret_cast<unsigned char*>(digest.data()), nullptr);
    return QString::fromLatin1(digest.toHex());
  }

 private:
  std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context;
};

struct OpenFile {
  FileLayer& layer;
  int descriptor;
  ~OpenFile() {
    if (descriptor >= 0) layer.close(descriptor);
  }
};
}  // namespace

QString sha256Hex(const QByteArray& bytes) {
  Sha256 sum;
  sum.add(bytes.constData(), bytes.size());
  return sum.hex();
}

QString sha256OfFile(const QString& path, const std::stop_token& stop) {
  FileLayer& layer = FileLayer::current();
  const OpenFile file{layer, layer.openForReading(QFile::encodeName(path))};
  if (file.descriptor < 0) throw steps::failure(path, QStringLiteral("read"), file.descriptor);
  posix_fadvise(file.descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
  Sha256 sum;
  QByteArray piece(1 << 20, Qt::Uninitialized);
  while (true) {
    throwIfStopped(stop);
    const qint64 taken = layer.read(file.descriptor, piece.data(), piece.size());
    if (taken == -EINTR) continue;
    if (taken < 0) throw steps::failure(path, QStringLiteral("read"), static_cast<int>(taken));
    if (taken == 0) return sum.hex();
    sum.add(piece.constData(), taken);
  }
}

}  // namespace sorvan::base
