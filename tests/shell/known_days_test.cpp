#include "shell/known_days.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include "shell/wording.h"

namespace sorvan::shell {
namespace {

Instant at(int day, int hour, int minute) {
  return Instant::fromDateTime(QDateTime(QDate(2026, 6, day), QTime(hour, minute)));
}

TEST(KnownDays, TitlesAMomentAsItStandsToday) {
  KnownDays days;
  EXPECT_EQ(days.of(at(12, 9, 0), at(12, 10, 0)).title, QStringLiteral("Today"));
  EXPECT_EQ(days.of(at(11, 23, 59), at(12, 10, 0)).title, QStringLiteral("Yesterday"));
  EXPECT_EQ(days.of(at(2, 12, 0), at(12, 10, 0)).title, dayTitle(at(2, 12, 0), at(12, 10, 0)));
}

TEST(KnownDays, PartsMomentsAtMidnight) {
  KnownDays days;
  const Instant now = at(12, 10, 0);
  EXPECT_EQ(days.of(at(12, 0, 0), now).title, QStringLiteral("Today"));
  EXPECT_TRUE(days.of(at(11, 0, 0), now).holds(at(11, 23, 59)));
  EXPECT_FALSE(days.of(at(11, 0, 0), now).holds(at(12, 0, 0)));
  EXPECT_EQ(days.of(at(11, 23, 59), now).title, QStringLiteral("Yesterday"));
}

TEST(KnownDays, TitlesAnewOnAnotherDay) {
  KnownDays days;
  const Instant moment = at(12, 9, 0);
  ASSERT_EQ(days.of(moment, at(12, 10, 0)).title, QStringLiteral("Today"));
  EXPECT_EQ(days.of(moment, at(13, 0, 1)).title, QStringLiteral("Yesterday"));
  EXPECT_EQ(days.of(moment, at(12, 23, 0)).title, QStringLiteral("Today"));
}

}  // namespace
}  // namespace sorvan::shell
