#include "platform/clips.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/made_clips.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::platform {
namespace {

using namespace sorvan::test;

const QString unreadable = QStringLiteral("This clip could not be read.");

class Clips : public testing::Test {
 protected:
  QString made(const ClipRecipe& recipe) {
    const QString path = folder / QStringLiteral("clip.mp4");
    makeClip(path, recipe);
    return path;
  }

  /// The number of the frame that a picture shows, told by the grey of its lower right quarter.
  static int frameNumber(const QImage& image) {
    const int grey = qGray(image.pixel(image.width() * 3 / 4, image.height() * 3 / 4));
    return int(std::lround((grey - greyOfFrame(0)) / double(greyOfFrame(1) - greyOfFrame(0))));
  }

  static bool isWhite(const QImage& image, double x, double y) {
    return qGray(image.pixel(int(x * image.width()), int(y * image.height()))) > 230;
  }

  TemporaryFolder folder;
};

TEST_F(Clips, TellTheirSizeLengthRateAndSound) {
  const ClipFacts silent = probeClip(made({.frames = 12, .framesPerSecond = 8}));
  EXPECT_EQ(silent.size, QSize(64, 48));
  EXPECT_NEAR(silent.duration.value(), 1.5, 0.05);
  EXPECT_NEAR(silent.framesPerSecond, 8, 0.01);
  EXPECT_TRUE(silent.hasPicture);
  EXPECT_FALSE(silent.hasSound);
  EXPECT_TRUE(probeClip(made({.sound = true})).hasSound);
}

TEST_F(Clips, TurnedByAQuarterSwapTheirSides) {
  EXPECT_EQ(probeClip(made({.quarterTurns = 1})).size, QSize(48, 64));
  EXPECT_EQ(probeClip(made({.quarterTurns = 3})).size, QSize(48, 64));
  EXPECT_EQ(probeClip(made({.quarterTurns = 2})).size, QSize(64, 48));
}

TEST_F(Clips, GiveUprightFrames) {
  // The white quarter is stored at the top left and goes clockwise with the turns.
  const QImage unturned = frameAt(made({}), 0);
  EXPECT_EQ(unturned.size(), QSize(64, 48));
  EXPECT_TRUE(isWhite(unturned, 0.2, 0.2));
  const QImage once = frameAt(made({.quarterTurns = 1}), 0);
  EXPECT_EQ(once.size(), QSize(48, 64));
  EXPECT_TRUE(isWhite(once, 0.8, 0.2));
  EXPECT_TRUE(isWhite(frameAt(made({.quarterTurns = 2}), 0), 0.8, 0.8));
  EXPECT_TRUE(isWhite(frameAt(made({.quarterTurns = 3}), 0), 0.2, 0.8));
}

TEST_F(Clips, GiveTheFrameThatIsShownAtATime) {
  const QString clip = made({.frames = 20, .framesPerSecond = 10});
  EXPECT_EQ(frameNumber(frameAt(clip, 0)), 0);
  EXPECT_EQ(frameNumber(frameAt(clip, 0.7)), 7);
  EXPECT_EQ(frameNumber(frameAt(clip, 0.79)), 7);
  EXPECT_EQ(frameNumber(frameAt(clip, 1.05)), 10);
}

TEST_F(Clips, GiveTheirFirstFrameBeforeTheStartAndTheirLastAfterTheEnd) {
  const QString clip = made({.frames = 20, .framesPerSecond = 10});
  EXPECT_EQ(frameNumber(frameAt(clip, -3)), 0);
  EXPECT_EQ(frameNumber(frameAt(clip, 99)), 19);
}

TEST_F(Clips, GiveTheirVeryLastFrame) {
  EXPECT_EQ(frameNumber(lastFrame(made({.frames = 20, .framesPerSecond = 10}))), 19);
  EXPECT_EQ(frameNumber(lastFrame(made({.frames = 3, .framesPerSecond = 10}))), 2);
  EXPECT_EQ(frameNumber(lastFrame(made({.frames = 1, .framesPerSecond = 10}))), 0);
}

TEST_F(Clips, WhoseSoundGoesOnLongerStillGiveTheirLastFrame) {
  EXPECT_EQ(frameNumber(lastFrame(made({.frames = 24, .framesPerSecond = 24, .sound = true}))), 23);
}

TEST_F(Clips, GiveFramesThatFitAndAreNeverEnlarged) {
  const QString clip = made({.size = {160, 80}});
  EXPECT_EQ(frameAt(clip, 0, QSize(80, 80)).size(), QSize(80, 40));
  EXPECT_EQ(frameAt(clip, 0, QSize(700, 700)).size(), QSize(160, 80));
  EXPECT_EQ(frameAt(made({.size = {160, 80}, .quarterTurns = 1}), 0, QSize(700, 40)).size(), QSize(20, 40));
}

TEST_F(Clips, CutShortGiveTheFramesThatAreLeftOrAClearFailure) {
  const QString whole = made({.frames = 20});
  const QByteArray bytes = folder.read(QStringLiteral("clip.mp4"));
  const QString cut = folder.write(QStringLiteral("cut.mp4"), bytes.left(bytes.size() / 2));
  EXPECT_EQ(failureOf([&] { frameAt(cut, 0); }), unreadable);
  EXPECT_EQ(failureOf([&] { probeClip(cut); }), unreadable);
}

TEST_F(Clips, ThatAreGarbageCannotBeRead) {
  const QString garbage = folder.write(QStringLiteral("garbage.mp4"), QByteArray("0123456789").repeated(500));
  EXPECT_EQ(failureOf([&] { probeClip(garbage); }), unreadable);
  EXPECT_EQ(failureOf([&] { frameAt(garbage, 0); }), unreadable);
  EXPECT_EQ(failureOf([&] { lastFrame(garbage); }), unreadable);
  EXPECT_EQ(failureOf([&] { probeClip(folder.write(QStringLiteral("empty.mp4"), {})); }), unreadable);
  EXPECT_EQ(failureOf([&] { probeClip(folder / QStringLiteral("absent.mp4")); }), unreadable);
}

TEST_F(Clips, ThatAreListsOfOtherFilesAreRefused) {
  const QString real = made({});
  const QString list = folder.write(QStringLiteral("list.mp4"), "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\n" +
                                                                    real.toUtf8() + "\n#EXT-X-ENDLIST\n");
  EXPECT_EQ(failureOf([&] { probeClip(list); }), unreadable);
  const QString concat =
      folder.write(QStringLiteral("concat.mp4"), "ffconcat version 1.0\nfile '" + real.toUtf8() + "'\n");
  EXPECT_EQ(failureOf([&] { probeClip(concat); }), unreadable);
}

TEST_F(Clips, WithColonsAndUmlautsInTheirNamesAreRead) {
  const QString path = folder / QStringLiteral("http:ünï:%d.mp4");
  makeClip(path, {});
  EXPECT_EQ(probeClip(path).size, QSize(64, 48));
}

TEST_F(Clips, StopWhenAsked) {
  std::stop_source source;
  source.request_stop();
  EXPECT_THROW(frameAt(made({}), 0, {}, source.get_token()), Cancelled);
}

}  // namespace
}  // namespace sorvan::platform
