// Media of the library made ready to be sent as references. Plain functions on values that block: run them on the pool.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <stop_token>

#include "catalogue/room.h"

namespace sorvan::catalogue {

inline constexpr qint64 largestPictureToSend = 8LL << 20;  ///< bytes
inline constexpr qint64 largestSoundToSend = 48LL << 20;   ///< bytes
inline constexpr qint64 largestClipToSend = 48LL << 20;    ///< bytes
inline constexpr int longestEdgeToSend = 4096;             ///< pixels

struct PreparedMedia {
  QByteArray bytes;
  QString contentType;
  QString ext;  ///< without a point
};

enum class ReferenceKind { picture, sound, clip };
/// Told by the extension of the file's name.
ReferenceKind referenceKind(const QString& file);

/// The picture upright, at most 4096 pixels on its longer side, as PNG. Throws SorvanError "Cannot read a reference
/// image." or "Cannot encode reference."
QByteArray pngOf(const QString& file);

/// The PNG where it is at most `limit` bytes, else a JPEG of quality 0.92, on white where it was see-through. The JPEG
/// may still be larger than the limit: the service then refuses it.
PreparedMedia compactPicture(const QString& file, qint64 limit);

/// The file as it is where it is at most `limit` bytes, else its samples as a WAV file. Throws SorvanError "This sound
/// cannot be sent." or "This sound is too long to send. Trim it first."
PreparedMedia preparedSound(const QString& file, qint64 limit, const std::stop_token& stop = {});

/// The clip's own bytes. Throws SorvanError "This clip cannot be sent." when it is no clip, or "This clip is too long
/// to send. Trim it first."
PreparedMedia preparedClip(const QString& file);

/// A reference of any kind, by the extension of the file's name.
PreparedMedia preparedReference(const QString& file, const std::stop_token& stop = {});

/// Writes the sound track of a clip to `destination`, an M4A file that the caller owns. Throws the platform's sentence.
void takeSoundTrack(const QString& clip, const QString& destination, const std::stop_token& stop = {});

}  // namespace sorvan::catalogue
