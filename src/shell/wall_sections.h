#pragma once

#include "shell/gallery_filter.h"
#include "shell/known_days.h"

#include <vector>

namespace sorvan::shell {

// A part of the wall under a heading of its own.
struct WallSection {
  int first = 0;      // the number of its first cell
  QString title;      // “Today”, “Yesterday” or the date
  QString countText;  // “14 items”; empty over jobs alone
  bool operator==(const WallSection&) const = default;
};

// Parts the wall by the days of this computer's clock. The items stand in the order of their dates, rising or falling,
// and `before` cells stand before the first of them.
std::vector<WallSection> daySections(KnownDays& days, const Rows& rows, const RowNumbers& numbers, int before,
                                     Instant now);

}  // namespace sorvan::shell
