// The small JPEG that the gallery shows for every media file.
#pragma once

#include <QByteArray>
#include <QString>

#include "core/enumerations.h"

namespace sorvan::core {

/// Longest side of a thumbnail, pixels. Smaller pictures keep their size.
inline constexpr int thumbnailEdge = 700;

/// Draws the thumbnail of `source` as JPEG bytes: a picture scaled (on squares when it is see-through), a clip's first
/// frame, a sound's waveform. Runs on any thread, blocks, belongs on the pool. SorvanError "Thumbnail could not be
/// created.", "Cannot finish thumbnail.", or the failure of the clip or sound as it is.
QByteArray thumbnailJpeg(const QString& source, MediaType type);

/// Draws it and writes it durably to `destination`, over a file that is there; its folder must exist. After a failure
/// an old file is as it was. SorvanError as above, or "Cannot save thumbnail.".
void drawThumbnail(const QString& source, MediaType type, const QString& destination);

}  // namespace sorvan::core
