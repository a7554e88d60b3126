#include "shell/views/wall_layout.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace sorvan::views {
namespace {

const WallMeasures kMeasures{1000, 176, 8, 16};

WallLayout layoutOf(const std::vector<float>& aspects, const WallMeasures& measures = kMeasures) {
  WallLayout layout;
  layout.build(aspects, measures);
  return layout;
}

TEST(WallLayoutTest, FullRowsReachFromEdgeToEdge) {
  const WallLayout layout = layoutOf(std::vector<float>(40, 1.5F));
  ASSERT_GT(layout.rows().size(), 2u);
  for (size_t number = 0; number + 1 < layout.rows().size(); ++number) {
    const WallRow& row = layout.rows()[number];
    EXPECT_NEAR(layout.rectOf(row.first).left(), 16, 0.01);
    EXPECT_NEAR(layout.rectOf(row.first + row.count - 1).right(), 984, 0.01);
    EXPECT_LE(row.height, 176.01);
  }
}

TEST(WallLayoutTest, TheLastRowIsNotStretched) {
  const WallLayout layout = layoutOf({1.0F});
  EXPECT_NEAR(layout.rectOf(0).height(), 176, 0.01);
  EXPECT_NEAR(layout.rectOf(0).width(), 176, 0.01);
}

TEST(WallLayoutTest, AnEmptyWallHasNoRowsAndNoCells) {
  const WallLayout layout = layoutOf({});
  EXPECT_EQ(layout.rowAt(50), -1);
  EXPECT_EQ(layout.indexAt({10, 10}), -1);
  EXPECT_EQ(layout.range(0, 500), (std::pair<int, int>{0, 0}));
}

TEST(WallLayoutTest, APanoramaAndASliverStayUsable) {
  const WallLayout layout = layoutOf({40.0F, 0.001F, 1.0F});
  EXPECT_GT(layout.rectOf(0).height(), 100);
  EXPECT_GT(layout.rectOf(1).width(), 20);
}

TEST(WallLayoutTest, UpAndDownReachTheNearestCentre) {
  const WallLayout layout = layoutOf(std::vector<float>(30, 1.0F));
  const int below = layout.verticalNeighbour(2, +1);
  EXPECT_EQ(layout.rowOf(below), layout.rowOf(2) + 1);
  EXPECT_LT(std::abs(layout.rectOf(below).center().x() - layout.rectOf(2).center().x()), 100);
  EXPECT_EQ(layout.verticalNeighbour(0, -1), 0);
  EXPECT_EQ(layout.verticalNeighbour(29, +1), 29);
}

RC_GTEST_PROP(WallLayoutTest, EveryCellIsFoundAtItsOwnCentreAndOnlyThere, ()) {
  const auto tenths = *rc::gen::container<std::vector<int>>(rc::gen::inRange(3, 40));
  const int width = *rc::gen::inRange(300, 2000);
  std::vector<float> aspects;
  for (const int tenth : tenths) aspects.push_back(static_cast<float>(tenth) / 10);
  const WallLayout layout = layoutOf(aspects, {static_cast<double>(width), 120, 8, 16});
  for (int index = 0; index < layout.count(); ++index) {
    RC_ASSERT(layout.indexAt(layout.rectOf(index).center()) == index);
    const auto [first, end] = layout.range(layout.rectOf(index).top(), layout.rectOf(index).bottom());
    RC_ASSERT(first <= index);
    RC_ASSERT(end > index);
  }
}

WallMeasures headed() {
  WallMeasures measures = kMeasures;
  measures.headHeight = 32;
  return measures;
}

TEST(WallLayoutTest, EachSectionBeginsWithAHeadAndARowOfItsOwn) {
  WallLayout layout;
  layout.build(std::vector<float>(9, 1.0F), headed(), {0, 2, 7});
  ASSERT_EQ(layout.heads().size(), 3u);
  for (const auto& [head, first] : {std::pair<size_t, int>{0, 0}, {1, 2}, {2, 7}}) {
    EXPECT_NEAR(layout.rectOf(first).top(), layout.heads()[head].top + 32, 0.01);
    EXPECT_NEAR(layout.rectOf(first).left(), 16, 0.01);
    EXPECT_EQ(layout.rows()[static_cast<size_t>(layout.rowOf(first))].first, first);
  }
  EXPECT_EQ(layout.indexAt({30, layout.heads()[1].top + 10}), -1) << "a head is no cell";
}

TEST(WallLayoutTest, OnlyTheHeadsInViewAreAsked) {
  WallLayout layout;
  std::vector<int> sections;
  for (int first = 0; first < 1000; first += 5) sections.push_back(first);
  layout.build(std::vector<float>(1000, 1.0F), headed(), sections);
  const auto [first, end] = layout.headRange(layout.heads()[50].top + 1, layout.heads()[53].top - 1);
  EXPECT_EQ(first, 50);
  EXPECT_EQ(end, 53);
}

TEST(WallLayoutTest, ArrowsCrossFromOneSectionIntoTheNext) {
  WallLayout layout;
  layout.build(std::vector<float>(4, 1.0F), headed(), {0, 2});
  EXPECT_EQ(layout.verticalNeighbour(1, +1), 3);
  EXPECT_EQ(layout.verticalNeighbour(3, -1), 1);
}

TEST(WallLayoutTest, ThePlaceNearestToAPointIsFoundAlsoOutsideTheCells) {
  WallLayout layout;
  layout.build(std::vector<float>(4, 1.0F), headed(), {0, 2});
  EXPECT_EQ(layout.nearest({900, 100000}), 3);
  EXPECT_EQ(layout.nearest({0, -50}), 0);
}

}  // namespace
}  // namespace sorvan::views
