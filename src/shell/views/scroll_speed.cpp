#include "shell/views/scroll_speed.h"

#include <algorithm>
#include <cstdlib>

namespace sorvan::views {

namespace {
constexpr qint64 kRest = 200;         // milliseconds without a move
constexpr qint64 kWindow = 500;       // milliseconds that are looked at
constexpr double kFastest = 3.4 / 1000;  // screens a millisecond, with room for moves that come unevenly
constexpr qint64 kShortest = 60;      // milliseconds; before, nothing can be told
}  // namespace

bool ScrollSpeed::note(int pixels, int viewHeight, qint64 now) {
  const bool rested = last_ < 0 || now - last_ > kRest;
  last_ = now;
  if (rested) {
    began_ = now;
    screens_ = 0;
    return false;
  }
  screens_ += static_cast<double>(std::abs(pixels)) / std::max(1, viewHeight);
  const qint64 passed = now - began_;
  if (passed > kWindow) {
    screens_ *= static_cast<double>(kWindow) / static_cast<double>(passed);
    began_ = now - kWindow;
  }
  return passed >= kShortest && screens_ / static_cast<double>(std::min(passed, kWindow)) > kFastest;
}

}  // namespace sorvan::views
