#include "platform/picture_header.h"

#include <QtEndian>

namespace sorvan::platform {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype maximumExifBytes = 64 << 10;
constexpr int maximumChunks = 4096;

bool isBitmap(const QByteArray& head) {
  // "BM" alone would take texts for pictures: the reserved bytes are zero and the header has one of few sizes.
  if (head.size() < 18 || !head.startsWith("BM") || head.mid(6, 4) != QByteArray(4, '\0')) return false;
  const auto headerSize = qFromLittleEndian<quint32>(head.constData() + 14);
  return headerSize == 12 || headerSize == 40 || headerSize == 52 || headerSize == 56 || headerSize == 64 ||
         headerSize == 108 || headerSize == 124;
}

bool isHeif(const QByteArray& head) {
  if (head.mid(4, 4) != "ftyp") return false;
  static constexpr std::array brands{"heic", "heix", "hevc", "hevx", "heim", "heis",
                                     "hevm", "hevs", "mif1", "msf1", "avif", "avis"};
  const QByteArray brand = head.mid(8, 4);
  return std::any_of(brands.begin(), brands.end(), [&](const char* known) { return brand == known; });
}

bool isTiff(const QByteArray& head) {
  const QByteArray start = head.left(4);
  return start == "II*\0"_ba || start == "MM\0*"_ba || start == "II+\0"_ba || start == "MM\0+"_ba;
}

/// Numbers of a TIFF block in its own byte order; nothing where the block is too short.
struct TiffBlock {
  const QByteArray& bytes;
  bool bigEndian;

  template <class Number>
  std::optional<Number> at(qsizetype offset) const {
    if (offset < 0 || offset > bytes.size() - qsizetype(sizeof(Number))) return std::nullopt;
    const char* data = bytes.constData() + offset;
    return bigEndian ? qFromBigEndian<Number>(data) : qFromLittleEndian<Number>(data);
  }
};

struct Chunk {
  QByteArray name;
  quint32 length = 0;
};

/// Calls `visit` with each chunk while it answers true; `visit` may read from the device.
template <class ReadHead, class Visit>
void walkChunks(QIODevice& device, qint64 start, int trailer, ReadHead readHead, Visit visit) {
  qint64 position = start;
  for (int count = 0; count < maximumChunks && position < device.size() && device.seek(position); ++count) {
    const QByteArray head = device.read(8);
    if (head.size() < 8) return;
    const Chunk chunk = readHead(head);
    if (!visit(chunk)) return;
    position += 8 + qint64(chunk.length) + trailer;
  }
}

QByteArray readExif(QIODevice& device, const Chunk& chunk) {
  QByteArray exif = device.read(std::min<qsizetype>(chunk.length, maximumExifBytes));
  if (exif.startsWith("Exif\0\0"_ba)) exif.remove(0, 6);
  return exif;
}

Chunk pngHead(const QByteArray& head) { return {head.mid(4, 4), qFromBigEndian<quint32>(head.constData())}; }

Chunk webpHead(const QByteArray& head) {
  const auto length = qFromLittleEndian<quint32>(head.constData() + 4);
  return {head.left(4), length + (length & 1 && length != 0xffffffffU ? 1 : 0)};
}

}  // namespace

std::optional<PictureKind> announcedKind(QIODevice& device) {
  const QByteArray head = device.peek(32);
  if (head.startsWith("\x89PNG\r\n\x1a\n")) return PictureKind::png;
  if (head.startsWith("\xff\xd8\xff")) return PictureKind::jpeg;
  if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP") return PictureKind::webp;
  if (head.startsWith("GIF87a") || head.startsWith("GIF89a")) return PictureKind::gif;
  if (isTiff(head)) return PictureKind::tiff;
  if (isBitmap(head)) return PictureKind::bmp;
  if (isHeif(head)) return PictureKind::heif;
  return std::nullopt;
}

int exifOrientation(const QByteArray& exif) {
  if (!exif.startsWith("II") && !exif.startsWith("MM")) return 1;
  const TiffBlock block{exif, exif.startsWith("MM")};
  const auto directory = block.at<quint32>(4);
  if (!directory || block.at<quint16>(2) != quint16(42)) return 1;
  const auto entries = block.at<quint16>(*directory);
  if (!entries) return 1;
  for (qsizetype entry = 0; entry < *entries; ++entry) {
    const qsizetype offset = qsizetype(*directory) + 2 + entry * 12;
    const auto tag = block.at<quint16>(offset);
    if (!tag) return 1;
    if (*tag != 0x0112) continue;
    const auto value = block.at<quint16>(offset + 8);
    return value && *value >= 1 && *value <= 8 ? *value : 1;
  }
  return 1;
}

ChunkFacts pngChunkFacts(QIODevice& device) {
  ChunkFacts facts;
  walkChunks(device, 8, 4, pngHead, [&](const Chunk& chunk) {
    if (chunk.name == "IHDR") {
      const QByteArray header = device.read(10);
      facts.mayBeSeeThrough = header.size() == 10 && (header[9] == 4 || header[9] == 6);
    } else if (chunk.name == "tRNS") {
      facts.mayBeSeeThrough = true;
    } else if (chunk.name == "eXIf") {
      facts.orientation = exifOrientation(readExif(device, chunk));
    }
    return chunk.name != "IEND" && chunk.length <= 0x7fffffff;
  });
  return facts;
}

ChunkFacts webpChunkFacts(QIODevice& device) {
  ChunkFacts facts;
  walkChunks(device, 12, 0, webpHead, [&](const Chunk& chunk) {
    if (chunk.name == "VP8X") {
      const QByteArray flags = device.read(1);
      facts.mayBeSeeThrough = flags.size() == 1 && (flags[0] & 0x10) != 0;
    } else if (chunk.name == "VP8L") {
      const QByteArray header = device.read(5);  // signature, 14 bits of width, 14 of height, then the alpha bit
      facts.mayBeSeeThrough = facts.mayBeSeeThrough || (header.size() == 5 && (header[4] & 0x10) != 0);
    } else if (chunk.name == "EXIF") {
      facts.orientation = exifOrientation(readExif(device, chunk));
    }
    return true;
  });
  return facts;
}

}  // namespace sorvan::platform
