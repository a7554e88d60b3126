#include "core/media_inspection.h"

#include <gtest/gtest.h>

#include "base/sorvan_error.h"
#include "support/made_clips.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

using namespace sorvan::test;

class Inspecting : public testing::Test {
 protected:
  QString failureOf(const QString& path) {
    try {
      inspectMedia(path);
    } catch (const SorvanError& error) {
      return error.message();
    }
    return QStringLiteral("(no failure)");
  }
  QString write(const char* name, const QByteArray& bytes) { return folder.write(QString::fromUtf8(name), bytes); }
  TemporaryFolder folder;
};

TEST_F(Inspecting, AFolderAsksForAFile) {
  EXPECT_EQ(failureOf(folder.path()), QStringLiteral("Choose a media file, not a folder."));
  EXPECT_EQ(failureOf(folder / QStringLiteral("absent.png")), QStringLiteral("Choose a media file, not a folder."));
}

TEST_F(Inspecting, ATextIsUnsupported) {
  EXPECT_EQ(failureOf(write("notes.txt", "A day at the sea")), QStringLiteral("Unsupported media: notes.txt"));
  EXPECT_EQ(failureOf(write("notes", "A day at the sea")), QStringLiteral("Unsupported media: notes"));
  EXPECT_EQ(failureOf(write("Übersetzung.ts", "<!DOCTYPE TS>")), QStringLiteral("Unsupported media: Übersetzung.ts"));
}

TEST_F(Inspecting, APictureThatIsNoneIsUnsupported) {
  EXPECT_EQ(failureOf(write("bad.png", "garbage")), QStringLiteral("Unsupported media: bad.png"));
  EXPECT_EQ(failureOf(write("empty.jpg", {})), QStringLiteral("Unsupported media: empty.jpg"));
}

TEST_F(Inspecting, APictureWithoutASizeCouldNotBeRead) {
  const QByteArray png = encoded(cornerMarked({80, 48}), "png");
  EXPECT_EQ(failureOf(write("cut.png", png.left(14))), QStringLiteral("This image could not be read."));
}

TEST_F(Inspecting, APhotoHeldUprightSwapsItsSides) {
  const QByteArray jpeg = jpegWithOrientation(cornerMarked({400, 300}), 6);
  const MediaMetadata photo = inspectMedia(write("photo.JPG", jpeg));
  EXPECT_EQ(photo.type, MediaType::image);
  EXPECT_EQ(photo.width, 300);
  EXPECT_EQ(photo.height, 400);
  EXPECT_EQ(photo.duration, std::nullopt);
  EXPECT_EQ(photo.fileSize, jpeg.size());
  EXPECT_EQ(photo.mimeType, QStringLiteral("image/jpeg"));
}

TEST_F(Inspecting, APictureUnderAnotherNameIsAPicture) {
  const MediaMetadata picture = inspectMedia(write("picture.dat", encoded(cornerMarked({80, 48}), "png")));
  EXPECT_EQ(picture.type, MediaType::image);
  EXPECT_EQ(picture.width, 80);
  EXPECT_EQ(picture.mimeType, QStringLiteral("application/octet-stream"));
}

TEST_F(Inspecting, AnAppleAndAnAvifPictureAreMeasured) {
  const MediaMetadata heic = inspectMedia(write("a.heic", heif(cornerMarked({80, 48}), HeifCodec::hevc, 6)));
  EXPECT_EQ(QSize(heic.width, heic.height), QSize(48, 80));
  EXPECT_EQ(heic.mimeType, QStringLiteral("image/heic"));
  const MediaMetadata avif = inspectMedia(write("a.avif", heif(cornerMarked({80, 48}), HeifCodec::av1)));
  EXPECT_EQ(QSize(avif.width, avif.height), QSize(80, 48));
  EXPECT_EQ(avif.mimeType, QStringLiteral("image/avif"));
}

TEST_F(Inspecting, AClipTurnedByAQuarterSwapsItsSides) {
  const QString path = folder / QStringLiteral("clip.mp4");
  makeClip(path, {.frames = 15, .quarterTurns = 1, .sound = true});
  const MediaMetadata clip = inspectMedia(path);
  EXPECT_EQ(clip.type, MediaType::video);
  EXPECT_EQ(QSize(clip.width, clip.height), QSize(48, 64));
  EXPECT_NEAR(clip.duration.value(), 1.5, 0.1);
  EXPECT_EQ(clip.mimeType, QStringLiteral("video/mp4"));
}

TEST_F(Inspecting, AClipWithoutAPictureHasNoSize) {
  const QString path = folder / QStringLiteral("sound.m4a");
  makeM4a(path, 1);
  ASSERT_TRUE(QFile::rename(path, folder / QStringLiteral("sound.mov")));
  const MediaMetadata clip = inspectMedia(folder / QStringLiteral("sound.mov"));
  EXPECT_EQ(clip.type, MediaType::video);
  EXPECT_EQ(QSize(clip.width, clip.height), QSize(0, 0));
}

TEST_F(Inspecting, ASoundHasALengthAndNoSize) {
  const QString path = folder / QStringLiteral("sound.wav");
  makeWav(path, 8000, 12'000, [](int) { return 0; });
  const MediaMetadata sound = inspectMedia(path);
  EXPECT_EQ(sound.type, MediaType::audio);
  EXPECT_EQ(sound.width, 0);
  EXPECT_NEAR(sound.duration.value(), 1.5, 1e-6);
  EXPECT_EQ(sound.mimeType, QStringLiteral("audio/wav"));
}

TEST_F(Inspecting, ClipsAndSoundsThatAreGarbageSayWhatTheyAreNot) {
  const QByteArray garbage = QByteArray("0123456789").repeated(300);
  EXPECT_EQ(failureOf(write("bad.mp4", garbage)), QStringLiteral("This clip could not be read."));
  EXPECT_EQ(failureOf(write("bad.mp3", garbage)), QStringLiteral("This sound could not be read."));
}

TEST_F(Inspecting, AFileNameOf255BytesIsFine) {
  const QString name = QStringLiteral("ü").repeated(125) + QStringLiteral("a.png");
  ASSERT_EQ(name.toUtf8().size(), 255);
  EXPECT_EQ(inspectMedia(folder.write(name, encoded(cornerMarked({80, 48}), "png"))).width, 80);
  const QString clip = folder / (QStringLiteral("x").repeated(251) + QStringLiteral(".mp4"));
  makeClip(clip, {});
  EXPECT_EQ(inspectMedia(clip).width, 64);
}

TEST(MimeTypes, ComeFromTheTableWhateverTheCase) {
  EXPECT_EQ(mimeTypeForExtension(QStringLiteral("PNG")), QStringLiteral("image/png"));
  EXPECT_EQ(mimeTypeForExtension(QStringLiteral("aif")), QStringLiteral("audio/aiff"));
  EXPECT_EQ(mimeTypeForExtension(QStringLiteral("opus")), QStringLiteral("audio/opus"));
  EXPECT_EQ(mimeTypeForExtension(QStringLiteral("ts")), QStringLiteral("application/octet-stream"));
  EXPECT_EQ(mimeTypeForExtension({}), QStringLiteral("application/octet-stream"));
}

TEST(MediaTypes, ComeFromTheTable) {
  EXPECT_EQ(mediaTypeForExtension(QStringLiteral("M4V")), MediaType::video);
  EXPECT_EQ(mediaTypeForExtension(QStringLiteral("flac")), MediaType::audio);
  EXPECT_EQ(mediaTypeForExtension(QStringLiteral("webp")), MediaType::image);
  EXPECT_EQ(mediaTypeForExtension(QStringLiteral("ts")), std::nullopt);
}

}  // namespace
}  // namespace sorvan::core
