#include "core/thumbnails.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/sorvan_error.h"
#include "core/squares.h"
#include "support/made_clips.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

using namespace sorvan::test;

class Thumbnails : public testing::Test {
 protected:
  QImage drawn(const QString& source, MediaType type) {
    drawThumbnail(source, type, destination);
    return QImage(destination, "jpeg");
  }
  QString failureOf(const QString& source, MediaType type, const QString& to) {
    try {
      drawThumbnail(source, type, to);
    } catch (const SorvanError& error) {
      return error.message();
    }
    return QStringLiteral("(no failure)");
  }
  QString picture(const QByteArray& bytes) { return folder.write(QStringLiteral("picture"), bytes); }

  TemporaryFolder folder;
  QString destination = folder / QStringLiteral("thumbnail.jpg");
};

TEST_F(Thumbnails, OfLargePicturesAre700PixelsLong) {
  EXPECT_EQ(drawn(picture(encoded(cornerMarked({1400, 1000}), "png")), MediaType::image).size(), QSize(700, 500));
  EXPECT_EQ(drawn(picture(encoded(cornerMarked({1000, 1400}), "jpeg")), MediaType::image).size(), QSize(500, 700));
}

TEST_F(Thumbnails, OfSmallPicturesKeepTheirSize) {
  EXPECT_EQ(drawn(picture(encoded(cornerMarked({80, 48}), "png")), MediaType::image).size(), QSize(80, 48));
}

TEST_F(Thumbnails, OfPhotosAreUpright) {
  const QImage upright = drawn(picture(jpegWithOrientation(cornerMarked({1400, 1000}), 6)), MediaType::image);
  EXPECT_EQ(upright.size(), QSize(500, 700));
  EXPECT_GT(upright.pixelColor(490, 10).green(), 100);
}

TEST_F(Thumbnails, OfCutOutsLieOnSquares) {
  QImage clear(280, 280, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const QImage squared = drawn(picture(encoded(clear, "png")), MediaType::image);
  EXPECT_NEAR(squared.pixelColor(5, 5).red(), 245, 4);
  EXPECT_NEAR(squared.pixelColor(15, 5).red(), 204, 4);
}

TEST_F(Thumbnails, OfOpaquePicturesWithAnAlphaChannelHaveNoSquares) {
  QImage opaque(280, 280, QImage::Format_ARGB32);
  opaque.fill(QColor(10, 20, 200));
  EXPECT_NEAR(drawn(picture(encoded(opaque, "png")), MediaType::image).pixelColor(15, 5).blue(), 200, 6);
}

TEST_F(Thumbnails, OfClipsShowTheFirstFrameUpright) {
  const QString clip = folder / QStringLiteral("clip.mp4");
  makeClip(clip, {.size = {1400, 800}, .frames = 3, .quarterTurns = 1});
  const QImage frame = drawn(clip, MediaType::video);
  EXPECT_EQ(frame.size(), QSize(400, 700));
  EXPECT_NEAR(qGray(frame.pixel(100, 500)), greyOfFrame(0), 6);
  EXPECT_GT(qGray(frame.pixel(300, 100)), 240);
}

TEST_F(Thumbnails, OfSoundsAreWaveforms) {
  const QString sound = folder / QStringLiteral("sound.m4a");
  makeM4a(sound, 1);
  EXPECT_EQ(drawn(sound, MediaType::audio).size(), QSize(700, 420));
}

TEST_F(Thumbnails, ReplaceTheOneBefore) {
  drawn(picture(encoded(cornerMarked({80, 48}), "png")), MediaType::image);
  EXPECT_EQ(drawn(picture(encoded(cornerMarked({60, 60}), "png")), MediaType::image).size(), QSize(60, 60));
  EXPECT_EQ(folder.files().size(), 2);
}

TEST_F(Thumbnails, OfWhatCannotBeReadSaySoAndKeepTheOneBefore) {
  folder.write(QStringLiteral("thumbnail.jpg"), "old");
  const QString cut = picture(encoded(cornerMarked({80, 48}), "png").left(70));
  EXPECT_EQ(failureOf(cut, MediaType::image, destination), QStringLiteral("Thumbnail could not be created."));
  EXPECT_EQ(failureOf(cut, MediaType::video, destination), QStringLiteral("This clip could not be read."));
  EXPECT_EQ(failureOf(cut, MediaType::audio, destination), QStringLiteral("This sound could not be read."));
  const QString empty = folder / QStringLiteral("empty.wav");
  makeWav(empty, 8000, 0, [](int) { return 0; });
  EXPECT_EQ(failureOf(empty, MediaType::audio, destination), QStringLiteral("This sound is empty."));
  EXPECT_EQ(folder.read(QStringLiteral("thumbnail.jpg")), "old");
}

TEST_F(Thumbnails, ThatCannotBeSavedSaySo) {
  const QString source = picture(encoded(cornerMarked({80, 48}), "png"));
  EXPECT_EQ(failureOf(source, MediaType::image, folder / QStringLiteral("absent/thumbnail.jpg")),
            QStringLiteral("Cannot save thumbnail."));
}

TEST(Squares, AreOfATwentyEighthOfTheLongerSideAndAtLeast8) {
  EXPECT_EQ(squareSide({100, 100}), 8);
  EXPECT_EQ(squareSide({223, 10}), 8);
  EXPECT_EQ(squareSide({224, 10}), 8);
  EXPECT_EQ(squareSide({10, 700}), 25);
  EXPECT_EQ(squareSide({2800, 100}), 100);
}

TEST(Squares, StartLightAtTheTopLeftAndCoverTheEdges) {
  QImage clear(100, 50, QImage::Format_ARGB32_Premultiplied);
  clear.fill(Qt::transparent);
  const QImage squared = onSquares(clear);
  EXPECT_EQ(squared.pixelColor(0, 0), QColor(245, 245, 245));
  EXPECT_EQ(squared.pixelColor(8, 0), QColor(204, 204, 204));
  EXPECT_EQ(squared.pixelColor(0, 8), QColor(204, 204, 204));
  EXPECT_EQ(squared.pixelColor(8, 8), QColor(245, 245, 245));
  EXPECT_EQ(squared.pixelColor(99, 49), QColor(245, 245, 245));  // column 12, row 6
  EXPECT_EQ(squared.pixelColor(99, 40), QColor(204, 204, 204));  // column 12, row 5
}

TEST(Squares, LieBehindThePicture) {
  QImage picture(100, 50, QImage::Format_ARGB32_Premultiplied);
  picture.fill(QColor(255, 0, 0));
  EXPECT_EQ(onSquares(picture).pixelColor(8, 0), QColor(255, 0, 0));
  EXPECT_FALSE(onSquares(picture).hasAlphaChannel());
}

}  // namespace
}  // namespace sorvan::core
