#include "generation/sound_outputs.h"

#include <gtest/gtest.h>

#include "generation/test_media.h"
#include "support/temporary_folder.h"

namespace sorvan::generation {
namespace {

TEST(SoundLevels, OfFilesAreTheirGreatestSample) {
  sorvan::test::TemporaryFolder folder;
  const QString tone = folder.write(QStringLiteral("tone.wav"), test::wavBytes(0.5));
  const QString silence = folder.write(QStringLiteral("silence.wav"), test::wavBytes(0));
  EXPECT_NEAR(peakDecibels(tone).value_or(0), -6.02, 0.2);
  EXPECT_LT(peakDecibels(silence).value_or(0), silenceDecibels);
  EXPECT_FALSE(peakDecibels(folder / QStringLiteral("absent.wav")));
  EXPECT_FALSE(peakDecibels(folder.write(QStringLiteral("text.wav"), "no sound")));
}

}  // namespace
}  // namespace sorvan::generation
