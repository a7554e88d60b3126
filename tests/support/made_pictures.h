// Pictures that tests make: small ones of every kind the studio reads, and headers that lie.
#pragma once

#include <QByteArray>
#include <QImage>

namespace sorvan::test {

/// Left half red, right half blue, but for one green pixel block in the top left corner: tells every turn and mirror.
QImage cornerMarked(QSize size);

QByteArray encoded(const QImage& image, const char* format);
/// A JPEG with an Exif block that says how to hold it, 1 to 8.
QByteArray jpegWithOrientation(const QImage& image, int orientation);
/// A PNG with an eXIf chunk that says so.
QByteArray pngWithOrientation(const QImage& image, int orientation);
/// A WebP with an EXIF chunk that says so.
QByteArray webpWithOrientation(const QImage& image, int orientation);
/// A TIFF whose orientation tag says so.
QByteArray tiffWithOrientation(const QImage& image, int orientation);
/// The Exif block itself, from its TIFF header on, in big-endian numbers.
QByteArray exifBlock(int orientation);

enum class HeifCodec { hevc, av1 };
QByteArray heif(const QImage& image, HeifCodec codec, int orientation = 1);

/// One chunk with its length and checksum.
QByteArray pngChunk(const char* name, const QByteArray& data);
/// A PNG of any colour type: `rows` are the filtered bytes of all rows, uncompressed, and `before` stands before them.
QByteArray rawPng(QSize size, int bits, int colourType, const QByteArray& rows, const QByteArray& before = {});
/// A PNG that ends after its header.
QByteArray pngHeader(QSize size);

}  // namespace sorvan::test
