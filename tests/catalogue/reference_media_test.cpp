#include "catalogue/reference_media.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "base/sorvan_error.h"
#include "catalogue/sample_media.h"
#include "support/temporary_folder.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::TemporaryFolder;

QString refusal(const std::function<void()>& work) {
  try {
    work();
  } catch (const SorvanError& error) {
    return error.message();
  }
  return u"accepted"_s;
}

QByteArray noisyPng(int side) {
  QImage image(side, side, QImage::Format_ARGB32);
  quint32 state = 7;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      state = state * 1664525 + 1013904223;
      image.setPixel(x, y, state | 0x80000000);
    }
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "png");
  return bytes;
}

TEST(ReferenceMedia, SendsAPictureAsPngOfItsOwnSize) {
  const TemporaryFolder folder;
  const QImage sent = QImage::fromData(pngOf(folder.write(u"a.jpg"_s, test::sampleJpeg({64, 48}))), "png");
  EXPECT_EQ(sent.size(), QSize(64, 48));
}

TEST(ReferenceMedia, ScalesALargePictureDownTo4096Pixels) {
  const TemporaryFolder folder;
  const QImage sent = QImage::fromData(pngOf(folder.write(u"a.png"_s, test::samplePng({5000, 50}))), "png");
  EXPECT_EQ(sent.width(), 4096);
  EXPECT_NEAR(sent.height(), 41, 1);
}

TEST(ReferenceMedia, RefusesWhatIsNoPicture) {
  const TemporaryFolder folder;
  const QString file = folder.write(u"a.png"_s, "not a picture");
  EXPECT_EQ(refusal([&] { pngOf(file); }), u"Cannot read a reference image."_s);
  EXPECT_EQ(refusal([&] { pngOf(folder / u"absent.png"_s); }), u"Cannot read a reference image."_s);
}

TEST(ReferenceMedia, SendsAPictureAboveTheLimitAsJpegOnWhite) {
  const TemporaryFolder folder;
  const QString file = folder.write(u"a.png"_s, noisyPng(80));
  EXPECT_EQ(compactPicture(file, 1 << 20).contentType, u"image/png"_s);
  const PreparedMedia compact = compactPicture(file, 1000);
  EXPECT_EQ(compact.contentType, u"image/jpeg"_s);
  EXPECT_EQ(compact.ext, u"jpg"_s);
  EXPECT_EQ(QImage::fromData(compact.bytes, "jpg").size(), QSize(80, 80));
}

TEST(ReferenceMedia, SendsASoundThatFitsUnchanged) {
  const TemporaryFolder folder;
  const QByteArray wav = test::sampleWav();
  const PreparedMedia sent = preparedReference(folder.write(u"a.WAV"_s, wav));
  EXPECT_EQ(sent.bytes, wav);
  EXPECT_EQ(sent.contentType, u"audio/wav"_s);
  EXPECT_EQ(sent.ext, u"wav"_s);
}

TEST(ReferenceMedia, RewritesALargeSoundAsSamplesAndRefusesOneThatIsStillTooLarge) {
  const TemporaryFolder folder;
  const QByteArray wav = test::sampleWav() + QByteArray(9000, '\0');
  const QString file = folder.write(u"a.wav"_s, wav);
  const PreparedMedia sent = preparedSound(file, test::sampleWav().size() + 100);
  EXPECT_EQ(sent.contentType, u"audio/wav"_s);
  EXPECT_EQ(sent.bytes.left(4), "RIFF");
  EXPECT_EQ(sent.bytes.size(), test::sampleWav().size());
  EXPECT_EQ(refusal([&] { preparedSound(file, 2000); }), u"This sound is too long to send. Trim it first."_s);
}

TEST(ReferenceMedia, RefusesASoundThatDoesNotOpen) {
  const TemporaryFolder folder;
  const QString file = folder.write(u"a.mp3"_s, QByteArray(5000, 'x'));
  EXPECT_EQ(refusal([&] { preparedSound(file, 100); }), u"This sound cannot be sent."_s);
  EXPECT_EQ(refusal([&] { preparedSound(folder / u"absent.mp3"_s, 100); }), u"This sound cannot be sent."_s);
}

TEST(ReferenceMedia, RefusesAClipThatDoesNotOpen) {
  const TemporaryFolder folder;
  const QString file = folder.write(u"a.mp4"_s, "no clip");
  EXPECT_EQ(refusal([&] { preparedReference(file); }), u"This clip cannot be sent."_s);
}

TEST(ReferenceMedia, TellsTheKindByTheExtension) {
  EXPECT_EQ(referenceKind(u"/x/a.FLAC"_s), ReferenceKind::sound);
  EXPECT_EQ(referenceKind(u"/x/a.m4v"_s), ReferenceKind::clip);
  EXPECT_EQ(referenceKind(u"/x/a.heic"_s), ReferenceKind::picture);
}

}  // namespace
}  // namespace sorvan::catalogue
