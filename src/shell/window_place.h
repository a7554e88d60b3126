#pragma once

#include "shell/room.h"

#include <boost/describe.hpp>

#include <QRect>
#include <QSize>

#include <vector>

namespace sorvan::shell {

// Where a window stood and how wide its panels were, in logical pixels. Zero widths are those of a new window.
struct WindowPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool maximized = false;
  int sidebarWidth = 0;
  int inspectorWidth = 0;
  bool operator==(const WindowPlace&) const = default;
};
BOOST_DESCRIBE_STRUCT(WindowPlace, (), (x, y, width, height, maximized, sidebarWidth, inspectorWidth))

// Where the contents of a window go so that its title can be reached: on the screen that shows most of the wish, no
// larger than the screen and no smaller than `smallest`, which a small screen shows from its upper left corner on.
// `frame` is what the desktop adds above. Without screens the wish stays.
QRect placeOnScreens(QRect wish, const std::vector<QRect>& screens, QSize smallest, int frame);

// The smallest contents of a window: a small screen with a frame over the window still shows all of it.
QSize smallestContents(QSize smallestWindow, int frame);

}  // namespace sorvan::shell
