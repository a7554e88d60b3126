#include "media/player.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "media/numbered_clip.h"
#include "media/scripted_sound.h"
#include "support/made_clips.h"
#include "support/temporary_folder.h"

namespace sorvan::media {
namespace {
using test::ScriptedSound;

class PlayerTest : public testing::Test {
 protected:
  PlayerPorts ports() {
    return {[this] { return now; }, [this] { return std::make_unique<ScriptedSound>(tape); }};
  }
  QString file(const QString& name) const { return folder / name; }
  QString clip(int frames, bool sound) const {
    const QString path = file(QStringLiteral("clip.mp4"));
    test::makeNumberedClip(path, frames, sound);
    return path;
  }
  void open(const QString& path) {
    player.open(path);
    ASSERT_TRUE(QTest::qWaitFor([this] { return player.state() != PlayerState::opening; }, 10'000));
  }
  // Everything that this moment needs is decoded: from here on the clock alone decides.
  void settle() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return player.isReady(); }, 10'000)) << player.position();
  }
  // What is shown at that moment of the clock, however many frames lie between.
  void passTo(double seconds) {
    now = seconds;
    catchUp();
  }
  void catchUp() {
    for (QImage before; player.advance(), before.cacheKey() != player.frame().cacheKey();) {
      before = player.frame();
      if (player.state() == PlayerState::ready && player.isPlaying()) decoded();
    }
  }
  // Like `settle`, but a player that waits for its device may go on waiting.
  void decoded() {
    std::ignore = QTest::qWaitFor([this] { return player.isReady(); }, 200);
  }
  int shown() const { return test::numberOn(player.frame()); }

  test::TemporaryFolder folder;
  double now = 100;
  std::shared_ptr<ScriptedSound::Tape> tape = std::make_shared<ScriptedSound::Tape>();
  Player player{ports()};
};

TEST_F(PlayerTest, OpensWithTheFirstPictureAndStandsStill) {
  open(clip(50, true));
  EXPECT_EQ(player.state(), PlayerState::ready);
  EXPECT_EQ(shown(), 0);
  EXPECT_NEAR(player.duration(), 2.0, 0.1);
  EXPECT_EQ(player.facts().framesPerSecond, 25);
  passTo(now + 1);
  EXPECT_EQ(shown(), 0);
  EXPECT_EQ(player.position(), 0);
  EXPECT_FALSE(tape->running);
}

TEST_F(PlayerTest, ASilentClipFollowsTheClock) {
  open(clip(50, false));
  player.play();
  settle();
  const double start = now;
  for (const double second : {0.041, 0.2, 0.5, 0.81}) {
    settle();
    passTo(start + second);
    EXPECT_EQ(shown(), int(second * 25)) << second;
    EXPECT_NEAR(player.position(), second, 1e-9);
  }
  EXPECT_EQ(tape->starts, 0);
}

TEST_F(PlayerTest, ThePictureStandsUntilSoundIsHeardAndThenFollowsIt) {
  open(clip(75, true));
  player.play();
  settle();
  ASSERT_TRUE(tape->running);
  passTo(now + 0.3);  // the clock goes on, the device has not begun
  EXPECT_EQ(shown(), 0);
  tape->take(48'000);
  passTo(now + 0.1);
  EXPECT_EQ(shown(), 0);
  tape->heard = 0.5;
  catchUp();
  EXPECT_EQ(shown(), 12);
}

TEST_F(PlayerTest, SamplesThatAreMissingHoldThePictureToo) {
  const QString path = clip(250, true);
  open(path);
  player.play();
  settle();
  tape->take(48'000 * 10);  // far more than is decoded: silence stands in for the rest
  tape->heard = 9.5;
  player.advance();
  EXPECT_LT(player.position(), 3.0);
  EXPECT_GT(player.position(), 1.0);
}

// A device whose clock is three in a thousand fast takes its samples in uneven pieces, for a minute.
TEST_F(PlayerTest, PictureAndSoundStayWithinFortyMillisecondsForAMinute) {
  constexpr int seconds = 62;
  constexpr double drift = 1.003;
  constexpr double waiting = 0.08;  // seconds of samples that the device holds
  open(clip(seconds * 25, true));
  player.play();
  settle();
  std::vector<double> pictureAt(seconds, -1);
  std::vector<double> soundAt(seconds, -1);
  const double start = now;
  int step = 0;
  while (player.isPlaying() && step < 70 * 200) {
    if (step++ % 16 == 0) settle();
    now = start + step * 0.005;
    const double heard = step * 0.005 * drift - waiting;
    const auto wanted = size_t((heard + waiting) * 48'000);
    while (tape->running && tape->samples.size() < wanted) tape->take(step % 3 == 0 ? 1024 : 1536);
    if (heard > 0) tape->heard = heard;
    player.advance();
    const int number = shown();
    if (number % 25 == 0 && pictureAt[size_t(number / 25)] < 0) pictureAt[size_t(number / 25)] = now - start;
  }
  for (size_t index = 0, second = 0; index < tape->samples.size() && second < soundAt.size(); ++index) {
    if (std::abs(tape->samples[index]) < 0.3f) continue;
    soundAt[second++] = (double(index) / 48'000 + waiting) / drift;
    index += 24'000;
  }
  double worst = 0;
  for (size_t second = 1; second <= 60; ++second) {
    ASSERT_GT(pictureAt[second], 0) << second;
    ASSERT_GT(soundAt[second], 0) << second;
    worst = std::max(worst, std::abs(pictureAt[second] - soundAt[second]));
  }
  RecordProperty("worstMilliseconds", int(worst * 1000));
  EXPECT_LE(worst, 0.040);
}

TEST_F(PlayerTest, ADeviceThatIsLostLeavesThePictureToTheClock) {
  open(clip(75, true));
  player.play();
  settle();
  tape->take(48'000);
  tape->heard = 0.4;
  player.advance();
  tape->state = platform::SoundOutput::State::absent;
  player.advance();
  settle();
  passTo(now + 0.4);
  EXPECT_EQ(shown(), 20);
}

TEST_F(PlayerTest, WithoutADeviceASoundClipPlaysSilently) {
  tape->state = platform::SoundOutput::State::absent;
  open(clip(75, true));
  player.play();
  settle();
  passTo(now + 1.0);
  EXPECT_EQ(shown(), 25);
  EXPECT_EQ(tape->starts, 0);
}

TEST_F(PlayerTest, ADeviceThatDoesNotAnswerIsWaitedForOneSecondOnly) {
  tape->state = platform::SoundOutput::State::opening;
  open(clip(75, true));
  player.play();
  ASSERT_TRUE(QTest::qWaitFor([this] { return player.state() == PlayerState::ready; }));
  passTo(now + 0.9);
  EXPECT_FALSE(player.isReady());
  // The samples may be a moment later than the picture.
  now += 0.2;
  settle();
  const double start = now;
  passTo(start + 0.2);
  EXPECT_EQ(shown(), 5);
}

TEST_F(PlayerTest, SeekingShowsTheFrameOfThatMomentAlsoWhilePaused) {
  open(clip(100, true));
  player.seek(2.5);
  settle();
  EXPECT_EQ(shown(), 62);
  EXPECT_EQ(player.position(), 2.5);
  player.seek(0.7);
  player.seek(3.0);
  settle();
  EXPECT_EQ(shown(), 75);
  player.seek(-4);
  settle();
  EXPECT_EQ(shown(), 0);
}

TEST_F(PlayerTest, SeekingWhilePlayingTakesTheSoundAlong) {
  open(clip(150, true));
  player.play();
  settle();
  tape->take(9600);
  tape->heard = 0.2;
  player.advance();
  player.seek(3.96);
  settle();
  EXPECT_EQ(shown(), 99);
  EXPECT_EQ(tape->starts, 2);
  tape->take(4800);
  const auto loud = std::find_if(tape->samples.begin(), tape->samples.end(), [](float s) { return std::abs(s) > 0.3f; });
  EXPECT_NEAR(double(loud - tape->samples.begin()) / 48'000, 0.04, 0.003);
}

TEST_F(PlayerTest, FramesStepOneByOneInBothDirections) {
  open(clip(50, false));
  player.seek(1.0);
  settle();
  ASSERT_EQ(shown(), 25);
  player.stepFrames(1);
  settle();
  EXPECT_EQ(shown(), 26);
  player.stepFrames(1);
  settle();
  EXPECT_EQ(shown(), 27);
  EXPECT_NEAR(player.position(), 27 / 25.0, 1e-3);
  player.stepFrames(-1);
  settle();
  EXPECT_EQ(shown(), 26);
  player.stepFrames(-1);
  settle();
  EXPECT_EQ(shown(), 25);
  player.stepFrames(10);
  settle();
  EXPECT_EQ(shown(), 35);
}

TEST_F(PlayerTest, TheFirstFrameHasNoneBeforeItAndTheLastNoneAfter) {
  open(clip(10, false));
  player.stepFrames(-1);
  settle();
  EXPECT_EQ(shown(), 0);
  player.seek(10);
  settle();
  EXPECT_EQ(shown(), 9);
  player.stepFrames(1);
  settle();
  EXPECT_EQ(shown(), 9);
}

TEST_F(PlayerTest, ItStopsAtTheEndAndBeginsAgainWhenPlayed) {
  open(clip(25, false));
  QSignalSpy ended(&player, &Player::ended);
  player.play();
  settle();
  passTo(now + 1.5);
  settle();
  EXPECT_EQ(ended.count(), 1);
  EXPECT_FALSE(player.isPlaying());
  EXPECT_EQ(shown(), 24);
  EXPECT_NEAR(player.position(), player.duration(), 1e-9);
  player.play();
  settle();
  EXPECT_EQ(shown(), 0);
  EXPECT_TRUE(player.isPlaying());
}

TEST_F(PlayerTest, ALoopGoesOnFromTheStart) {
  open(clip(25, false));
  player.setLooping(true);
  player.play();
  settle();
  passTo(now + 1.2);
  EXPECT_TRUE(player.isPlaying());
  settle();
  EXPECT_EQ(shown(), 0);
  passTo(now + 0.2);
  EXPECT_EQ(shown(), 5);
}

TEST_F(PlayerTest, MutedItNeedsNoDeviceAndUnmutedItFetchesTheSound) {
  player.setMuted(true);
  open(clip(75, true));
  player.play();
  settle();
  passTo(now + 0.4);
  EXPECT_EQ(tape->starts, 0);
  EXPECT_EQ(shown(), 10);
  player.setMuted(false);
  settle();
  EXPECT_EQ(tape->starts, 1);
  EXPECT_NEAR(player.position(), 0.4, 1e-6);
}

TEST_F(PlayerTest, VolumeScalesTheSamplesAndMuteSilencesThem) {
  test::makeWav(file(QStringLiteral("one.wav")), 48'000, 96'000, [](int) { return 0.5; });
  open(file(QStringLiteral("one.wav")));
  EXPECT_EQ(player.facts().hasPicture, false);
  player.setVolume(0.5);
  player.play();
  settle();
  tape->take(2000);
  // One channel is given to both with as much power as it had alone.
  EXPECT_NEAR(tape->samples[1000], 0.5f * 0.7071f * 0.25f, 0.005f);
  player.setMuted(true);
  tape->take(2000);
  EXPECT_EQ(tape->samples[3000], 0.0f);
}

TEST_F(PlayerTest, ASoundPlaysToItsEnd) {
  test::makeWav(file(QStringLiteral("two.wav")), 44'100, 88'200, [](int) { return 0.2; });
  open(file(QStringLiteral("two.wav")));
  EXPECT_NEAR(player.duration(), 2.0, 1e-3);
  QSignalSpy ended(&player, &Player::ended);
  player.play();
  settle();
  for (int piece = 0; piece < 11 && tape->running; ++piece) {
    settle();
    tape->take(9600);
    tape->heard += 0.2;
    player.advance();
  }
  EXPECT_EQ(ended.count(), 1);
}

TEST_F(PlayerTest, AMissingFileSaysSo) {
  open(file(QStringLiteral("none.mp4")));
  EXPECT_EQ(player.state(), PlayerState::failed);
  EXPECT_EQ(player.problem(), QStringLiteral("The original file is missing."));
  player.play();
  EXPECT_FALSE(player.isPlaying());
}

TEST_F(PlayerTest, WhatIsNoClipSaysSo) {
  QFile text(file(QStringLiteral("words.mp4")));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write(QByteArray(5000, 'x'));
  text.close();
  open(text.fileName());
  EXPECT_EQ(player.state(), PlayerState::failed);
  EXPECT_FALSE(player.problem().isEmpty());
}

TEST_F(PlayerTest, AClipThatIsCutBeforeItsListOfFramesSaysSo) {
  QFile bytes(clip(250, false));
  ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
  ASSERT_TRUE(bytes.resize(bytes.size() * 6 / 10));
  bytes.close();
  open(bytes.fileName());
  EXPECT_EQ(player.state(), PlayerState::failed);
  EXPECT_EQ(player.problem(), QStringLiteral("This clip could not be read."));
}

// The length in the header of the sound is a promise that a cut file does not keep.
TEST_F(PlayerTest, ASoundThatIsCutShortEndsWhereItsSamplesEnd) {
  test::makeWav(file(QStringLiteral("cut.wav")), 48'000, 48'000 * 6, [](int) { return 0.2; });
  QFile bytes(file(QStringLiteral("cut.wav")));
  ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
  ASSERT_TRUE(bytes.resize(44 + 48'000 * 2 * 2));
  bytes.close();
  open(bytes.fileName());
  player.play();
  for (int piece = 0; piece < 40 && player.isPlaying(); ++piece) {
    settle();
    if (tape->running) tape->take(9600), tape->heard += 0.2;
    player.advance();
  }
  EXPECT_FALSE(player.isPlaying());
  EXPECT_NEAR(player.position(), 2.0, 0.25);
}

TEST_F(PlayerTest, OpeningAnotherFileForgetsTheFirst) {
  const QString first = clip(50, false);
  player.open(first);
  const QString second = file(QStringLiteral("second.mp4"));
  test::makeNumberedClip(second, 25, false);
  open(second);
  EXPECT_EQ(player.path(), second);
  EXPECT_NEAR(player.duration(), 1.0, 0.1);
  player.close();
  EXPECT_EQ(player.state(), PlayerState::empty);
  EXPECT_TRUE(player.frame().isNull());
}

TEST_F(PlayerTest, PlayAskedForWhileOpeningBeginsWhenItCan) {
  player.open(clip(50, false));
  player.play();
  ASSERT_TRUE(QTest::qWaitFor([this] { return player.state() == PlayerState::ready; }, 10'000));
  settle();
  passTo(now + 0.4);
  EXPECT_EQ(shown(), 10);
}

TEST_F(PlayerTest, FramesComeNoLargerThanAskedFor) {
  player.setFrameSize({96, 96});
  open(clip(25, false));
  EXPECT_EQ(player.frame().width(), 96);
  EXPECT_EQ(player.facts().size.width(), 192);
  player.setFrameSize({400, 400});
  settle();
  EXPECT_EQ(player.frame().width(), 192);
}

// A pipe that nobody writes to stands for a file system that does not answer.
TEST_F(PlayerTest, NothingThatIsAskedOfAPlayerWaitsForItsFile) {
  const QString pipe = file(QStringLiteral("pipe.mp4"));
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  player.open(pipe);
  player.play();
  player.seek(3);
  player.stepFrames(-1);
  EXPECT_EQ(player.state(), PlayerState::opening);
  player.close();
  EXPECT_EQ(player.state(), PlayerState::empty);
  // The thread that still waits is let go.
  int end = -1;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return (end = ::open(QFile::encodeName(pipe).constData(), O_WRONLY | O_NONBLOCK)) >= 0; }, 10'000));
  ::close(end);
}

TEST_F(PlayerTest, NothingThatIsAskedOfAPlayerWaitsForAFrame) {
  open(clip(500, true));
  settle();
  const qint64 first = player.frame().cacheKey();
  for (int turn = 0; turn < 40; ++turn) player.seek(turn % 19);
  EXPECT_EQ(player.position(), 39 % 19);
  player.stepFrames(-1);
  EXPECT_EQ(player.frame().cacheKey(), first) << "the frame of before stands until the new one is decoded";
  settle();
  catchUp();
  EXPECT_NE(player.frame().cacheKey(), first);
}

}  // namespace
}  // namespace sorvan::media
