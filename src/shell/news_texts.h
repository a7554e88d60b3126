#pragma once

#include "shell/room.h"

#include <QString>

// What the desktop tells of work that ended while the window was in the background.
namespace sorvan::shell::texts {

inline const QString generationFailed = QStringLiteral("Generation failed");
inline const QString allGenerationsEnded = QStringLiteral("All generations have ended");
inline const QString showResult = QStringLiteral("Show");
inline QString endedCounts(int complete, int failed) {
  if (failed == 0) return QStringLiteral("%1 complete").arg(complete);
  return complete == 0 ? QStringLiteral("%1 failed").arg(failed)
                       : QStringLiteral("%1 complete, %2 failed").arg(complete).arg(failed);
}

}  // namespace sorvan::shell::texts
