#include "platform/clip_file.h"

#include <gtest/gtest.h>

#include "platform/clip_frames.h"
#include "platform/clips.h"
#include "platform/sounds.h"
#include "support/failure_of.h"
#include "support/made_clips.h"
#include "support/temporary_folder.h"

namespace sorvan::platform {
namespace {

using namespace sorvan::test;

int greyOf(const QImage& image) { return qGray(image.pixel(image.width() * 3 / 4, image.height() * 3 / 4)); }

class ClipFiles : public testing::Test {
 protected:
  QString made(const ClipRecipe& recipe) {
    makeClip(source, recipe);
    return source;
  }
  TemporaryFolder folder;
  QString source = folder / QStringLiteral("source.mp4");
  QString target = folder / QStringLiteral("target.mp4");
};

TEST_F(ClipFiles, GiveBackThePicturesThatWereWritten) {
  ClipFileWriter writer(target, {.size = {64, 48}, .framesPerSecond = 10});
  for (int index = 0; index < 12; ++index) {
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(qRgb(20 * index, 20 * index, 20 * index));
    writer.writeFrame(image, index / 10.0);
  }
  writer.finish();
  EXPECT_EQ(probeClip(target).size, QSize(64, 48));
  EXPECT_NEAR(probeClip(target).duration.value(), 1.2, 0.02);
  EXPECT_NEAR(probeClip(target).framesPerSecond, 10, 0.1);
  EXPECT_NEAR(greyOf(frameAt(target, 0.55)), 100, 4);
  EXPECT_NEAR(greyOf(lastFrame(target)), 220, 4);
}

TEST_F(ClipFiles, KeepTheColoursOfLargeAndSmallPictures) {
  for (const QSize size : {QSize(320, 240), QSize(1280, 720)}) {
    ClipFileWriter writer(target, {.size = size});
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(200, 60, 30));
    for (int index = 0; index < 3; ++index) writer.writeFrame(image, index / 24.0);
    writer.finish();
    const QColor colour = frameAt(target, 0).pixelColor(10, 10);
    EXPECT_NEAR(colour.red(), 200, 5);
    EXPECT_NEAR(colour.green(), 60, 5);
    EXPECT_NEAR(colour.blue(), 30, 5);
  }
}

TEST_F(ClipFiles, WithSoundHaveBoth) {
  ClipFileWriter writer(target, {.size = {65, 49}, .framesPerSecond = 10, .soundChannels = 2});
  QImage image(65, 49, QImage::Format_RGB32);
  image.fill(Qt::gray);
  for (int index = 0; index < 10; ++index) {
    writer.writeFrame(image, index / 10.0);
    writer.writeSound(std::vector<float>(4800 * 2, 0.25F));
  }
  writer.finish();
  EXPECT_EQ(probeClip(target).size, QSize(64, 48));
  EXPECT_TRUE(probeClip(target).hasSound);
  EXPECT_NEAR(probeSound(target).duration.value(), 1, 0.05);
}

TEST_F(ClipFiles, ThatAreNotFinishedAreRemoved) {
  {
    ClipFileWriter writer(target, {.size = {64, 48}});
    EXPECT_TRUE(QFile::exists(target));
  }
  EXPECT_FALSE(QFile::exists(target));
}

TEST_F(ClipFiles, ThatCannotBeWrittenFail) {
  EXPECT_EQ(failureOf([&] {
              ClipFileWriter writer(folder / QStringLiteral("absent/a.mp4"), {.size = {64, 48}});
            }),
            QStringLiteral("This clip could not be written."));
}

TEST_F(ClipFiles, WrittenAgainFitAndStandUpright) {
  writeClipWithin(made({.size = {640, 320}, .frames = 10, .quarterTurns = 1, .sound = true}), {200, 200}, target);
  const ClipFacts facts = probeClip(target);
  EXPECT_EQ(facts.size, QSize(100, 200));
  EXPECT_TRUE(facts.hasSound);
  EXPECT_NEAR(facts.duration.value(), 1, 0.1);
  const QImage first = frameAt(target, 0);
  EXPECT_GT(qGray(first.pixel(75, 30)), 230);  // the white quarter went to the right
  EXPECT_NEAR(greyOf(first), greyOfFrame(0), 6);
}

TEST_F(ClipFiles, WrittenAgainAreNeverEnlarged) {
  writeClipWithin(made({.frames = 5}), {1280, 720}, target);
  EXPECT_EQ(probeClip(target).size, QSize(64, 48));
  EXPECT_FALSE(probeClip(target).hasSound);
}

TEST_F(ClipFiles, WrittenAgainFromGarbageFailAndLeaveNothing) {
  const QString garbage = folder.write(QStringLiteral("garbage.mp4"), QByteArray("0123456789").repeated(500));
  EXPECT_EQ(failureOf([&] {
              writeClipWithin(garbage, {1280, 720}, target);
            }),
            QStringLiteral("This clip could not be read."));
  EXPECT_FALSE(QFile::exists(target));
}

TEST_F(ClipFiles, WrittenAgainStopWhenAsked) {
  std::stop_source stop;
  stop.request_stop();
  const QString clip = made({});
  EXPECT_THROW(writeClipWithin(clip, {1280, 720}, target, stop.get_token()), Cancelled);
  EXPECT_FALSE(QFile::exists(target));
}

TEST_F(ClipFiles, AreReadFrameByFrame) {
  ClipFrames frames(made({.frames = 15}));
  int count = 0;
  while (const auto frame = frames.next()) {
    EXPECT_NEAR(greyOf(frame->image), greyOfFrame(count), 6);
    EXPECT_NEAR(frame->seconds, count / 10.0, 0.001);
    ++count;
  }
  EXPECT_EQ(count, 15);
}

TEST_F(ClipFiles, AreReadOnFromAPlace) {
  ClipFrames frames(made({.frames = 15}));
  frames.seek(0.75);
  EXPECT_NEAR(frames.next()->seconds, 0.7, 0.001);
  EXPECT_NEAR(frames.next()->seconds, 0.8, 0.001);
  EXPECT_NEAR(frames.next()->seconds, 0.9, 0.001);
  frames.seek(0);
  EXPECT_NEAR(frames.next()->seconds, 0, 0.001);
  frames.seek(77);
  EXPECT_NEAR(frames.next()->seconds, 1.4, 0.001);
  EXPECT_FALSE(frames.next());
}

}  // namespace
}  // namespace sorvan::platform
