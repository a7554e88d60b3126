// What a file is, told by its first bytes.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include "generation/room.h"

namespace sorvan::generation {

/// How many bytes from the start of a file are enough for `extensionOfBytes`.
inline constexpr int mediaKindBytes = 64;

/// The extension that fits bytes that begin like this, without a point: png, jpg, webp, gif, tif, avif, heic, mp4, mov,
/// webm, mp3, wav, aiff, flac, ogg, m4a, aac; nothing when they are no picture, clip or sound that is known.
std::optional<QString> extensionOfBytes(QByteArrayView start);

/// The same for a file; nothing also when it cannot be read.
std::optional<QString> extensionOfFile(const QString& file);

/// The extension that an output's file gets: the one announced, when it means the same kind of bytes as those found,
/// else the one found; the announced one when the bytes tell nothing.
QString fittingExtension(const QString& announced, const std::optional<QString>& found);

/// Whether an extension, in any case, names a picture of a kind that can be laid over another.
bool isPlainPicture(const QString& extension);
/// Whether an extension, in any case, names a clip that a sound track is taken from.
bool isClip(const QString& extension);

}  // namespace sorvan::generation
