#include "generation/marked_areas_mask.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>

#include "generation/marked_areas_plan.h"
#include "generation/request_builders.h"

namespace sorvan::generation {
namespace {

using test::box;

using Levels = std::vector<std::vector<int>>;

Levels levelsOf(const FeatherMask& mask, QSize canvas) {
  Levels levels;
  std::vector<std::uint8_t> row(size_t(canvas.width()));
  for (int y = 0; y < canvas.height(); ++y) {
    mask.readRow(y, row.data());
    levels.emplace_back(row.begin(), row.end());
  }
  return levels;
}

/// The mask as it is described: for each step, each box inset by that step is filled with the step's level.
Levels paintedStepByStep(const std::vector<MarkupBox>& boxes, QSize canvas) {
  Levels levels(size_t(canvas.height()), std::vector<int>(size_t(canvas.width()), 0));
  const int feather = std::max(std::min(canvas.width(), canvas.height()) / 150, 2);
  for (int step = 1; step <= feather; ++step)
    for (const MarkupBox& one : boxes) {
      const QRect whole = touchedPixels(*pixelsOf(one, canvas), canvas);
      const QRect inner = whole.adjusted(step, step, -step, -step);
      for (int y = inner.top(); y <= inner.bottom(); ++y)
        for (int x = inner.left(); x <= inner.right(); ++x)
          levels[size_t(y)][size_t(x)] = int(std::lround(255.0 * step / feather));
    }
  return levels;
}

TEST(FeatherMasks, RiseFromTheEdgeOfABoxByTwoPixelsInASmallPicture) {
  const FeatherMask mask({box(0.1, 0.1, 0.2, 0.2)}, {100, 100});
  EXPECT_EQ(mask.feather(), 2);
  EXPECT_EQ(mask.bounds(), QRect(11, 11, 18, 18));
  const Levels levels = levelsOf(mask, {100, 100});
  EXPECT_EQ(levels[20][9], 0);
  EXPECT_EQ(levels[20][10], 0);
  EXPECT_NEAR(levels[20][11], 128, 1);
  EXPECT_EQ(levels[20][12], 255);
  EXPECT_EQ(levels[20][27], 255);
  EXPECT_NEAR(levels[20][28], 128, 1);
  EXPECT_EQ(levels[20][29], 0);
}

TEST(FeatherMasks, GrowSofterWithThePicture) {
  EXPECT_EQ(FeatherMask({}, {6000, 4000}).feather(), 26);
  EXPECT_EQ(FeatherMask({}, {449, 4000}).feather(), 2);
  EXPECT_EQ(FeatherMask({}, {450, 4000}).feather(), 3);
}

TEST(FeatherMasks, LeaveThePictureAlongItsOwnEdges) {
  const QSize canvas(30, 20);
  const Levels levels = levelsOf(FeatherMask({box(-1, -1, 3, 3)}, canvas), canvas);
  for (int x = 0; x < canvas.width(); ++x) EXPECT_EQ(levels.front()[size_t(x)] + levels.back()[size_t(x)], 0);
  for (const auto& row : levels) EXPECT_EQ(row.front() + row.back(), 0);
  EXPECT_EQ(levels[10][15], 255);
}

TEST(FeatherMasks, OfASmallBoxHoldOnlyTheirFirstRings) {
  const FeatherMask mask({box(0.1, 0.1, 0.03, 0.03)}, {100, 100});
  const Levels levels = levelsOf(mask, {100, 100});
  EXPECT_NEAR(levels[11][11], 128, 1);
  EXPECT_EQ(mask.bounds(), QRect(11, 11, 1, 1));
}

TEST(FeatherMasks, OfBoxesWithoutAnAreaOutsideOrNotFiniteAreEmpty) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const FeatherMask mask({box(0.5, 0.5, 0, 0), box(0.5, 0.5, 0, 0.5), box(2, 2, 1, 1), box(-3, 0, 1, 1),
                          box(nan, 0, 1, 1), box(0, 0, std::numeric_limits<double>::infinity(), 1)},
                         {100, 100});
  EXPECT_TRUE(mask.bounds().isEmpty());
}

TEST(FeatherMasks, OfAThousandBoxesTakeTheLightestOfAll) {
  std::vector<MarkupBox> boxes;
  for (int i = 0; i < 1000; ++i) boxes.push_back(box((i % 40) / 50.0, (i % 37) / 60.0, (i % 7 + 1) / 30.0, 0.2));
  const QSize canvas(450, 500);
  EXPECT_EQ(levelsOf(FeatherMask(boxes, canvas), canvas), paintedStepByStep(boxes, canvas));
}

rc::Gen<double> fractions() {
  return rc::gen::map(rc::gen::inRange(-500, 1501), [](int n) { return n / 1000.0; });
}

TEST(FeatherMasks, AreWhatFillingEachBoxStepByStepGives) {
  const bool held = rc::check([] {
    const QSize canvas(*rc::gen::inRange(1, 60), *rc::gen::inRange(1, 60));
    const auto boxes = *rc::gen::container<std::vector<MarkupBox>>(
        rc::gen::apply(box, fractions(), fractions(), fractions(), fractions()));
    const FeatherMask mask(boxes, canvas);
    const Levels levels = levelsOf(mask, canvas);
    RC_ASSERT(levels == paintedStepByStep(boxes, canvas));
    for (int y = 0; y < canvas.height(); ++y)
      for (int x = 0; x < canvas.width(); ++x)
        RC_ASSERT(mask.bounds().contains(x, y) || levels[size_t(y)][size_t(x)] == 0);
  });
  EXPECT_TRUE(held);
}

}  // namespace
}  // namespace sorvan::generation
