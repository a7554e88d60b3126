#include <gtest/gtest.h>

#include "core/small_edits.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

struct WallSectionsTest : testing::Test {
  test::Desk desk;
  void make(const char* prompt) {
    desk.generate(QString::fromLatin1(prompt));
    desk.settle();
    desk.clock->advance(1s);
  }
  QStringList heads() const {
    QStringList found;
    for (const WallSection& section : desk.gallery.sections())
      found << QStringLiteral("%1 %2 %3").arg(section.first).arg(section.title, section.countText).trimmed();
    return found;
  }
  void order(GallerySort sort) {
    GalleryFilter filter = desk.gallery.filter();
    filter.sort = sort;
    desk.gallery.setFilter(filter);
  }
};

TEST_F(WallSectionsTest, AreTheDaysFromTheNewest) {
  make("one");
  desk.clock->advance(24h);
  make("two");
  make("three");
  EXPECT_EQ(heads(), (QStringList{QStringLiteral("0 Today 2 items"), QStringLiteral("2 Yesterday 1 item")}));
  order(GallerySort::oldest);
  EXPECT_EQ(heads(), (QStringList{QStringLiteral("0 Yesterday 1 item"), QStringLiteral("1 Today 2 items")}));
}

TEST_F(WallSectionsTest, NoOtherOrderHasThem) {
  make("one");
  for (const GallerySort sort : {GallerySort::rating, GallerySort::name, GallerySort::costHigh}) {
    order(sort);
    EXPECT_TRUE(heads().isEmpty());
  }
}

TEST_F(WallSectionsTest, JobsOfTodayStandUnderTodayAndOlderOnesUnderTheirOwnHead) {
  make("one");
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  make("two");
  EXPECT_EQ(heads(), QStringList{QStringLiteral("0 Today 1 item")});
  desk.clock->advance(24h);
  desk.gallery.refreshDates();
  desk.settle();
  EXPECT_EQ(heads(), (QStringList{QStringLiteral("0 Generations"), QStringLiteral("1 Yesterday 1 item")}));
}

TEST_F(WallSectionsTest, AJobAloneStandsUnderToday) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  make("one");
  EXPECT_EQ(heads(), QStringList{QStringLiteral("0 Today")});
}

TEST_F(WallSectionsTest, MidnightTurnsTodayIntoYesterdayWhenTheWindowComesBack) {
  make("one");
  ASSERT_EQ(heads(), QStringList{QStringLiteral("0 Today 1 item")});
  desk.clock->advance(24h);
  desk.gallery.refreshDates();
  desk.settle();
  EXPECT_EQ(heads(), QStringList{QStringLiteral("0 Yesterday 1 item")});
}

}  // namespace
}  // namespace sorvan::shell
