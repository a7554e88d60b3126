// How large the desktop wants its text.
#pragma once

#include <QDBusConnection>
#include <QVariant>

#include "shell/views/room.h"

namespace sorvan::views {

// The desktop's wish as a factor: 1 as designed, at least 0.9 and at most 1.5. Asks the portal once and waits for it a
// tenth of a second at most; 1 without an answer. Main thread.
double desktopTextScale(const QDBusConnection& bus, int patienceMilliseconds = 100);

}  // namespace sorvan::views
