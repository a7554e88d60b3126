#include "core/waveform.h"

#include <gtest/gtest.h>

#include "base/sorvan_error.h"
#include "support/made_clips.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

using namespace sorvan::test;

std::vector<std::int16_t> constant(size_t count, std::int16_t value) { return std::vector<std::int16_t>(count, value); }

TEST(WaveformLevels, AreNeverMoreThanAskedFor) {
  EXPECT_EQ(waveformLevels(constant(16'000, 100), 120).size(), 120U);
  EXPECT_EQ(waveformLevels(constant(120, 100), 120).size(), 120U);
  EXPECT_EQ(waveformLevels(constant(239, 100), 120).size(), 120U);
}

TEST(WaveformLevels, OfFewSamplesAreAsManyAsThere) { EXPECT_EQ(waveformLevels(constant(7, 100), 120).size(), 7U); }

TEST(WaveformLevels, AreThePeaksOfTheirBucketsAgainstTheHighest) {
  auto samples = constant(400, 0);
  samples[50] = -20'000;
  samples[150] = 10'000;
  samples[399] = 5'000;
  const auto levels = waveformLevels(samples, 4);
  ASSERT_EQ(levels.size(), 4U);
  EXPECT_FLOAT_EQ(levels[0], 1);
  EXPECT_FLOAT_EQ(levels[1], 0.5);
  EXPECT_FLOAT_EQ(levels[2], 0);
  EXPECT_FLOAT_EQ(levels[3], 0.25);
}

TEST(WaveformLevels, OfTheLowestSampleAreFullScale) {
  EXPECT_FLOAT_EQ(waveformLevels(constant(10, -32'768), 10)[0], 1);
}

TEST(WaveformLevels, OfNearSilenceStayLow) {
  const auto levels = waveformLevels(constant(100, 328), 10);  // a hundredth of full scale
  EXPECT_NEAR(levels[0], 0.2, 0.001);
}

TEST(WaveformLevels, OfAFileFollowItsLoudness) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("sound.wav");
  makeWav(path, 8000, 16'000, [](int index) { return index < 8000 ? 0.2 : 0.8; });
  const auto levels = waveformLevels(path, 120);
  ASSERT_EQ(levels.size(), 120U);
  EXPECT_NEAR(levels[10], 0.25, 0.01);
  EXPECT_NEAR(levels[100], 1, 0.01);
}

TEST(WaveformLevels, OfALongSoundEndAfterTenMinutes) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("long.wav");
  constexpr int tenMinutes = 600 * 1000;
  makeWav(path, 1000, tenMinutes + 60'000, [](int index) { return index < tenMinutes - 10 ? 0.1 : 0.9; });
  const auto levels = waveformLevels(path, 120);
  ASSERT_EQ(levels.size(), 120U);
  EXPECT_NEAR(levels[118], 0.11, 0.03);
}

TEST(WaveformLevels, OfAnEmptySoundFail) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("empty.wav");
  makeWav(path, 8000, 0, [](int) { return 0; });
  try {
    waveformLevels(path, 120);
    FAIL();
  } catch (const SorvanError& error) {
    EXPECT_EQ(error.message(), QStringLiteral("This sound is empty."));
  }
}

TEST(WaveformPictures, OfSilenceHaveBarsOfTheSmallestHeight) {
  const std::vector<float> silence(120, 0.0F);
  const QImage picture = waveformPicture(silence, {700, 420});
  const QColor ground(22, 23, 28);
  EXPECT_EQ(picture.pixelColor(0, 0), ground);
  const int x = int(28 + (700.0 - 56) / 120 * 0.5);
  EXPECT_NE(picture.pixelColor(x, 210), ground);
  EXPECT_NE(picture.pixelColor(x, 209), ground);
  EXPECT_EQ(picture.pixelColor(x, 206), ground);
  EXPECT_EQ(picture.pixelColor(x, 213), ground);
}

TEST(WaveformPictures, RunFromRoseToBlueAndKeepTheirMargin) {
  const std::vector<float> loud(10, 1.0F);
  const QImage picture = waveformPicture(loud, {700, 420});
  const double step = 644.0 / 10;
  EXPECT_EQ(picture.pixelColor(int(28 + step * 0.5), 210), QColor(243, 93, 137));
  EXPECT_EQ(picture.pixelColor(int(28 + step * 9.5), 210), QColor(139, 124, 246));
  EXPECT_EQ(picture.pixelColor(int(28 + step * 0.5), 27), QColor(22, 23, 28));
  EXPECT_NE(picture.pixelColor(int(28 + step * 0.5), 29), QColor(22, 23, 28));
}

TEST(WaveformPictures, OfOneLevelAreRose) {
  const std::vector<float> one{1.0F};
  EXPECT_EQ(waveformPicture(one, {700, 420}).pixelColor(350, 210), QColor(243, 93, 137));
}

}  // namespace
}  // namespace sorvan::core
