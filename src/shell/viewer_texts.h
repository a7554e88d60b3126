// Titles of what can be done in the large view, the players and quick look.
#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell::texts {

inline const QString openItem = QStringLiteral("Open");
inline const QString quickLook = QStringLiteral("Quick Look");
inline const QString zoomIn = QStringLiteral("Zoom In");
inline const QString zoomOut = QStringLiteral("Zoom Out");
inline const QString fitOrActualSize = QStringLiteral("Fit or Actual Size");
inline const QString playPause = QStringLiteral("Play or Pause");
inline const QString previousFrame = QStringLiteral("Previous Frame");
inline const QString nextFrame = QStringLiteral("Next Frame");
inline const QString secondBack = QStringLiteral("One Second Back");
inline const QString secondForward = QStringLiteral("One Second Forward");
inline const QString playerStart = QStringLiteral("Go to Start");
inline const QString playerEnd = QStringLiteral("Go to End");
inline const QString mute = QStringLiteral("Mute");
inline const QString loop = QStringLiteral("Loop");

// What kind of sound an item is.
inline const QString soundKind = QStringLiteral("Sound");
inline const QString voiceKind = QStringLiteral("Voice");
inline const QString musicKind = QStringLiteral("Music");
inline const QString effectKind = QStringLiteral("Effect");

}  // namespace sorvan::shell::texts
