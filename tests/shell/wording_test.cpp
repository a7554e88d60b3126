#include "shell/wording.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace sorvan::shell {
namespace {

Instant local(const char16_t* text) {
  return Instant::fromDateTime(QDateTime::fromString(QString::fromUtf16(text), Qt::ISODate));
}

TEST(Wording, WritesClocksWithoutFractions) {
  EXPECT_EQ(clockText(8.9), QStringLiteral("0:08"));
  EXPECT_EQ(clockText(102), QStringLiteral("1:42"));
  EXPECT_EQ(clockText(3723), QStringLiteral("1:02:03"));
  EXPECT_EQ(clockText(-5), QStringLiteral("0:00"));
}

TEST(Wording, TellsTodayByTheClockAndYesterdayByItsName) {
  const Instant now = local(u"2026-03-05T10:00:00");
  EXPECT_EQ(dayText(local(u"2026-03-05T09:41:00"), now), QStringLiteral("09:41"));
  EXPECT_EQ(dayText(local(u"2026-03-04T23:59:00"), now), QStringLiteral("Yesterday"));
  EXPECT_EQ(dayAndTimeText(local(u"2026-03-05T09:41:00"), now), QStringLiteral("Today 09:41"));
}

TEST(Wording, GroupsLargeCounts) { EXPECT_EQ(countText(102418), QStringLiteral("102,418")); }

}  // namespace
}  // namespace sorvan::shell
