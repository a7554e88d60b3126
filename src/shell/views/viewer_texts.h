// The words of the large view, the players, quick look and hover play.
#pragma once

#include <QString>

#include "shell/views/room.h"

namespace sorvan::views::texts {

// Zoom.
inline QString zoomIn() { return QStringLiteral("Zoom In"); }
inline QString zoomOut() { return QStringLiteral("Zoom Out"); }
inline QString fit() { return QStringLiteral("Fit"); }
inline QString fitHelp() { return QStringLiteral("Fit the picture, or show it at 100 %"); }
inline QString itemTools() { return QStringLiteral("Item shown"); }
inline QString zoomControls() { return QStringLiteral("Zoom"); }
inline QString percent(int value) { return QStringLiteral("%1 %").arg(value); }
inline QString zoomIs(const QString& percent) { return QStringLiteral("Size %1").arg(percent); }

// What cannot be shown.
inline QString originalIsMissing() { return QStringLiteral("The original file is missing."); }
inline QString imageUnreadable() { return QStringLiteral("This image could not be read."); }
inline QString originalUnreadable() { return QStringLiteral("The original file could not be read."); }
inline QString endsEarly() { return QStringLiteral("This file ends before its time. The rest of it is missing."); }

// Player.
inline QString player() { return QStringLiteral("Player"); }
inline QString play() { return QStringLiteral("Play"); }
inline QString pause() { return QStringLiteral("Pause"); }
inline QString previousFrame() { return QStringLiteral("Previous Frame"); }
inline QString nextFrame() { return QStringLiteral("Next Frame"); }
inline QString fullScreenClip() { return QStringLiteral("Full Screen"); }
inline QString leaveFullScreen() { return QStringLiteral("Leave Full Screen"); }
inline QString loop() { return QStringLiteral("Loop"); }
inline QString mute() { return QStringLiteral("Mute"); }
inline QString unmute() { return QStringLiteral("Unmute"); }
inline QString volume() { return QStringLiteral("Volume"); }
inline QString playingPosition() { return QStringLiteral("Position"); }
inline QString positionOf(const QString& now, const QString& whole) {
  return QStringLiteral("%1 of %2").arg(now, whole);
}
inline QString waveform() { return QStringLiteral("Waveform"); }

// Quick look.
inline QString quickLook() { return QStringLiteral("Quick Look"); }
inline QString quickLookOf(const QString& name) { return QStringLiteral("Quick Look: %1").arg(name); }
inline QString closeQuickLook() { return QStringLiteral("Close Quick Look"); }

// Inspector.
inline QString showMoreLinks(int count) { return QStringLiteral("Show %1 More").arg(count); }

}  // namespace sorvan::views::texts
