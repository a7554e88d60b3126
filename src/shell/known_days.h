// The days of this computer's clock, as they are titled today.
#pragma once

#include "base/instant.h"
#include "shell/room.h"

#include <QString>

#include <map>

namespace sorvan::shell {

// Tells of many moments on which day they were. It remembers the days that it has met: to find where a day begins the
// system reads its time zone anew, which costs more than a thousand comparisons.
class KnownDays {
 public:
  struct Day {
    Instant from;
    Instant to;     // outside
    QString title;  // “Today”, “Yesterday” or the date in full
    bool holds(Instant moment) const { return from <= moment && moment < to; }
  };
  // The day of the moment, valid until the next call. A `now` on another day titles all days anew.
  const Day& of(Instant moment, Instant now);

 private:
  const Day& find(Instant moment, Instant now);
  const Day& add(Instant moment, Instant now);

  std::map<double, Day> days_;  // by where they begin
  Day last_;                    // what was told last
  Day today_;                   // what the titles were made on
};

}  // namespace sorvan::shell
