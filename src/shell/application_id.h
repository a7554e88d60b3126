#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell {

// The one name that the desktop knows the program by: its desktop entry, icon, window class, bus name and software
// catalogue entry all carry it. The files in packaging/ repeat it; a test compares them.
inline const QString applicationID = QStringLiteral("studio.sorvan.Studio");
// A run on the service simulator answers to a bus name of its own.
inline const QString sandboxBusName = QStringLiteral("studio.sorvan.Studio.Sandbox");

// The object that stands for a bus name: "/studio/sorvan/Studio".
inline QString objectPathOf(const QString& busName) {
  return QLatin1Char('/') + QString(busName).replace(QLatin1Char('.'), QLatin1Char('/'));
}

}  // namespace sorvan::shell
