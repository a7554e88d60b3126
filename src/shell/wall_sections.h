#pragma once

#include "shell/gallery_filter.h"

#include <map>
#include <vector>

namespace sorvan::shell {

// A part of the wall under a heading of its own.
struct WallSection {
  int first = 0;      // the number of its first cell
  QString title;      // “Today”, “Yesterday” or the date
  QString countText;  // “14 items”; empty over jobs alone
  bool operator==(const WallSection&) const = default;
};

// Parts the wall by the days of this computer's clock. Knows the days that it has met, since to find where a day begins
// costs more than all else here.
class DaySections {
 public:
  // Items that stand in the order of their dates, rising or falling. `before` cells stand before the first item.
  std::vector<WallSection> over(const Rows& rows, const RowNumbers& numbers, int before, Instant now);

 private:
  struct Day {
    Instant from;
    Instant to;  // outside
    QString title;
    bool holds(Instant moment) const { return from <= moment && moment < to; }
  };
  const Day& dayOf(Instant moment, Instant now);

  std::map<double, Day> days_;  // by where they begin
  Day today_;                   // what the titles were made on
};

}  // namespace sorvan::shell
