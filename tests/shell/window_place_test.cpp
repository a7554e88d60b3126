#include "shell/window_place.h"

#include <gtest/gtest.h>

namespace sorvan::shell {
namespace {

constexpr int frame = 28;
const QSize smallest = smallestContents({1024, 680}, frame);
const QRect screen(0, 0, 1920, 1080);

TEST(WindowPlace, AWindowReturnsToWhereItWas) {
  EXPECT_EQ(placeOnScreens({100, 120, 1200, 800}, {screen}, smallest, frame), QRect(100, 120, 1200, 800));
}

TEST(WindowPlace, AWindowOfAScreenThatIsGoneComesToOneThatIsThere) {
  const QRect place = placeOnScreens({4000, 200, 1200, 800}, {screen}, smallest, frame);
  EXPECT_TRUE(screen.contains(place));
  EXPECT_EQ(place.size(), QSize(1200, 800));
}

TEST(WindowPlace, AWindowBetweenTwoScreensGoesToTheOneThatShowsMoreOfIt) {
  const QRect right(1920, 0, 1920, 1080);
  const QRect place = placeOnScreens({1800, 100, 1200, 800}, {screen, right}, smallest, frame);
  EXPECT_EQ(place.left(), 1920);
}

TEST(WindowPlace, ItsTitleNeverLiesAboveTheScreen) {
  EXPECT_EQ(placeOnScreens({100, -300, 1200, 800}, {screen}, smallest, frame).top(), frame);
}

TEST(WindowPlace, ATinyScreenShowsTheUpperLeftCornerOfTheSmallestWindow) {
  const QRect place = placeOnScreens({100, 100, 1440, 900}, {QRect(0, 0, 800, 500)}, smallest, frame);
  EXPECT_EQ(place, QRect(QPoint(0, frame), smallest));
}

TEST(WindowPlace, TheSmallestWindowFitsItsOwnScreenWithItsFrame) {
  const QRect place = placeOnScreens({0, 0, 1440, 900}, {QRect(0, 0, 1024, 680)}, smallest, frame);
  EXPECT_LE(place.top() + place.height(), 680);
  EXPECT_GE(place.top(), frame);
}

TEST(WindowPlace, WithoutAScreenTheWishStays) {
  EXPECT_EQ(placeOnScreens({1, 2, 1200, 800}, {}, smallest, frame), QRect(1, 2, 1200, 800));
}

}  // namespace
}  // namespace sorvan::shell
