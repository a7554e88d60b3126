#include "shell/window_place.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

int sharedArea(const QRect& left, const QRect& right) {
  const QRect shared = left & right;
  return shared.isEmpty() ? 0 : shared.width() * shared.height();
}

// Keeps [at, at + size) inside [from, to); what is too large starts at `from`.
int inside(int at, int size, int from, int to) { return std::max(from, std::min(at, to - size)); }

}  // namespace

QRect placeOnScreens(QRect wish, const std::vector<QRect>& screens, QSize smallest, int frame) {
  if (screens.empty()) return wish;
  const auto screen = std::max_element(
      screens.begin(), screens.end(),
      [&wish](const QRect& left, const QRect& right) { return sharedArea(wish, left) < sharedArea(wish, right); });
  const QRect free = screen->adjusted(0, frame, 0, 0);
  const QSize size = wish.size().boundedTo(free.size()).expandedTo(smallest);
  return {inside(wish.x(), size.width(), free.left(), free.left() + free.width()),
          inside(wish.y(), size.height(), free.top(), free.top() + free.height()), size.width(), size.height()};
}

QSize smallestContents(QSize smallestWindow, int frame) { return smallestWindow - QSize(0, frame); }

}  // namespace sorvan::shell
