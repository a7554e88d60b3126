#include "shell/marks_editor.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace sorvan::shell {
namespace {

using core::MarkupBox;

constexpr QSize picture(100, 50);

struct MarksEditorTest : testing::Test {
  MarksEditor marks{{}, picture};
  // The selected box in pixels.
  QRectF pixels(int index) const {
    const QRectF area = marks.areaOf(index);
    return {area.x() * picture.width(), area.y() * picture.height(), area.width() * picture.width(),
            area.height() * picture.height()};
  }
};

bool isNear(const QRectF& a, const QRectF& b) {
  return std::abs(a.x() - b.x()) < 1e-9 && std::abs(a.y() - b.y()) < 1e-9 && std::abs(a.width() - b.width()) < 1e-9 &&
         std::abs(a.height() - b.height()) < 1e-9;
}

TEST_F(MarksEditorTest, ABoxThatIsDrawnLiesOnWholePixelsAndIsSelected) {
  EXPECT_EQ(marks.add(QRectF(0.104, 0.204, 0.298, 0.402)), 0);
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 30, 20)));
  EXPECT_EQ(marks.selected(), 0);
}

TEST_F(MarksEditorTest, ABoxDrawnBackwardsIsTheSameBox) {
  marks.add(QRectF(QPointF(0.4, 0.6), QPointF(0.1, 0.2)));
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 30, 20)));
}

TEST_F(MarksEditorTest, ABoxThatReachesOutIsCutAtThePicturesEdge) {
  marks.add(QRectF(-1, 0.5, 1.5, 7));
  EXPECT_TRUE(isNear(pixels(0), QRectF(0, 25, 50, 25)));
}

TEST_F(MarksEditorTest, BoxesOfNoSizeOutsideOrNotFiniteAreRefused) {
  constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
  for (const QRectF& area : {QRectF(0.2, 0.2, 0, 0.5), QRectF(0.2, 0.2, 0.5, 0), QRectF(1, 0, 0.5, 0.5),
                             QRectF(-2, 0, 1, 1), QRectF(0, 3, 1, 1), QRectF(nothing, 0, 1, 1)})
    EXPECT_EQ(marks.add(area), -1);
  EXPECT_EQ(marks.count(), 0);
  EXPECT_FALSE(marks.canUndo());
}

TEST_F(MarksEditorTest, TheSmallestBoxIsAPixel) {
  marks.add(QRectF(0.5, 0.5, 1e-7, 1e-7));
  EXPECT_TRUE(isNear(pixels(0), QRectF(50, 25, 1, 1)));
  marks.add(QRectF(0.9999, 0.9999, 1e-4, 1e-4));
  EXPECT_TRUE(isNear(pixels(1), QRectF(99, 49, 1, 1)));
}

TEST_F(MarksEditorTest, ItStartsWithWhatOfItsBoxesLiesInThePicture) {
  const MarksEditor taken({{-0.5, 0, 1, 0.5, QStringLiteral("left")},
                           {0.2, 0.2, 0, 0, QStringLiteral("empty")},
                           {4, 4, 1, 1, QStringLiteral("outside")},
                           {0.5, 0.5, 0.2, 0.2, QStringLiteral("inside")}},
                          picture);
  ASSERT_EQ(taken.count(), 2);
  EXPECT_EQ(taken.boxes()[0].note, QStringLiteral("left"));
  EXPECT_TRUE(isNear(taken.areaOf(0), QRectF(0, 0, 0.5, 0.5)));
  EXPECT_EQ(taken.boxes()[1].note, QStringLiteral("inside"));
}

TEST_F(MarksEditorTest, ArrowsMoveByAPixelAndStopAtTheEdge) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  marks.nudge(0, {1, 0});
  marks.nudge(0, {0, -10});
  EXPECT_TRUE(isNear(pixels(0), QRectF(11, 0, 30, 20)));
  marks.nudge(0, {1000, 1000});
  EXPECT_TRUE(isNear(pixels(0), QRectF(70, 30, 30, 20)));
}

TEST_F(MarksEditorTest, StretchingKeepsAtLeastAPixelAndTheUpperLeftCorner) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  marks.stretch(0, {5, -5});
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 35, 15)));
  marks.stretch(0, {-500, -500});
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 1, 1)));
  marks.stretch(0, {500, 500});
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 90, 40)));
}

TEST_F(MarksEditorTest, MovingKeepsTheSizeAndTheNote) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  marks.setNote(0, QStringLiteral("green"));
  marks.place(0, MarksEditor::movedInside(QRectF(0.95, -3, 0.3, 0.4)));
  EXPECT_TRUE(isNear(pixels(0), QRectF(70, 0, 30, 20)));
  EXPECT_EQ(marks.boxes()[0].note, QStringLiteral("green"));
}

TEST_F(MarksEditorTest, RemovingSelectsTheNextBox) {
  for (int index = 0; index < 3; ++index) marks.add(QRectF(0.1 * index, 0, 0.1, 0.2));
  marks.select(1);
  marks.remove(1);
  EXPECT_EQ(marks.count(), 2);
  EXPECT_EQ(marks.selected(), 1);
  marks.remove(0);
  EXPECT_EQ(marks.selected(), 0);
  marks.remove(0);
  EXPECT_EQ(marks.selected(), -1);
  marks.remove(7);
}

TEST_F(MarksEditorTest, EachStepCanBeTakenBackAndDoneAgain) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  const auto one = marks.boxes();
  marks.add(QRectF(0.5, 0.5, 0.2, 0.2));
  marks.remove(0);
  const auto last = marks.boxes();
  marks.undo();
  marks.undo();
  EXPECT_EQ(marks.boxes(), one);
  marks.undo();
  EXPECT_TRUE(marks.boxes().empty());
  EXPECT_FALSE(marks.canUndo());
  marks.undo();
  for (int step = 0; step < 3; ++step) marks.redo();
  EXPECT_EQ(marks.boxes(), last);
  EXPECT_FALSE(marks.canRedo());
}

TEST_F(MarksEditorTest, WordsTypedInARowAreOneStepBackAndANewStepForgetsTheOtherWay) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  for (const char* text : {"g", "gr", "gre", "green"}) marks.setNote(0, QString::fromLatin1(text));
  for (int step = 0; step < 5; ++step) marks.nudge(0, {1, 0});
  marks.undo();
  EXPECT_TRUE(isNear(pixels(0), QRectF(10, 10, 30, 20)));
  EXPECT_EQ(marks.boxes()[0].note, QStringLiteral("green"));
  marks.undo();
  EXPECT_EQ(marks.boxes()[0].note, QString());
  marks.setNote(0, QStringLiteral("red"));
  EXPECT_FALSE(marks.canRedo());
}

TEST_F(MarksEditorTest, SelectingBetweenTwoRowsPartsThem) {
  marks.add(QRectF(0.1, 0.2, 0.3, 0.4));
  marks.nudge(0, {1, 0});
  marks.select(0);
  marks.nudge(0, {1, 0});
  marks.undo();
  EXPECT_TRUE(isNear(pixels(0), QRectF(11, 10, 30, 20)));
}

TEST_F(MarksEditorTest, AThousandBoxesStayAThousand) {
  for (int index = 0; index < 1000; ++index)
    marks.add(QRectF((index % 50) * 0.02, (index / 50) * 0.05, 0.02, 0.05));
  EXPECT_EQ(marks.count(), 1000);
  marks.setNote(999, QStringLiteral("last"));
  marks.clear();
  EXPECT_EQ(marks.count(), 0);
  marks.undo();
  EXPECT_EQ(marks.count(), 1000);
  EXPECT_EQ(marks.boxes()[999].note, QStringLiteral("last"));
}

RC_GTEST_PROP(MarksEditorProperty, WhateverIsDoneEveryBoxLiesInThePictureOnItsPixels, ()) {
  const QSize size(*rc::gen::inRange(1, 5000), *rc::gen::inRange(1, 5000));
  MarksEditor marks({}, size);
  const auto number = rc::gen::map(rc::gen::inRange(-3000, 4000), [](int value) { return value / 1000.0; });
  for (int step = 0; step < 12; ++step) {
    const QRectF area(*number, *number, *number, *number);
    const int index = *rc::gen::inRange(-1, 6);
    switch (*rc::gen::inRange(0, 7)) {
      case 0:
      case 1:
        marks.add(area);
        break;
      case 2:
        marks.place(index, area);
        break;
      case 3:
        marks.nudge(index, {*rc::gen::inRange(-9000, 9000), *rc::gen::inRange(-9000, 9000)});
        break;
      case 4:
        marks.stretch(index, {*rc::gen::inRange(-9000, 9000), *rc::gen::inRange(-9000, 9000)});
        break;
      case 5:
        marks.remove(index);
        break;
      default:
        *rc::gen::inRange(0, 2) == 0 ? marks.undo() : marks.redo();
    }
    RC_ASSERT(marks.selected() < marks.count());
    for (int box = 0; box < marks.count(); ++box) {
      const QRectF place = marks.areaOf(box);
      RC_ASSERT(place.width() > 0 && place.height() > 0);
      RC_ASSERT(place.left() >= 0 && place.top() >= 0 && place.right() <= 1 + 1e-12 && place.bottom() <= 1 + 1e-12);
      for (const auto& [fraction, side] : {std::pair(place.left(), size.width()), std::pair(place.top(), size.height()),
                                           std::pair(place.width(), size.width())})
        RC_ASSERT(std::abs(fraction * side - std::round(fraction * side)) < 1e-6);
    }
  }
}

}  // namespace
}  // namespace sorvan::shell
