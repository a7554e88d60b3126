#include "shell/wall_sections.h"

#include "shell/texts.h"
#include "shell/wording.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

QString countOf(std::ptrdiff_t items) {
  const auto number = static_cast<qsizetype>(items);
  return texts::itemCount(countText(number), number);
}

}  // namespace

std::vector<WallSection> daySections(KnownDays& days, const Rows& rows, const RowNumbers& numbers, int before,
                                     Instant now) {
  std::vector<WallSection> sections;
  for (auto at = numbers.begin(); at != numbers.end();) {
    const KnownDays::Day& day = days.of(rows[*at].createdAt, now);
    const auto end = std::partition_point(
        at + 1, numbers.end(), [&](std::uint32_t number) { return day.holds(rows[number].createdAt); });
    sections.push_back({before + static_cast<int>(at - numbers.begin()), day.title, countOf(end - at)});
    at = end;
  }
  return sections;
}

}  // namespace sorvan::shell
