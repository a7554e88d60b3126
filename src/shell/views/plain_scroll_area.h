// A column that scrolls up and down.
#pragma once

#include "shell/views/room.h"

class QScrollArea;
class QWidget;

namespace sorvan::views {

// It shows the contents on whatever is painted behind it, without a frame, as wide as the area is; the keyboard goes to
// what is inside. The area owns the contents.
QScrollArea* plainScrollArea(QWidget* contents);

}  // namespace sorvan::views
