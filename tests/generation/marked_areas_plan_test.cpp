#include "generation/marked_areas_plan.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>

#include "core/image_format.h"
#include "generation/marked_areas_run.h"
#include "generation/request_builders.h"

namespace sorvan::generation {
namespace {

using test::box;

const QString square = QStringLiteral("1024x1024");

MarkedPatch patch(const QRect& rect, const QString& size) {
  return {rect.x(), rect.y(), rect.width(), rect.height(), size};
}

TEST(MarkedPatches, OfALargePortraitMarkedInOneCornerAreSquaresOf512) {
  EXPECT_EQ(planPatch({box(0, 0, 0.1, 0.05)}, {2000, 3000}, {square}), patch({0, 0, 512, 512}, square));
  // The marks' longer side is 256 exactly.
  EXPECT_EQ(planPatch({box(0.872, 0.9, 0.128, 0.05)}, {2000, 3000}, {square}), patch({1488, 2488, 512, 512}, square));
}

TEST(MarkedPatches, AreTwiceAsLongAsTheMarksUntilTheShorterSide) {
  EXPECT_EQ(planPatch({box(0.4, 0.4, 0.2, 0.1)}, {2000, 3000}, {square}), patch({600, 950, 800, 800}, square));
  EXPECT_EQ(planPatch({box(0.1, 0.4, 0.8, 0.1)}, {2000, 3000}, {square}), patch({0, 350, 2000, 2000}, square));
}

TEST(MarkedPatches, OfSmallPicturesTakeTheWholeShorterSide) {
  EXPECT_EQ(planPatch({box(0.5, 0.5, 0.1, 0.1)}, {600, 512}, {square}), patch({74, 0, 512, 512}, square));
  EXPECT_EQ(planPatch({box(0.5, 0.5, 0.1, 0.1)}, {100, 80}, {square}), patch({15, 0, 80, 80}, square));
  EXPECT_EQ(planPatch({box(0.5, 0.5, 0.01, 0.01)}, {600, 513}, {square})->rect().size(), QSize(512, 512));
}

TEST(MarkedPatches, TooLongForASquareAreTheLargestOtherPieceThatHoldsThem) {
  const QStringList sizes{square, QStringLiteral("1024x1536"), QStringLiteral("1536x1024"), QStringLiteral("1536x864")};
  EXPECT_EQ(planPatch({box(0.1, 0.3, 0.8, 0.1)}, {3000, 2000}, sizes),
            patch({0, 0, 3000, 2000}, QStringLiteral("1536x1024")));
  // 16:9 holds 1,920 of 1,921 columns, and the marks need all of them.
  EXPECT_FALSE(planPatch({box(0, 0, 1, 0.5)}, {1921, 1080}, {QStringLiteral("1536x864")}));
}

TEST(MarkedPatches, FloorProductsThatAWholeNumberMissesInBinary) {
  // 1920 / (1536 / 864) is 1080 but for the last bit.
  EXPECT_EQ(planPatch({box(0, 0.1, 1, 0.1)}, {1920, 1200}, {QStringLiteral("1536x864")}),
            patch({0, 0, 1920, 1080}, QStringLiteral("1536x864")));
}

TEST(MarkedPatches, OfEqualAreaAreTheFirst) {
  const QStringList sizes{QStringLiteral("30x20"), QStringLiteral("1536x1024")};
  EXPECT_EQ(planPatch({box(0, 0, 1, 0.1)}, {3000, 2000}, sizes)->size, QStringLiteral("30x20"));
}

TEST(MarkedPatches, DoNotComeFromSizesThatAreNone) {
  for (const char* size : {"", "x", "1024", "auto", "0x5", "-3x2", "1x2x3", "ax2", "nanx1", "infx1", "1e400x1"})
    EXPECT_FALSE(planPatch({box(0, 0, 0.5, 0.5)}, {300, 200}, {QString::fromLatin1(size)})) << size;
  EXPECT_FALSE(planPatch({box(0, 0, 0.5, 0.5)}, {300, 200}, {}));
}

TEST(MarkedPatches, NeedMarksInThePicture) {
  EXPECT_FALSE(planPatch({}, {300, 200}, {square}));
  EXPECT_FALSE(planPatch({box(0, 0, 1, 1)}, {0, 200}, {square}));
  EXPECT_FALSE(planPatch({box(1.5, 0, 0.5, 0.5)}, {300, 200}, {square}));
  EXPECT_FALSE(planPatch({box(-2, -2, 1, 1)}, {300, 200}, {square}));
  EXPECT_FALSE(planPatch({box(0.5, 0.5, 0, 0)}, {300, 200}, {square}));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(planPatch({box(nan, 0, 0.5, 0.5)}, {300, 200}, {square}));
  EXPECT_FALSE(planPatch({box(0, 0, std::numeric_limits<double>::infinity(), 0.5)}, {300, 200}, {square}));
}

TEST(MarkedPatches, HoldBoxesThatReachOutOfThePictureAsFarAsTheyAreInIt) {
  EXPECT_EQ(planPatch({box(-1, -1, 1.1, 1.1)}, {2000, 2000}, {square}), patch({0, 0, 512, 512}, square));
}

QStringList allSizes() {
  QStringList sizes;
  for (const ImageFormat& format : ImageFormat::all()) sizes << format.size;
  return sizes;
}

rc::Gen<double> fractions() {
  return rc::gen::map(rc::gen::inRange(-2000, 12001), [](int n) { return n / 10000.0; });
}

rc::Gen<std::vector<MarkupBox>> someBoxes() {
  return rc::gen::container<std::vector<MarkupBox>>(
      rc::gen::apply(box, fractions(), fractions(), fractions(), fractions()));
}

TEST(MarkedPatches, LieInThePictureAndHoldEveryMarkToAPixel) {
  const bool held = rc::check([] {
    const QSize picture(*rc::gen::inRange(1, 6000), *rc::gen::inRange(1, 6000));
    const auto boxes = *someBoxes();
    const auto planned = planPatch(boxes, picture, allSizes());
    if (!planned) return;
    RC_ASSERT(QRect(QPoint(), picture).contains(planned->rect()));
    for (const MarkupBox& one : boxes) {
      const QRectF marks = pixelsOf(one, picture)->intersected(QRectF(QPointF(), picture));
      if (marks.isEmpty()) continue;
      RC_ASSERT(QRectF(planned->rect()).adjusted(-1, -1, 1, 1).contains(marks));
    }
  });
  EXPECT_TRUE(held);
}

TEST(MarkedPatches, KeepEveryBoxOnThePixelsItWasDrawnOn) {
  const bool held = rc::check([] {
    const QSize picture(*rc::gen::inRange(1, 6000), *rc::gen::inRange(1, 6000));
    const auto boxes = *someBoxes();
    const auto planned = planPatch(boxes, picture, allSizes());
    if (!planned) return;
    const auto moved = boxesInPatch(boxes, picture, planned->rect());
    for (size_t i = 0; i < boxes.size(); ++i) {
      const QRect inPatch = touchedPixels(*pixelsOf(moved[i], planned->rect().size()), planned->rect().size());
      const QRect inPicture = touchedPixels(*pixelsOf(boxes[i], picture), picture) & planned->rect();
      if (inPicture.isEmpty()) continue;
      RC_ASSERT(inPatch.translated(planned->rect().topLeft()) == inPicture);
    }
  });
  EXPECT_TRUE(held);
}

TEST(BoxesOnThePixelGrid, TouchTheSamePixelsWhereArithmeticMissesAnEdgeByABit) {
  // (0.1 + 0.2) * 100 is 30.000000000000004.
  EXPECT_EQ(touchedPixels(*pixelsOf(box(0.1, 0.1, 0.2, 0.2), {100, 100}), {100, 100}), QRect(10, 10, 20, 20));
  EXPECT_EQ(touchedPixels(QRectF(1.2, 1.2, 1.0, 1.0), {100, 100}), QRect(1, 1, 2, 2));
  EXPECT_TRUE(touchedPixels(QRectF(200, 0, 5, 5), {100, 100}).isEmpty());
  EXPECT_EQ(touchedPixels(QRectF(-1e300, -1e300, 2e300, 2e300), {100, 100}), QRect(0, 0, 100, 100));
}

TEST(MarkedRoutes, TakeAPatchOnlyWhereTheResultIsKeptToTheMarks) {
  GenerationRequest request;
  request.markup = {box(0, 0, 0.1, 0.1)};
  EXPECT_TRUE(chosenRoute(request, {2000, 2000}, {square}).patch);
  request.confineToMarks = true;
  EXPECT_TRUE(chosenRoute(request, {2000, 2000}, {square}).patch);
  request.confineToMarks = false;
  EXPECT_FALSE(chosenRoute(request, {2000, 2000}, {square}).patch);
  EXPECT_EQ(chosenRoute(request, {2000, 2000}, {square}).target(), QRect(0, 0, 2000, 2000));
}

TEST(MarkedRoutes, ReadBackAsTheyWereNoted) {
  const MarkedRoute whole{300, 200, std::nullopt};
  const MarkedRoute part{300, 200, patch({10, 20, 100, 150}, square)};
  EXPECT_EQ(decodedRoute(encodedRoute(whole)), whole);
  EXPECT_EQ(decodedRoute(encodedRoute(part)), part);
}

TEST(MarkedRoutes, ThatAreDamagedOrPointOutOfTheirPictureAreNone) {
  for (const char* note :
       {"", "{}", "{\"rect\":1}", "[]", "{\"width\":0,\"height\":5}",
        R"({"width":10,"height":10,"patch":{"x":5,"y":0,"width":6,"height":2,"size":"a"}})",
        R"({"width":10,"height":10,"patch":{"x":-1,"y":0,"width":6,"height":2,"size":"a"}})",
        R"({"width":10,"height":10,"patch":{"x":1,"y":0,"width":0,"height":2,"size":"a"}})",
        R"({"width":9,"height":9,"patch":{"x":9,"y":9,"width":2147483647,"height":2147483647,"size":""}})"})
    EXPECT_FALSE(decodedRoute(note)) << note;
}

}  // namespace
}  // namespace sorvan::generation
