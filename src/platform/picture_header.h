// What the first bytes of a picture tell: its kind, and the facts that Qt's readers leave out.
#pragma once

#include <optional>

#include <QIODevice>

#include "platform/pictures.h"

namespace sorvan::platform {

/// The kind that the first bytes announce. Leaves the device where it was.
std::optional<PictureKind> announcedKind(QIODevice& device);

/// What the chunks of a PNG or WebP before its pixels tell. Bytes are untrusted: every length is checked, and at most
/// 64 KiB of Exif are read.
struct ChunkFacts {
  int orientation = 1;
  bool mayBeSeeThrough = false;
};
ChunkFacts pngChunkFacts(QIODevice& device);
ChunkFacts webpChunkFacts(QIODevice& device);

/// The orientation from 1 to 8 in a block of Exif that starts at its TIFF header; 1 when it holds none.
int exifOrientation(const QByteArray& exif);

}  // namespace sorvan::platform
