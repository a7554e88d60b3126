// The checksum of a large file, as at import and registration.
#include <random>

#include "base/checksum.h"
#include "bench/row.h"

namespace sorvan::bench {
namespace {

constexpr qint64 fileBytes = 1'000'000'000;
constexpr size_t pieceBytes = 4 << 20;

void makeFile(const QDir& data) {
  std::mt19937_64 random(1);
  std::vector<std::uint64_t> piece(pieceBytes / sizeof(std::uint64_t));
  QFile file(data.filePath(QStringLiteral("file")));
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("the file could not be made");
  for (qint64 left = fileBytes; left > 0; left -= qint64(pieceBytes)) {
    std::generate(piece.begin(), piece.end(), std::ref(random));
    file.write(reinterpret_cast<const char*>(piece.data()), std::min(left, qint64(pieceBytes)));
  }
}

Contestants contestants(const QDir& data) {
  const QString path = data.filePath(QStringLiteral("file"));
  return {.ours = [=] { return timed([&] { base::sha256OfFile(path, {}); }); },
          .peer =
              [=] {
                return timedCommand({QStringLiteral("sha256sum"), path});
              },
          .limit = {}};
}

const RegisterRow row{{.name = QStringLiteral("sha256-1g"), .make = makeFile, .measure = contestants, .rounds = 5}};

}  // namespace
}  // namespace sorvan::bench
