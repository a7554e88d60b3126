#include "shell/views/scroll_speed.h"

#include <gtest/gtest.h>

namespace sorvan::views {
namespace {

constexpr int kView = 1000;

// Moves of so many pixels, 16 milliseconds apart; true when the last of them counts as fast.
bool run(ScrollSpeed& speed, int pixels, int moves, qint64 from = 0) {
  bool fast = false;
  for (int move = 0; move < moves; ++move) fast = speed.note(pixels, kView, from + 16 * move);
  return fast;
}

TEST(ScrollSpeedTest, ThreeScreensASecondAreNotFast) {
  ScrollSpeed speed;
  EXPECT_FALSE(run(speed, 48, 200));
}

TEST(ScrollSpeedTest, TenScreensASecondAreFastInEitherDirection) {
  ScrollSpeed down;
  EXPECT_TRUE(run(down, 160, 20));
  ScrollSpeed up;
  EXPECT_TRUE(run(up, -160, 20));
}

TEST(ScrollSpeedTest, AJumpAfterARestIsNotFastHoweverFar) {
  ScrollSpeed speed;
  EXPECT_FALSE(speed.note(500000, kView, 0));
  EXPECT_FALSE(speed.note(1000, kView, 1000));
}

TEST(ScrollSpeedTest, WhatSlowsDownIsSlowAgain) {
  ScrollSpeed speed;
  ASSERT_TRUE(run(speed, 160, 40));
  EXPECT_FALSE(run(speed, 10, 60, 40 * 16));
}

}  // namespace
}  // namespace sorvan::views
