#include "platform/pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QColorSpace>

#include "support/failure_of.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::platform {
namespace {

using namespace sorvan::test;

const QString unreadable = QStringLiteral("This image could not be read.");

QImage plain(QSize size, QColor colour, QImage::Format format = QImage::Format_RGB32) {
  QImage image(size, format);
  image.fill(colour);
  return image;
}

/// "r", "g" or "b": which of the marked colours a place holds.
char colourAt(const QImage& image, double x, double y) {
  const QColor colour = image.pixelColor(int(x * image.width()), int(y * image.height()));
  if (colour.green() > 100) return 'g';
  return colour.red() > colour.blue() ? 'r' : 'b';
}

/// The corners clockwise from the top left, close to the edge.
std::string corners(const QImage& image) {
  return {colourAt(image, 0.1, 0.1), colourAt(image, 0.9, 0.1), colourAt(image, 0.9, 0.9), colourAt(image, 0.1, 0.9)};
}

/// The corners of the eight orientations by the meaning of Exif, worked out from the marked picture by index.
std::string cornersByDefinition(int orientation) {
  const std::string stored = "gbbr";  // 0 top left, 1 top right, 2 bottom right, 3 bottom left
  // For each orientation, which stored corner is shown at the top left, top right, bottom right, bottom left.
  static constexpr std::array<std::array<int, 4>, 9> shown{{{0, 1, 2, 3},
                                                            {0, 1, 2, 3},
                                                            {1, 0, 3, 2},
                                                            {2, 3, 0, 1},
                                                            {3, 2, 1, 0},
                                                            {0, 3, 2, 1},
                                                            {3, 0, 1, 2},
                                                            {2, 1, 0, 3},
                                                            {1, 2, 3, 0}}};
  std::string result;
  for (const int corner : shown[size_t(orientation)]) result += stored[size_t(corner)];
  return result;
}

class PicturesOfEveryOrientation : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Exif, PicturesOfEveryOrientation, testing::Range(1, 9));

void expectUpright(const QByteArray& bytes, int orientation) {
  const QSize size = orientation > 4 ? QSize(48, 80) : QSize(80, 48);
  EXPECT_EQ(probePicture(bytes)->size, size);
  EXPECT_EQ(probePicture(bytes)->orientation, orientation);
  EXPECT_EQ(decodeUpright(bytes).size(), size);
  EXPECT_EQ(corners(decodeUpright(bytes)), cornersByDefinition(orientation));
  EXPECT_EQ(corners(decodeWithin(bytes, 40)), cornersByDefinition(orientation));
}

TEST_P(PicturesOfEveryOrientation, AJpegIsUpright) {
  expectUpright(jpegWithOrientation(cornerMarked({80, 48}), GetParam()), GetParam());
}

TEST_P(PicturesOfEveryOrientation, APngIsUpright) {
  expectUpright(pngWithOrientation(cornerMarked({80, 48}), GetParam()), GetParam());
}

TEST_P(PicturesOfEveryOrientation, AWebpIsUpright) {
  expectUpright(webpWithOrientation(cornerMarked({80, 48}), GetParam()), GetParam());
}

TEST_P(PicturesOfEveryOrientation, ATiffIsUpright) {
  expectUpright(tiffWithOrientation(cornerMarked({80, 48}), GetParam()), GetParam());
}

TEST_P(PicturesOfEveryOrientation, AHeicIsUpright) {
  const QByteArray heic = heif(cornerMarked({80, 48}), HeifCodec::hevc, GetParam());
  EXPECT_EQ(probePicture(heic)->size, GetParam() > 4 ? QSize(48, 80) : QSize(80, 48));
  EXPECT_EQ(corners(decodeUpright(heic)), cornersByDefinition(GetParam()));
}

TEST(Pictures, AreReadWhateverTheirKind) {
  for (const char* format : {"png", "jpeg", "webp", "tiff", "bmp"}) {
    const QByteArray bytes = encoded(cornerMarked({80, 48}), format);
    EXPECT_EQ(probePicture(bytes)->size, QSize(80, 48)) << format;
    EXPECT_EQ(corners(decodeUpright(bytes)), "gbbr") << format;
  }
}

TEST(Pictures, InHeicAndAvifAreRead) {
  for (const HeifCodec codec : {HeifCodec::hevc, HeifCodec::av1}) {
    const QByteArray bytes = heif(cornerMarked({80, 48}), codec);
    EXPECT_EQ(probePicture(bytes)->kind, PictureKind::heif);
    EXPECT_EQ(corners(decodeUpright(bytes)), "gbbr");
  }
}

TEST(Pictures, InGifAreRead) {
  const QByteArray gif = QByteArray::fromHex(
      "4749463839610200010080000000ff00ff0000"
      "2c000000000200010000020244"
      "0a003b");
  const auto facts = probePicture(gif);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->size, QSize(2, 1));
  EXPECT_EQ(decodeUpright(gif).size(), QSize(2, 1));
}

TEST(Pictures, AreKnownByTheirBytesAndNotByTheirName) {
  const TemporaryFolder folder;
  const QString path = folder.write(QStringLiteral("wrong.mp3"), encoded(cornerMarked({80, 48}), "png"));
  EXPECT_EQ(probePicture(path)->size, QSize(80, 48));
}

TEST(Pictures, ThatAreNoneGiveNothing) {
  EXPECT_FALSE(probePicture(QByteArray()));
  EXPECT_FALSE(probePicture(QByteArray("BM is how this text begins, and it goes on for a while")));
  EXPECT_FALSE(probePicture(QByteArray("hello")));
  EXPECT_FALSE(probePicture(QStringLiteral("/nowhere/at/all.png")));
}

TEST(Pictures, ThatBreakOffInTheirHeaderCannotBeRead) {
  for (const char* format : {"png", "jpeg", "webp", "tiff", "bmp"}) {
    const QByteArray whole = encoded(cornerMarked({80, 48}), format);
    EXPECT_EQ(failureOf([&] { decodeUpright(whole.left(18)); }), unreadable) << format;
  }
  EXPECT_EQ(failureOf([&] { probePicture(encoded(cornerMarked({80, 48}), "png").left(12)); }), unreadable);
}

TEST(Pictures, ThatAreGarbageBehindTheirSignatureCannotBeRead) {
  const QByteArray garbage = QByteArray::fromHex("00112233445566778899aabbccddeeff").repeated(20);
  for (const QByteArray& start : {QByteArray("\x89PNG\r\n\x1a\n"), QByteArray("\xff\xd8\xff"), QByteArray("GIF89a"),
                                  QByteArray("II*\0", 4), QByteArray("RIFF\x40\0\0\0WEBP", 12),
                                  QByteArray("\0\0\0\x18"
                                             "ftypheic",
                                             12)})
    EXPECT_EQ(failureOf([&] { decodeUpright(start + garbage); }), unreadable) << start.toHex().constData();
}

TEST(Pictures, OfMoreThan400MegapixelsCannotBeRead) {
  EXPECT_EQ(failureOf([] { probePicture(pngHeader({30'000, 20'000})); }), unreadable);
  EXPECT_EQ(probePicture(pngHeader({20'000, 20'000}))->size, QSize(20'000, 20'000));
}

TEST(Pictures, LargerThanTheUsualLimitOfMemoryAreRead) {
  QImage image(7000, 5000, QImage::Format_Grayscale8);
  image.fill(Qt::gray);
  EXPECT_EQ(decodeUpright(encoded(image, "png")).size(), QSize(7000, 5000));
  EXPECT_EQ(decodeWithin(encoded(image, "png"), 700).size(), QSize(700, 500));
}

TEST(Pictures, CutShortAreNotWhole) {
  for (const char* format : {"png", "jpeg", "webp", "bmp"}) {
    const QByteArray bytes = encoded(cornerMarked({200, 200}), format);
    EXPECT_TRUE(pictureIsWhole(bytes)) << format;
    EXPECT_FALSE(pictureIsWhole(bytes.left(bytes.size() * 3 / 4))) << format;
  }
  EXPECT_FALSE(pictureIsWhole(QByteArray("garbage")));
}

TEST(Pictures, WithExifThatLiesAboutItsPlacesAreReadUnturned) {
  for (const int cut : {1, 5, 9, 12, 19}) {
    QByteArray png = encoded(cornerMarked({80, 48}), "png");
    png.insert(8 + 25, pngChunk("eXIf", exifBlock(6).left(cut)));
    EXPECT_EQ(probePicture(png)->orientation, 1) << cut;
  }
  QByteArray far = exifBlock(6);
  far.replace(4, 4, QByteArray::fromHex("fffffff0"));
  QByteArray png = encoded(cornerMarked({80, 48}), "png");
  png.insert(8 + 25, pngChunk("eXIf", far));
  EXPECT_EQ(probePicture(png)->orientation, 1);
  EXPECT_EQ(corners(decodeUpright(png)), "gbbr");
}

TEST(Pictures, AreNeverEnlarged) {
  EXPECT_EQ(decodeWithin(encoded(plain({30, 20}, Qt::red), "png"), 700).size(), QSize(30, 20));
}

TEST(Pictures, OfExtremeShapesKeepOnePixel) {
  EXPECT_EQ(decodeWithin(encoded(plain({5000, 2}, Qt::red), "png"), 700).size(), QSize(700, 1));
}

TEST(Pictures, ScaledWhileDecodingKeepTheirColours) {
  for (const char* format : {"png", "jpeg", "webp", "tiff", "bmp"}) {
    const QImage small = decodeWithin(encoded(cornerMarked({1600, 960}), format), 100);
    EXPECT_EQ(small.size(), QSize(100, 60)) << format;
    EXPECT_EQ(corners(small), "gbbr") << format;
  }
}

TEST(Transparency, IsFoundInOneSampleOf4096) {
  QImage image = plain({64, 64}, Qt::red, QImage::Format_ARGB32);
  EXPECT_FALSE(hasTransparency(image));
  image.setPixelColor(20, 30, QColor(255, 0, 0, 245));
  EXPECT_FALSE(hasTransparency(image));
  image.setPixelColor(20, 30, QColor(255, 0, 0, 244));
  EXPECT_TRUE(hasTransparency(image));
}

TEST(Transparency, IsNeverFoundWithoutAnAlphaChannel) { EXPECT_FALSE(hasTransparency(plain({64, 64}, Qt::red))); }

class TransparencyOfFiles : public testing::Test {
 protected:
  bool found(const QByteArray& png) { return hasTransparency(folder.write(QStringLiteral("a.png"), png)); }
  TemporaryFolder folder;
};

TEST_F(TransparencyOfFiles, IsFoundInPictures8BitsDeep) {
  EXPECT_TRUE(found(encoded(plain({90, 90}, Qt::transparent, QImage::Format_ARGB32), "png")));
  EXPECT_FALSE(found(encoded(plain({90, 90}, Qt::red, QImage::Format_ARGB32), "png")));
}

TEST_F(TransparencyOfFiles, IsFoundInPictures16BitsDeep) {
  EXPECT_TRUE(found(encoded(plain({90, 90}, QColor(9, 9, 9, 40), QImage::Format_RGBA64), "png")));
  EXPECT_FALSE(found(encoded(plain({90, 90}, Qt::red, QImage::Format_RGBA64), "png")));
}

TEST_F(TransparencyOfFiles, IsFoundInPalettes) {
  QImage image({90, 90}, QImage::Format_Indexed8);
  image.setColorTable({qRgba(255, 0, 0, 255), qRgba(0, 0, 255, 0)});
  image.fill(1);
  EXPECT_TRUE(found(encoded(image, "png")));
  image.fill(0);
  EXPECT_FALSE(found(encoded(image, "png")));
}

TEST_F(TransparencyOfFiles, IsFoundInGreyWithAlpha) {
  const QByteArray seeThroughRow = QByteArray(1, '\0') + QByteArray("\x80\x10", 2).repeated(90);
  EXPECT_TRUE(found(rawPng({90, 90}, 8, 4, seeThroughRow.repeated(90))));
  const QByteArray opaqueRow = QByteArray(1, '\0') + QByteArray("\x80\xff", 2).repeated(90);
  EXPECT_FALSE(found(rawPng({90, 90}, 8, 4, opaqueRow.repeated(90))));
}

TEST_F(TransparencyOfFiles, IsFoundInGreyWithATransparentShade) {
  const QByteArray rows = (QByteArray(1, '\0') + QByteArray(90, '\x33')).repeated(90);
  EXPECT_TRUE(found(rawPng({90, 90}, 8, 0, rows, pngChunk("tRNS", QByteArray("\0\x33", 2)))));
  EXPECT_FALSE(found(rawPng({90, 90}, 8, 0, rows)));
}

TEST_F(TransparencyOfFiles, IsFoundInHeicAndWebp) {
  const QImage clear = plain({128, 128}, Qt::transparent, QImage::Format_ARGB32);
  EXPECT_TRUE(found(encoded(clear, "webp")));
  EXPECT_TRUE(found(heif(clear, HeifCodec::hevc)));
  EXPECT_FALSE(found(heif(plain({128, 128}, Qt::red), HeifCodec::hevc)));
}

TEST_F(TransparencyOfFiles, IsFalseForWhatCannotBeRead) {
  EXPECT_FALSE(found("garbage"));
  EXPECT_FALSE(found(encoded(plain({90, 90}, Qt::transparent, QImage::Format_ARGB32), "png").left(60)));
  EXPECT_FALSE(hasTransparency(QStringLiteral("/nowhere.png")));
}

TEST(Encoding, KeepsPixelsAndColourSpaceButNoTexts) {
  QImage image = cornerMarked({80, 48});
  image.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
  image.setText(QStringLiteral("prompt"), QStringLiteral("a secret"));
  QImage again = decodeUpright(encodePng(image));
  EXPECT_EQ(again.colorSpace().primaries(), QColorSpace::Primaries::DciP3D65);
  again.setColorSpace({});
  EXPECT_EQ(again, cornerMarked({80, 48}));
  EXPECT_FALSE(encodePng(image).contains("secret"));
}

TEST(Encoding, WritesNoOrientation) {
  const QImage upright = decodeUpright(jpegWithOrientation(cornerMarked({80, 48}), 6));
  EXPECT_EQ(probePicture(encodeJpeg(upright, 0.85))->orientation, 1);
  EXPECT_EQ(probePicture(encodeJpeg(upright, 0.85))->size, QSize(48, 80));
}

TEST(Encoding, OfNothingFails) {
  EXPECT_EQ(failureOf([] { encodePng({}); }), QStringLiteral("This image could not be written."));
}

TEST(Decoding, ForTheScreenTurnsColoursIntoSrgb) {
  const QImage shown = decodeWithin(encodePng(plain({8, 8}, QColor(128, 100, 90))), 8);
  QImage wide = plain({8, 8}, QColor(128, 100, 90));
  wide.setColorSpace(QColorSpace(QColorSpace::ProPhotoRgb));
  const QImage shownWide = decodeWithin(encodePng(wide), 8);
  EXPECT_EQ(shown.pixelColor(4, 4), QColor(128, 100, 90));
  EXPECT_GT(shownWide.pixelColor(4, 4).red(), 135);
}

}  // namespace
}  // namespace sorvan::platform
