// The sentences of measuring and drawing media that a user may meet.
#pragma once

#include <QString>

namespace sorvan::core::texts {

inline QString chooseMediaFile() { return QStringLiteral("Choose a media file, not a folder."); }
inline QString unsupportedMedia(const QString& fileName) {
  return QStringLiteral("Unsupported media: %1").arg(fileName);
}
inline QString thumbnailNotCreated() { return QStringLiteral("Thumbnail could not be created."); }
inline QString thumbnailNotSaved() { return QStringLiteral("Cannot save thumbnail."); }
inline QString thumbnailNotFinished() { return QStringLiteral("Cannot finish thumbnail."); }
inline QString soundEmpty() { return QStringLiteral("This sound is empty."); }
inline QString waveformNotDrawn() { return QStringLiteral("Cannot draw the waveform."); }

}  // namespace sorvan::core::texts
