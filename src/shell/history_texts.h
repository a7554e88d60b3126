#pragma once

#include "shell/room.h"

#include <QString>

// What the history of jobs says beside its rows.
namespace sorvan::shell::texts {

inline const QString searchHistory = QStringLiteral("Search History");
inline const QString noMatchingGenerations = QStringLiteral("No generations match");
inline QString cancelSelected(int count) {
  return count == 1 ? QStringLiteral("Cancel Selected") : QStringLiteral("Cancel %1 Selected").arg(count);
}
inline const QString cancelAll = QStringLiteral("Cancel All");
inline const QString keepRunning = QStringLiteral("Keep Running");
inline QString cancelAllTitle(int count) {
  return count == 1 ? QStringLiteral("Cancel the generation in progress?")
                    : QStringLiteral("Cancel all %1 generations in progress?").arg(count);
}
inline const QString cancelAllText = QStringLiteral(
    "Requests that wait are not sent and cost nothing. A model that has already started may still finish and charge "
    "for its work; each row then says so.");

}  // namespace sorvan::shell::texts
