#include "shell/known_days.h"

#include "shell/wording.h"

#include <QDateTime>

#include <iterator>

namespace sorvan::shell {

const KnownDays::Day& KnownDays::of(Instant moment, Instant now) {
  if (!today_.holds(now)) {
    days_.clear();
    today_ = last_ = find(now, now);
  }
  // Most moments follow one of the same day.
  if (!last_.holds(moment)) last_ = find(moment, now);
  return last_;
}

const KnownDays::Day& KnownDays::find(Instant moment, Instant now) {
  const auto after = days_.upper_bound(moment.seconds);
  if (after != days_.begin() && std::prev(after)->second.holds(moment)) return std::prev(after)->second;
  return add(moment, now);
}

// A day has twenty-four hours, but for the two of the year on which the clock is set.
const KnownDays::Day& KnownDays::add(Instant moment, Instant now) {
  const QDate date = moment.toDateTime().toLocalTime().date();
  const Day day{Instant::fromDateTime(date.startOfDay()), Instant::fromDateTime(date.addDays(1).startOfDay()),
                dayTitle(moment, now)};
  return days_.insert_or_assign(day.from.seconds, day).first->second;
}

}  // namespace sorvan::shell
