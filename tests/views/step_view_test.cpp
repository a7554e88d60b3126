#include "shell/views/step_view.h"

#include <gtest/gtest.h>

#include <QImage>

#include "shell/views/picture_difference.h"
#include "shell/views/sheet_cards.h"
#include "shell/views/sheet_places.h"

namespace sorvan::views {
namespace {

const QSizeF kPane(400, 300);

TEST(StepView, APictureFitsItsPaneAndStandsInTheMiddle) {
  const QRectF place = StepView().placeOf({800, 400}, kPane);
  EXPECT_EQ(place, QRectF(0, 50, 400, 200));
}

TEST(StepView, WhatLiesUnderThePointerStaysThere) {
  const QSizeF picture(1000, 750);
  const QPointF point(100, 60);
  const QRectF before = StepView().placeOf(picture, kPane);
  const StepView zoomed = StepView().zoomedAt(point, 3, picture, kPane);
  const QRectF after = zoomed.placeOf(picture, kPane);
  EXPECT_NEAR((point.x() - before.x()) / before.width(), (point.x() - after.x()) / after.width(), 1e-9);
  EXPECT_NEAR((point.y() - before.y()) / before.height(), (point.y() - after.y()) / after.height(), 1e-9);
}

TEST(StepView, PicturesOfOtherSizesShowTheSamePart) {
  const StepView zoomed = StepView().zoomedAt({300, 200}, 4, {1000, 750}, kPane);
  const QRectF small = zoomed.placeOf({500, 375}, kPane);
  const QRectF large = zoomed.placeOf({4000, 3000}, kPane);
  EXPECT_NEAR(small.x(), large.x(), 1e-9);
  EXPECT_NEAR(small.width(), large.width(), 1e-9);
}

TEST(StepView, ALargePictureAlwaysCoversTheMiddleAndASmallOneStaysThere) {
  StepView view = StepView().zoomedAt({200, 150}, 2, {400, 300}, kPane);
  view = view.pannedBy({10000, -10000}, {400, 300}, kPane);
  EXPECT_EQ(view.placeOf({400, 300}, kPane), QRectF(0, -300, 800, 600));
  EXPECT_EQ(StepView().pannedBy({50, 50}, {400, 300}, kPane), StepView());
}

TEST(StepView, FullSizeShowsOnePixelOnOnePixelOfTheScreen) {
  const QSizeF picture(1600, 1200);
  const StepView full = StepView().atFullSize(picture, kPane, 2);
  EXPECT_NEAR(full.placeOf(picture, kPane).width() * 2, 1600, 1e-9);
  EXPECT_NEAR(full.percent(picture, kPane, 2), 100, 1e-9);
  EXPECT_NEAR(StepView().percent(picture, kPane, 1), 25, 1e-9);
}

QImage filled(int width, int height, QColor color) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(color);
  return image;
}

TEST(PictureDifference, IsTheDistanceOfEachChannelAndTheShareOfPixelsThatDiffer) {
  QImage first = filled(10, 10, QColor(100, 50, 0));
  QImage second = first;
  second.setPixelColor(3, 4, QColor(90, 80, 1));
  const PictureDifference plain = differenceOf(first, second, 1);
  EXPECT_EQ(plain.picture.pixelColor(3, 4), QColor(10, 30, 1));
  EXPECT_EQ(plain.picture.pixelColor(0, 0), QColor(0, 0, 0));
  EXPECT_DOUBLE_EQ(plain.differing, 0.01);
  EXPECT_EQ(differenceOf(first, second, 8).picture.pixelColor(3, 4), QColor(80, 240, 8));
  EXPECT_EQ(differenceOf(first, second, 100).picture.pixelColor(3, 4), QColor(255, 255, 100));
}

TEST(PictureDifference, OfTheSamePictureIsNoneAndAnotherSizeIsScaled) {
  const QImage first = filled(40, 30, Qt::darkCyan);
  EXPECT_DOUBLE_EQ(differenceOf(first, first, 1).differing, 0);
  const PictureDifference scaled = differenceOf(first, filled(20, 15, Qt::darkCyan), 1);
  EXPECT_EQ(scaled.picture.size(), QSize(40, 30));
  EXPECT_DOUBLE_EQ(scaled.differing, 0);
  EXPECT_TRUE(differenceOf(first, {}, 1).picture.isNull());
}

TEST(SheetGrid, HasTwoColumnsForFourPlacesAndThreeOrFourForMore) {
  const QSize view(1100, 700);
  EXPECT_EQ(SheetGrid::of(1, 1.5, view).columns, 1);
  EXPECT_EQ(SheetGrid::of(2, 1.5, view).columns, 2);
  EXPECT_EQ(SheetGrid::of(4, 1.5, view).columns, 2);
  EXPECT_EQ(SheetGrid::of(6, 1.5, view).columns, 3);
  EXPECT_EQ(SheetGrid::of(8, 1.5, view).columns, 4);
  EXPECT_EQ(SheetGrid::of(8, 1.5, {800, 700}).columns, 3);
}

TEST(SheetGrid, APlaceOfASingleRowIsSeenWhole) {
  const SheetGrid grid = SheetGrid::of(1, 0.5, {1100, 700});
  EXPECT_LE(grid.rectOf(0).bottom(), 700);
  EXPECT_EQ(grid.rectOf(0).height(), grid.place.height());
}

TEST(SheetGrid, AllPlacesOfARowAreEquallyHighAndDoNotMeet) {
  const SheetGrid grid = SheetGrid::of(7, 1.5, {1200, 700});
  for (int left = 0; left < 7; ++left)
    for (int right = left + 1; right < 7; ++right)
      EXPECT_FALSE(grid.rectOf(left).intersects(grid.rectOf(right))) << left << " and " << right;
  EXPECT_GE(grid.height, grid.rectOf(6).bottom());
}

TEST(Mosaic, FillsItsAreaWithOneToFourPictures) {
  const QRect area(10, 20, 301, 200);
  for (int pictures = 1; pictures <= 6; ++pictures) {
    const std::vector<QRect> places = mosaicPlaces(area, pictures);
    EXPECT_EQ(std::ssize(places), std::min(pictures, 4));
    QRect all;
    for (const QRect& place : places) {
      EXPECT_TRUE(area.contains(place));
      all |= place;
    }
    EXPECT_EQ(all, area);
  }
  EXPECT_TRUE(mosaicPlaces(area, 0).empty());
}

}  // namespace
}  // namespace sorvan::views
