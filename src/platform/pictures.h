// Pictures as values: measuring, decoding upright, looking for transparency, and encoding.
//
// Everything here is a plain function on values, may run on any thread, and belongs on the pool when the picture is
// large. PNG, JPEG, WebP, TIFF, GIF, BMP, HEIC and AVIF are read; the content decides, never the extension. Only frame
// 0 is looked at. "Upright" means that the orientation noted in the file (Exif, TIFF tag or HEIF property) is applied:
// nobody above this room sees a picture lying on its side.
#pragma once

#include <optional>

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

/// A picture of more pixels than this is refused with "This image could not be read.": 400 megapixels.
inline constexpr qint64 maximumPicturePixels = 400'000'000;

enum class PictureKind { png, jpeg, webp, tiff, gif, bmp, heif };

struct PictureFacts {
  PictureKind kind = PictureKind::png;
  QSize size;           ///< pixels, upright
  int orientation = 1;  ///< 1 to 8 as in Exif; `size` has it applied already
  bool mayBeSeeThrough =
      false;  ///< the file has an alpha channel or a transparent colour; its values are not looked at
};

/// Reads the header only. Empty when the bytes are no picture of a known kind or there is no such file; SorvanError
/// "This image could not be read." when they are one but have no size, or too many pixels.
std::optional<PictureFacts> probePicture(const QString& path);
std::optional<PictureFacts> probePicture(const QByteArray& bytes);

/// The whole picture, upright, in whatever format it decodes to (16-bit, grey and palette stay so: convert what you
/// depend on), with its colour space where the file has one. SorvanError "This image could not be read.".
/// A JPEG that is cut short is decoded as far as it goes; `pictureIsWhole` tells.
QImage decodeUpright(const QString& path);
QImage decodeUpright(const QByteArray& bytes);

/// Upright and scaled down so that the longer side is at most `longestEdge` pixels; smaller pictures are never
/// enlarged. 8 bits a channel, in sRGB: RGB32, or ARGB32_Premultiplied where it may be see-through. Much faster and
/// smaller in memory than `decodeUpright` followed by scaling. SorvanError as above.
QImage decodeWithin(const QString& path, int longestEdge);
QImage decodeWithin(const QByteArray& bytes, int longestEdge);

/// False for a picture that cannot be decoded to its last row: for results that must not be accepted when cut short.
/// Decodes everything, so it costs what `decodeUpright` does.
bool pictureIsWhole(const QString& path);
bool pictureIsWhole(const QByteArray& bytes);

/// True when any of 64 × 64 samples is less than 245 of 255 opaque, so that an alpha channel that holds only
/// near-opaque values does not count.
bool hasTransparency(const QImage& image);
/// The same for a file, on at most 128 pixels. Every failure answers false.
bool hasTransparency(const QString& path);

/// Encodes pixels and colour space, never texts or an orientation. SorvanError "This image could not be written.".
QByteArray encodePng(const QImage& image);
/// `quality` from 0 to 1, rounded to hundredths. Transparency is lost: lay the picture on something first.
QByteArray encodeJpeg(const QImage& image, double quality);

}  // namespace sorvan::platform
