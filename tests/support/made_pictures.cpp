#include "support/made_pictures.h"

#include <gtest/gtest.h>
#include <libheif/heif.h>
#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>

#include <memory>

namespace sorvan::test {
namespace {

template <class Number>
QByteArray bigEndian(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

template <class Number>
QByteArray littleEndian(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToLittleEndian(number, bytes.data());
  return bytes;
}

quint32 checksumOf(const QByteArray& bytes) {
  quint32 sum = 0xffffffffU;
  for (const char byte : bytes) {
    sum ^= quint8(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ (sum & 1 ? 0xedb88320U : 0);
  }
  return ~sum;
}

const QByteArray pngSignature("\x89PNG\r\n\x1a\n", 8);

QByteArray pngHeaderChunk(QSize size, int bits, int colourType) {
  return pngChunk("IHDR", bigEndian(quint32(size.width())) + bigEndian(quint32(size.height())) + char(bits) +
                              char(colourType) + QByteArray(3, '\0'));
}

heif_error append(heif_context*, const void* data, size_t size, void* target) {
  static_cast<QByteArray*>(target)->append(static_cast<const char*>(data), qsizetype(size));
  return {heif_error_Ok, heif_suberror_Unspecified, "Success"};
}

void mustSucceed(const heif_error& error) {
  if (error.code != heif_error_Ok) throw std::runtime_error(error.message);
}

heif_image* heifPixels(const QImage& image) {
  heif_image* result = nullptr;
  const bool alpha = image.hasAlphaChannel();
  mustSucceed(heif_image_create(image.width(), image.height(), heif_colorspace_RGB,
                                alpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, &result));
  mustSucceed(heif_image_add_plane(result, heif_channel_interleaved, image.width(), image.height(), 8));
  int stride = 0;
  uint8_t* plane = heif_image_get_plane(result, heif_channel_interleaved, &stride);
  for (int row = 0; row < image.height(); ++row)
    std::copy_n(image.constScanLine(row), image.width() * (alpha ? 4 : 3), plane + ptrdiff_t(row) * stride);
  return result;
}

}  // namespace

QImage cornerMarked(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::blue);
  QPainter painter(&image);
  painter.fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
  painter.fillRect(0, 0, size.width() / 4, size.height() / 4, Qt::green);
  return image;
}

QByteArray encoded(const QImage& image, const char* format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format);
  writer.setQuality(95);
  EXPECT_TRUE(writer.write(image)) << format;
  return buffer.data();
}

QByteArray exifBlock(int orientation) {
  QByteArray block("MM\0\x2a\0\0\0\x08\0\x01", 10);
  block += bigEndian(quint16(0x0112)) + bigEndian(quint16(3)) + bigEndian(quint32(1));
  return block + bigEndian(quint16(orientation)) + QByteArray(2, '\0') + bigEndian(quint32(0));
}

QByteArray jpegWithOrientation(const QImage& image, int orientation) {
  QByteArray jpeg = encoded(image, "jpeg");
  const QByteArray exif = QByteArray("Exif\0\0", 6) + exifBlock(orientation);
  jpeg.insert(2, QByteArray("\xff\xe1", 2) + bigEndian(quint16(exif.size() + 2)) + exif);
  return jpeg;
}

QByteArray webpWithOrientation(const QImage& image, int orientation) {
  constexpr quint8 exifFlag = 0x08;
  const auto chunk = [](const char* name, const QByteArray& data) {
    return QByteArray(name) + littleEndian(quint32(data.size())) + data + QByteArray(data.size() & 1, '\0');
  };
  QByteArray canvas = littleEndian(quint32(exifFlag));
  canvas += littleEndian(quint32(image.width() - 1)).left(3) + littleEndian(quint32(image.height() - 1)).left(3);
  const QByteArray content =
      "WEBP" + chunk("VP8X", canvas) + encoded(image, "webp").mid(12) + chunk("EXIF", exifBlock(orientation));
  return "RIFF" + littleEndian(quint32(content.size())) + content;
}

QByteArray tiffWithOrientation(const QImage& image, int orientation) {
  using enum QImageIOHandler::Transformation;
  static constexpr std::array turns{TransformationNone,     TransformationNone,
                                    TransformationMirror,   TransformationRotate180,
                                    TransformationFlip,     TransformationFlipAndRotate90,
                                    TransformationRotate90, TransformationMirrorAndRotate90,
                                    TransformationRotate270};
  QBuffer buffer;
  buffer.open(QIODevice::ReadWrite);
  QImageWriter writer(&buffer, "tiff");
  writer.setTransformation(turns[size_t(orientation)]);
  EXPECT_TRUE(writer.write(image));
  return buffer.data();
}

QByteArray pngWithOrientation(const QImage& image, int orientation) {
  QByteArray png = encoded(image, "png");
  constexpr qsizetype afterHeader = 8 + 25;
  png.insert(afterHeader, pngChunk("eXIf", exifBlock(orientation)));
  return png;
}

QByteArray heif(const QImage& image, HeifCodec codec, int orientation) {
  const std::unique_ptr<heif_context, decltype(&heif_context_free)> context(heif_context_alloc(), heif_context_free);
  heif_encoder* encoder = nullptr;
  mustSucceed(heif_context_get_encoder_for_format(
      context.get(), codec == HeifCodec::hevc ? heif_compression_HEVC : heif_compression_AV1, &encoder));
  heif_encoder_set_lossy_quality(encoder, 90);
  heif_encoding_options* options = heif_encoding_options_alloc();
  options->image_orientation = heif_orientation(orientation);
  heif_image* pixels =
      heifPixels(image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGB888));
  heif_image_handle* handle = nullptr;
  mustSucceed(heif_context_encode_image(context.get(), pixels, encoder, options, &handle));
  QByteArray bytes;
  heif_writer writer{1, append};
  mustSucceed(heif_context_write(context.get(), &writer, &bytes));
  heif_image_handle_release(handle);
  heif_image_release(pixels);
  heif_encoding_options_free(options);
  heif_encoder_release(encoder);
  return bytes;
}

QByteArray pngChunk(const char* name, const QByteArray& data) {
  const QByteArray named = QByteArray(name) + data;
  return bigEndian(quint32(data.size())) + named + bigEndian(checksumOf(named));
}

QByteArray rawPng(QSize size, int bits, int colourType, const QByteArray& rows, const QByteArray& before) {
  const QByteArray zlib = qCompress(rows).mid(4);
  return pngSignature + pngHeaderChunk(size, bits, colourType) + before + pngChunk("IDAT", zlib) + pngChunk("IEND", {});
}

QByteArray pngHeader(QSize size) { return pngSignature + pngHeaderChunk(size, 8, 2) + pngChunk("IDAT", "x"); }

}  // namespace sorvan::test
