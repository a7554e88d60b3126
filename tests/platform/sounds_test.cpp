#include "platform/sounds.h"

#include <gtest/gtest.h>

#include <numbers>

#include "support/failure_of.h"
#include "support/made_clips.h"
#include "support/temporary_folder.h"

namespace sorvan::platform {
namespace {

using namespace sorvan::test;

const QString unreadable = QStringLiteral("This sound could not be read.");

std::vector<float> samplesOf(const QString& path, const SoundRange& range) {
  std::vector<float> all;
  readSound(path, range, [&](std::span<const float> piece) { all.insert(all.end(), piece.begin(), piece.end()); });
  return all;
}

float peak(std::span<const float> samples) {
  float highest = 0;
  for (const float sample : samples) highest = std::max(highest, std::abs(sample));
  return highest;
}

/// The loudness of a steady tone, whose peak is the root of two times as high.
double loudness(std::span<const float> samples) {
  double sum = 0;
  for (const float sample : samples) sum += double(sample) * double(sample);
  return std::sqrt(sum / double(samples.size()));
}

class Sounds : public testing::Test {
 protected:
  /// A ramp from -0.9 to 0.9, so that every sample tells its place.
  QString ramp(int samples) {
    const QString path = folder / QStringLiteral("ramp.wav");
    makeWav(path, 8000, samples, [=](int index) { return -0.9 + 1.8 * index / samples; });
    return path;
  }
  QString m4a(double seconds, int channels = 2) {
    const QString path = folder / QStringLiteral("tone.m4a");
    makeM4a(path, seconds, channels);
    return path;
  }
  TemporaryFolder folder;
};

TEST_F(Sounds, TellTheirLengthRateAndChannels) {
  const SoundFacts wav = probeSound(ramp(4000));
  EXPECT_NEAR(wav.duration.value(), 0.5, 1e-6);
  EXPECT_EQ(wav.samplesPerSecond, 8000);
  EXPECT_EQ(wav.channels, 1);
  const SoundFacts stereo = probeSound(m4a(2));
  EXPECT_NEAR(stereo.duration.value(), 2, 0.05);
  EXPECT_EQ(stereo.channels, 2);
}

TEST_F(Sounds, WithoutAHeaderTellTheirLengthByTheirPackets) {
  const QString path = folder / QStringLiteral("tone.aac");
  makeAac(path, 8);
  EXPECT_NEAR(probeSound(path).duration.value(), 8, 0.1);
}

TEST_F(Sounds, AreReadSampleBySample) {
  const auto samples = samplesOf(ramp(4000), {.samplesPerSecond = 8000});
  ASSERT_EQ(samples.size(), 4000U);
  EXPECT_NEAR(samples[0], -0.9, 0.001);
  EXPECT_NEAR(samples[2000], 0, 0.001);
}

TEST_F(Sounds, AreReadFromAPlaceAndForALengthExactly) {
  const auto samples = samplesOf(ramp(40'000), {.fromSeconds = 3, .lengthSeconds = 0.5, .samplesPerSecond = 8000});
  ASSERT_EQ(samples.size(), 4000U);
  EXPECT_NEAR(samples[0], -0.9 + 1.8 * 24'000 / 40'000, 0.001);
  EXPECT_NEAR(samples[3999], -0.9 + 1.8 * 27'999 / 40'000, 0.001);
}

TEST_F(Sounds, CompressedAreReadFromAPlaceInPhase) {
  const auto samples = samplesOf(m4a(5, 1), {.fromSeconds = 2.5, .lengthSeconds = 0.25, .samplesPerSecond = 48'000});
  ASSERT_EQ(samples.size(), 12'000U);
  double difference = 0;
  for (size_t index = 0; index < samples.size(); ++index) {
    const double time = 2.5 + double(index) / 48'000;
    difference =
        std::max(difference, std::abs(double(samples[index]) - 0.5 * std::sin(2 * std::numbers::pi * 440 * time)));
  }
  EXPECT_LT(difference, 0.05);
}

TEST_F(Sounds, MixedDownStayAsLoudAsTheyWere) {
  const auto samples = samplesOf(m4a(1, 2), {.samplesPerSecond = 48'000, .channels = 1});
  EXPECT_NEAR(peak(samples), 0.5, 0.03);
}

TEST_F(Sounds, ChangeTheirRateAndKeepTheirLength) {
  EXPECT_NEAR(double(samplesOf(ramp(8000), {.samplesPerSecond = 48'000}).size()), 48'000, 5);
  EXPECT_NEAR(double(samplesOf(m4a(1), {.samplesPerSecond = 8000}).size()), 8000, 300);
}

TEST_F(Sounds, OfAClipComeFromItsFirstSoundTrack) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  makeClip(clip, {.sound = true});
  EXPECT_NEAR(loudness(samplesOf(clip, {})), 0.354, 0.02);
  makeClip(clip, {.sound = false});
  EXPECT_EQ(failureOf([&] { samplesOf(clip, {}); }), unreadable);
}

TEST_F(Sounds, WithoutASampleGiveNone) { EXPECT_TRUE(samplesOf(ramp(0), {}).empty()); }

TEST_F(Sounds, ThatAreGarbageCannotBeRead) {
  const QString garbage = folder.write(QStringLiteral("garbage.wav"), QByteArray("0123456789").repeated(500));
  EXPECT_EQ(failureOf([&] { samplesOf(garbage, {}); }), unreadable);
  EXPECT_EQ(failureOf([&] { probeSound(garbage); }), unreadable);
}

TEST_F(Sounds, CutShortGiveWhatIsLeft) {
  ramp(4000);
  const QByteArray bytes = folder.read(QStringLiteral("ramp.wav"));
  const QString cut = folder.write(QStringLiteral("cut.wav"), bytes.left(44 + 2000));
  EXPECT_EQ(samplesOf(cut, {.samplesPerSecond = 8000}).size(), 1000U);
}

TEST_F(Sounds, EndWhenTheTakerThrows) {
  int calls = 0;
  const QString path = ramp(40'000);
  EXPECT_THROW(readSound(path, {},
                         [&](std::span<const float>) {
                           ++calls;
                           throw std::runtime_error("full");
                         }),
               std::runtime_error);
  EXPECT_EQ(calls, 1);
}

TEST_F(Sounds, StopWhenAsked) {
  std::stop_source source;
  const QString path = ramp(400'000);
  EXPECT_THROW(readSound(
                   path, {}, [&](std::span<const float>) { source.request_stop(); }, source.get_token()),
               Cancelled);
}

TEST_F(Sounds, TakenOutOfAClipAreCopied) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  const QString track = folder / QStringLiteral("sound.m4a");
  makeClip(clip, {.frames = 20, .sound = true});
  writeSoundTrack(clip, track);
  EXPECT_NEAR(probeSound(track).duration.value(), 2, 0.05);
  EXPECT_NEAR(loudness(samplesOf(track, {})), 0.354, 0.02);
}

TEST_F(Sounds, TakenOutOfAnotherKindOfFileAreEncoded) {
  const QString track = folder / QStringLiteral("sound.m4a");
  writeSoundTrack(ramp(16'000), track);
  EXPECT_NEAR(probeSound(track).duration.value(), 2, 0.05);
}

TEST_F(Sounds, CannotBeTakenOutOfASilentClip) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  const QString track = folder / QStringLiteral("sound.m4a");
  makeClip(clip, {});
  EXPECT_EQ(failureOf([&] { writeSoundTrack(clip, track); }), QStringLiteral("This clip has no sound."));
  EXPECT_FALSE(folder.files().contains(QStringLiteral("sound.m4a")));
}

TEST_F(Sounds, ThatStopHalfwayLeaveNoFile) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  makeClip(clip, {.frames = 20, .sound = true});
  std::stop_source source;
  source.request_stop();
  EXPECT_THROW(writeSoundTrack(clip, folder / QStringLiteral("sound.m4a"), source.get_token()), Cancelled);
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("clip.mp4")});
}

TEST_F(Sounds, ThatCannotBeWrittenFail) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  makeClip(clip, {.sound = true});
  EXPECT_EQ(failureOf([&] { writeSoundTrack(clip, folder / QStringLiteral("absent/sound.m4a")); }),
            QStringLiteral("This sound could not be written."));
}

}  // namespace
}  // namespace sorvan::platform
