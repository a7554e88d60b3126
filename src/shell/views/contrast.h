// Whether the desktop asks for more contrast.
#pragma once

#include "shell/views/room.h"

namespace sorvan::views {

// Follows the desktop while the program runs, as the colours do: `Theme::changed` tells of it. Main thread.
bool moreContrast();

}  // namespace sorvan::views
