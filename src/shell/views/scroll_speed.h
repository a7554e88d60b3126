// How fast a wall runs past: what runs past faster than it can be seen needs no pictures.
#pragma once

#include <QtGlobal>

#include "shell/views/room.h"

namespace sorvan::views {

// A value without a clock of its own: times are milliseconds of whichever clock its owner has.
class ScrollSpeed {
 public:
  // The wall moved by so many pixels, in a view of that height. True while it runs faster than three screens a second.
  // The first move after a rest is a jump, however far it goes.
  bool note(int pixels, int viewHeight, qint64 now);

 private:
  qint64 began_ = -1;
  qint64 last_ = -1;
  double screens_ = 0;  // since it began
};

}  // namespace sorvan::views
