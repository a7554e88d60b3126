#include "shell/wall_sections.h"

#include "shell/texts.h"
#include "shell/wording.h"

#include <QDateTime>

#include <algorithm>

namespace sorvan::shell {

namespace {

QString countOf(std::ptrdiff_t items) {
  const auto number = static_cast<qsizetype>(items);
  return texts::itemCount(countText(number), number);
}

}  // namespace

// A day has twenty-four hours, but for the two of the year on which the clock is set.
const DaySections::Day& DaySections::dayOf(Instant moment, Instant now) {
  const auto after = days_.upper_bound(moment.seconds);
  if (after != days_.begin() && std::prev(after)->second.holds(moment)) return std::prev(after)->second;
  const QDate date = moment.toDateTime().toLocalTime().date();
  const Day day{Instant::fromDateTime(date.startOfDay()), Instant::fromDateTime(date.addDays(1).startOfDay()),
                dayTitle(moment, now)};
  return days_.insert_or_assign(day.from.seconds, day).first->second;
}

std::vector<WallSection> DaySections::over(const Rows& rows, const RowNumbers& numbers, int before, Instant now) {
  if (!today_.holds(now)) {
    days_.clear();
    today_ = dayOf(now, now);
  }
  std::vector<WallSection> sections;
  for (auto at = numbers.begin(); at != numbers.end();) {
    const Day& day = dayOf(rows[*at].createdAt, now);
    const auto end = std::partition_point(
        at + 1, numbers.end(), [&](std::uint32_t number) { return day.holds(rows[number].createdAt); });
    sections.push_back({before + static_cast<int>(at - numbers.begin()), day.title, countOf(end - at)});
    at = end;
  }
  return sections;
}

}  // namespace sorvan::shell
