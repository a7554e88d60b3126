// A widget of our own that stands for a number, as assistive technology must see it.
#pragma once

#include <functional>

#include "shell/views/room.h"

class QWidget;

namespace sorvan::views {

// How the number is read and set, and its least and most. All are called on the main thread while the widget lives.
struct AccessibleValue {
  std::function<int()> now;
  std::function<void(int)> set;
  std::function<std::pair<int, int>()> range;
  int step = 1;
};

// Makes the widget a slider with this value. Called in the widget's constructor; its name stays its accessible name.
void giveValue(QWidget& widget, AccessibleValue value);
// The number is another one.
void announceValue(QWidget& widget);

}  // namespace sorvan::views
