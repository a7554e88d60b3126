#include "platform/pictures.h"

#include <mutex>

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QTransform>
#include <QtEndian>

#include "base/sorvan_error.h"
#include "platform/heif.h"
#include "platform/media_texts.h"
#include "platform/picture_header.h"

namespace sorvan::platform {
namespace {

using Transformation = QImageIOHandler::Transformation;

[[noreturn]] void refuse() { throw SorvanError(texts::imageUnreadable()); }

/// Qt refuses pictures over 128 MB of memory; our own cap of pixels stands in its place.
void raiseAllocationLimit() {
  static std::once_flag once;
  std::call_once(once, [] { QImageReader::setAllocationLimit(0); });
}

const char* readerName(PictureKind kind) {
  switch (kind) {
    case PictureKind::png:
      return "png";
    case PictureKind::jpeg:
      return "jpeg";
    case PictureKind::webp:
      return "webp";
    case PictureKind::tiff:
      return "tiff";
    case PictureKind::gif:
      return "gif";
    case PictureKind::bmp:
      return "bmp";
    case PictureKind::heif:
      break;
  }
  return "";
}

int exifNumber(QImageIOHandler::Transformations transformation) {
  switch (transformation) {
    case QImageIOHandler::TransformationMirror:
      return 2;
    case QImageIOHandler::TransformationRotate180:
      return 3;
    case QImageIOHandler::TransformationFlip:
      return 4;
    case QImageIOHandler::TransformationFlipAndRotate90:
      return 5;
    case QImageIOHandler::TransformationRotate90:
      return 6;
    case QImageIOHandler::TransformationMirrorAndRotate90:
      return 7;
    case QImageIOHandler::TransformationRotate270:
      return 8;
    default:
      return 1;
  }
}

bool swapsSides(int orientation) { return orientation > 4; }

QImage turned(const QImage& image, int orientation) {
  switch (orientation) {
    case 2:
      return image.mirrored(true, false);
    case 3:
      return image.mirrored(true, true);
    case 4:
      return image.mirrored(false, true);
    case 5:
      return image.transformed(QTransform().rotate(90)).mirrored(true, false);
    case 6:
      return image.transformed(QTransform().rotate(90));
    case 7:
      return image.transformed(QTransform().rotate(90)).mirrored(false, true);
    case 8:
      return image.transformed(QTransform().rotate(270));
    default:
      return image;
  }
}

/// One picture being read: what its header says, and the device it comes from.
struct Source {
  QIODevice& device;
  PictureFacts facts;

  QSize storedSize() const { return swapsSides(facts.orientation) ? facts.size.transposed() : facts.size; }
};

void readFactsOfHeif(Source& source) {
  source.device.seek(0);
  const HeifFacts heif = probeHeif(source.device.readAll());
  source.facts.size = heif.size;
  source.facts.mayBeSeeThrough = heif.hasAlpha;
}

void readFactsOfOthers(Source& source) {
  PictureFacts& facts = source.facts;
  QImageReader reader(&source.device, readerName(facts.kind));
  reader.setAutoDetectImageFormat(false);
  facts.size = reader.size();
  facts.orientation = exifNumber(reader.transformation());
  if (facts.kind == PictureKind::png || facts.kind == PictureKind::webp) {
    const ChunkFacts chunks =
        facts.kind == PictureKind::png ? pngChunkFacts(source.device) : webpChunkFacts(source.device);
    facts.orientation = chunks.orientation;
    facts.mayBeSeeThrough = chunks.mayBeSeeThrough;
  } else {
    facts.mayBeSeeThrough = facts.kind != PictureKind::jpeg;
  }
  if (swapsSides(facts.orientation)) facts.size.transpose();
}

std::optional<Source> openSource(QIODevice& device) {
  raiseAllocationLimit();
  const auto kind = announcedKind(device);
  if (!kind) return std::nullopt;
  Source source{device, {.kind = *kind}};
  if (*kind == PictureKind::heif)
    readFactsOfHeif(source);
  else
    readFactsOfOthers(source);
  const QSize size = source.facts.size;
  if (size.isEmpty() || qint64(size.width()) * size.height() > maximumPicturePixels) refuse();
  return source;
}

Source openOrRefuse(QIODevice& device) {
  auto source = openSource(device);
  if (!source) refuse();
  return *source;
}

/// As stored for what Qt reads, upright already for HEIF. Null when it does not decode.
QImage decodeStored(Source& source, QSize scaledTo = {}) {
  source.device.seek(0);
  if (source.facts.kind == PictureKind::heif) return decodeHeif(source.device.readAll());
  QImageReader reader(&source.device, readerName(source.facts.kind));
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(false);
  if (!scaledTo.isEmpty()) reader.setScaledSize(scaledTo);
  return reader.read();
}

/// The size with which the longer side fits `edge`; the size itself when it does already.
QSize fitted(QSize size, int edge) {
  if (std::max(size.width(), size.height()) <= edge) return size;
  return size.scaled(edge, edge, Qt::KeepAspectRatio).expandedTo({1, 1});
}

QImage forScreen(QImage image) {
  if (image.colorSpace().isValid() && image.colorSpace() != QColorSpace(QColorSpace::SRgb))
    image.convertToColorSpace(QColorSpace::SRgb);
  image.setColorSpace({});
  return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

QImage decodeUprightFrom(QIODevice& device) {
  Source source = openOrRefuse(device);
  const QImage image = decodeStored(source);
  if (image.isNull()) refuse();
  return turned(image, source.facts.orientation);
}

QImage decodeWithinFrom(QIODevice& device, int longestEdge) {
  Source source = openOrRefuse(device);
  const QSize wanted = fitted(source.storedSize(), longestEdge);
  QImage image = decodeStored(source, wanted == source.storedSize() ? QSize() : wanted);
  if (image.isNull()) refuse();
  if (image.size() != wanted) image = image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return turned(forScreen(std::move(image)), source.facts.orientation);
}

/// Some readers fill up what is missing without a word, so the end of the file has to tell: the marker for the end of a
/// JPEG, followed by nothing but what cameras append to it, the last byte of a GIF, the length that a BMP announces.
bool hasItsEnd(const Source& source) {
  constexpr qint64 reach = 64 << 10;
  QIODevice& device = source.device;
  if (source.facts.kind == PictureKind::bmp) {
    device.seek(2);
    const QByteArray length = device.read(4);
    return length.size() == 4 && device.size() >= qFromLittleEndian<quint32>(length.constData());
  }
  device.seek(std::max<qint64>(0, device.size() - reach));
  const QByteArray end = device.readAll();
  if (source.facts.kind == PictureKind::jpeg) return end.contains("\xff\xd9");
  return source.facts.kind != PictureKind::gif || end.contains(';');
}

bool isWholeFrom(QIODevice& device) {
  try {
    Source source = openOrRefuse(device);
    if (decodeStored(source).isNull()) return false;
    return hasItsEnd(source);
  } catch (const SorvanError&) {
    return false;
  }
}

template <class Work>
auto withBytes(const QByteArray& bytes, Work work) {
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  return work(buffer);
}

/// Where the file cannot be opened, the work gets an empty device: no bytes are no picture.
template <class Work>
auto withFile(const QString& path, Work work) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return withBytes({}, work);
  return work(static_cast<QIODevice&>(file));
}

std::optional<PictureFacts> probeFrom(QIODevice& device) {
  const auto source = openSource(device);
  return source ? std::optional(source->facts) : std::nullopt;
}

/// The same pixels without the texts that a decoded picture carries along.
QImage withoutTexts(const QImage& image) {
  QImage bare(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
  bare.setColorTable(image.colorTable());
  bare.setColorSpace(image.colorSpace());
  bare.setDotsPerMeterX(image.dotsPerMeterX());
  bare.setDotsPerMeterY(image.dotsPerMeterY());
  return bare;
}

QByteArray encode(const QImage& image, const char* format, int quality) {
  if (image.isNull()) throw SorvanError(texts::imageNotWritten());
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);  // not durable: memory
  QImageWriter writer(&buffer, format);
  if (quality >= 0) writer.setQuality(quality);
  if (!writer.write(withoutTexts(image))) throw SorvanError(texts::imageNotWritten());
  return buffer.data();
}

}  // namespace

std::optional<PictureFacts> probePicture(const QString& path) { return withFile(path, probeFrom); }
std::optional<PictureFacts> probePicture(const QByteArray& bytes) { return withBytes(bytes, probeFrom); }

QImage decodeUpright(const QString& path) { return withFile(path, decodeUprightFrom); }
QImage decodeUpright(const QByteArray& bytes) { return withBytes(bytes, decodeUprightFrom); }

QImage decodeWithin(const QString& path, int longestEdge) {
  return withFile(path, [&](QIODevice& device) { return decodeWithinFrom(device, longestEdge); });
}
QImage decodeWithin(const QByteArray& bytes, int longestEdge) {
  return withBytes(bytes, [&](QIODevice& device) { return decodeWithinFrom(device, longestEdge); });
}

bool pictureIsWhole(const QString& path) { return withFile(path, isWholeFrom); }
bool pictureIsWhole(const QByteArray& bytes) { return withBytes(bytes, isWholeFrom); }

bool hasTransparency(const QImage& image) {
  constexpr int side = 64;
  constexpr int opaqueEnough = 245;
  if (!image.hasAlphaChannel()) return false;
  const QImage samples = image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int row = 0; row < samples.height(); ++row) {
    const auto* pixels = reinterpret_cast<const QRgb*>(samples.constScanLine(row));
    if (std::any_of(pixels, pixels + samples.width(), [](QRgb pixel) { return qAlpha(pixel) < opaqueEnough; }))
      return true;
  }
  return false;
}

bool hasTransparency(const QString& path) {
  constexpr int sampleEdge = 128;
  try {
    const auto facts = probePicture(path);
    return facts && facts->mayBeSeeThrough && hasTransparency(decodeWithin(path, sampleEdge));
  } catch (const std::exception&) {
    return false;
  }
}

QByteArray encodePng(const QImage& image) {
  // The third of zlib's levels: a quarter of the time that the sixth takes, for a twentieth more bytes.
  constexpr int thirdLevel = 60;
  return encode(image, "png", thirdLevel);
}
QByteArray encodeJpeg(const QImage& image, double quality) {
  return encode(image, "jpeg", int(std::lround(quality * 100)));
}

}  // namespace sorvan::platform
