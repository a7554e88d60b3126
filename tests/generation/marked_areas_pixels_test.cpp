// What is laid over an original inside marks, and that a decoder which is not ours finds the rest of it untouched.
#include <QColorSpace>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <random>

#include "generation/marked_areas_blend.h"
#include "generation/marked_areas_mask.h"
#include "generation/marked_areas_pictures.h"
#include "generation/request_builders.h"
#include "generation/second_decoder.h"
#include "platform/pictures.h"
#include "support/failure_of.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::generation {
namespace {

using namespace test;
using sorvan::test::failureOf;

constexpr QSize pictureSize(90, 60);

const std::vector<MarkupBox> twoBoxes{box(0.1, 0.2, 0.4, 0.5), box(0.7, 0.6, 0.6, 0.6)};

/// Every value at random, also under full transparency.
QImage noise(QImage::Format format, QSize size = pictureSize) {
  std::mt19937 random(5);
  QImage image(size, format);
  for (int y = 0; y < size.height(); ++y)
    for (qsizetype i = 0; i < image.bytesPerLine(); ++i) image.scanLine(y)[i] = uchar(random());
  return image;
}

QImage plain(QSize size, const QColor& colour) {
  QImage image(size, colour.alpha() < 255 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

/// A workshop of files: an original, a result, and what is made of them.
struct Workshop {
  sorvan::test::TemporaryFolder folder;

  QString file(const QString& name, const QByteArray& bytes) {
    folder.write(name, bytes);
    return folder / name;
  }
  QString png(const QString& name, const QImage& image) { return file(name, encodePng(image)); }
  QString original(const QByteArray& bytes, const QString& name = QStringLiteral("original.png")) {
    return file(name, bytes);
  }
  /// Lays a plain result over the original and puts it beside it.
  QString confined(const QString& original, const std::vector<MarkupBox>& boxes = twoBoxes,
                   const std::optional<MarkedRoute>& route = {}) {
    const auto facts = probePicture(original);
    const QSize size = route ? route->target().size() : facts->size;
    const QString result = png(QStringLiteral("result.png"), plain(size, QColor(10, 200, 30)));
    const auto bytes = confinedPicture(result, original, boxes, route);
    return bytes ? file(QStringLiteral("confined.png"), *bytes) : QString();
  }
};

struct Comparison {
  int outside = 0;
  int changedOutside = 0;
  int inside = 0;
  int changedInside = 0;
};

Comparison compared(const QString& original, const QString& confined, const std::vector<MarkupBox>& boxes,
                    QSize size = pictureSize, const QRect& target = QRect(QPoint(), pictureSize)) {
  const QByteArray before = secondDecoding(original);
  const QByteArray after = secondDecoding(confined);
  Comparison result;
  if (before.size() != qsizetype(size.width()) * size.height() * 8 || after.size() != before.size()) return result;
  const FeatherMask mask(boxesInPatch(boxes, size, target), target.size());
  std::vector<std::uint8_t> levels(size_t(target.width()));
  for (int y = 0; y < size.height(); ++y) {
    const bool hasLevels = y >= target.top() && y <= target.bottom();
    if (hasLevels) mask.readRow(y - target.top(), levels.data());
    for (int x = 0; x < size.width(); ++x) {
      const bool inside =
          hasLevels && x >= target.left() && x <= target.right() && levels[size_t(x - target.left())] > 0;
      const qsizetype at = (qsizetype(y) * size.width() + x) * 8;
      const bool changed = before.mid(at, 8) != after.mid(at, 8);
      (inside ? result.inside : result.outside) += 1;
      if (changed) (inside ? result.changedInside : result.changedOutside) += 1;
    }
  }
  return result;
}

void expectOnlyTheInsideChanges(const QString& original, const QString& confined,
                                const std::vector<MarkupBox>& boxes = twoBoxes) {
  const Comparison comparison = compared(original, confined, boxes);
  EXPECT_EQ(comparison.changedOutside, 0);
  EXPECT_GT(comparison.outside, 1000);
  EXPECT_GT(comparison.changedInside, comparison.inside * 9 / 10);
  EXPECT_GT(comparison.inside, 900);
}

TEST(OutsideTheMarks, ASeeThroughOriginalStaysToTheBit) {
  Workshop shop;
  const QString original = shop.original(encodePng(noise(QImage::Format_ARGB32)));
  expectOnlyTheInsideChanges(original, shop.confined(original));
}

TEST(OutsideTheMarks, ColoursUnderFullTransparencyStay) {
  Workshop shop;
  QImage image(pictureSize, QImage::Format_ARGB32);
  image.fill(qRgba(12, 34, 56, 0));
  const QString original = shop.original(encodePng(image));
  expectOnlyTheInsideChanges(original, shop.confined(original));
}

TEST(OutsideTheMarks, AnOriginalOf16BitsStaysToTheBit) {
  for (const auto format : {QImage::Format_RGBA64, QImage::Format_RGBX64, QImage::Format_Grayscale16}) {
    Workshop shop;
    QImage image = noise(format);
    if (format == QImage::Format_RGBX64) image = image.convertToFormat(QImage::Format_RGBX64);
    const QString original = shop.original(encodePng(image));
    const QString confined = shop.confined(original);
    expectOnlyTheInsideChanges(original, confined);
    EXPECT_EQ(decodeUpright(confined).depth(), 64);
  }
}

TEST(OutsideTheMarks, AWideGamutOriginalKeepsItsValuesAndItsProfile) {
  Workshop shop;
  QImage image = noise(QImage::Format_RGB32);
  image.setColorSpace(QColorSpace::DisplayP3);
  const QString original = shop.original(encodePng(image));
  const QString confined = shop.confined(original);
  expectOnlyTheInsideChanges(original, confined);
  EXPECT_FALSE(embeddedProfile(original).isEmpty());
  EXPECT_EQ(embeddedProfile(confined), embeddedProfile(original));
}

TEST(OutsideTheMarks, AGreyOriginalKeepsItsValues) {
  for (const auto format : {QImage::Format_Grayscale8, QImage::Format_Mono}) {
    Workshop shop;
    const QString original = shop.original(encodePng(noise(format)));
    expectOnlyTheInsideChanges(original, shop.confined(original));
  }
}

TEST(OutsideTheMarks, AnOriginalWithAPaletteKeepsItsColours) {
  Workshop shop;
  QImage image = noise(QImage::Format_Indexed8);
  std::mt19937 random(9);
  QList<QRgb> palette;
  for (int i = 0; i < 256; ++i) palette << (QRgb(random()) | (i % 3 != 0 ? 0xff000000U : 0U));
  image.setColorTable(palette);
  const QString original = shop.original(encodePng(image));
  ASSERT_EQ(decodeUpright(original).format(), QImage::Format_Indexed8);
  expectOnlyTheInsideChanges(original, shop.confined(original));
}

/// A picture without harsh edges, which two decoders of subsampled colour would draw differently.
QImage softRamp() {
  QImage image(pictureSize, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, qRgb(40 + 2 * x, 200 - 2 * y, 90 + x - y));
  return image;
}

TEST(OutsideTheMarks, AnHeicOriginalKeepsItsPixels) {
  Workshop shop;
  const QByteArray heic = sorvan::test::heif(softRamp(), sorvan::test::HeifCodec::hevc);
  const QString original = shop.original(heic, QStringLiteral("original.heic"));
  const QString confined = shop.confined(original);
  // The other decoder agrees on what we wrote with what the pixels of the HEIC picture were, to the bit.
  const QString pixels = shop.png(QStringLiteral("pixels.png"), decodeUpright(original));
  expectOnlyTheInsideChanges(pixels, confined);
  // On the HEIC picture itself it differs by its own rounding and its own way to spread colour.
  const QByteArray theirs = secondDecoding(original);
  const QByteArray ours = secondDecoding(confined);
  ASSERT_EQ(theirs.size(), ours.size());
  for (qsizetype row = 0; row < 12; ++row)
    for (qsizetype i = row * 90 * 8 + 1; i < (row + 1) * 90 * 8; i += 2)  // the upper half of each value
      ASSERT_NEAR(uchar(theirs[i]), uchar(ours[i]), 6) << row;
}

TEST(OutsideTheMarks, APhotographHeldUprightByItsTagIsUprightWithoutOne) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    Workshop shop;
    const QSize stored = orientation > 4 ? pictureSize.transposed() : pictureSize;
    const QImage image = sorvan::test::cornerMarked(stored);
    const QString original =
        shop.original(sorvan::test::pngWithOrientation(image, orientation), QStringLiteral("turned.png"));
    const QString confined = shop.confined(original);
    EXPECT_EQ(probePicture(confined)->orientation, 1);
    const QImage before = decodeUpright(original).convertToFormat(QImage::Format_RGB32);
    const QImage after = decodeUpright(confined).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(after.size(), pictureSize);
    EXPECT_EQ(after.copy(0, 0, 90, 12), before.copy(0, 0, 90, 12)) << orientation;
    EXPECT_EQ(after.pixelColor(25, 25), QColor(10, 200, 30)) << orientation;
  }
}

TEST(OutsideTheMarks, AJpegStaysAsItDecodes) {
  Workshop shop;
  const QString original = shop.original(sorvan::test::jpegWithOrientation(sorvan::test::cornerMarked({60, 90}), 6),
                                         QStringLiteral("a.jpg"));
  expectOnlyTheInsideChanges(original, shop.confined(original));
}

TEST(OutsideTheMarks, EverythingAroundAPatchStaysToo) {
  Workshop shop;
  const QString original = shop.original(encodePng(noise(QImage::Format_ARGB32, {900, 600})));
  const std::vector<MarkupBox> boxes{box(0.4, 0.4, 0.05, 0.1)};
  const auto patch = planPatch(boxes, {900, 600}, {QStringLiteral("1024x1024")});
  ASSERT_TRUE(patch);
  const MarkedRoute route{900, 600, patch};
  const QString confined = shop.confined(original, boxes, route);
  ASSERT_FALSE(confined.isEmpty());
  const Comparison comparison = compared(original, confined, boxes, {900, 600}, patch->rect());
  EXPECT_EQ(comparison.changedOutside, 0);
  EXPECT_EQ(comparison.inside, 43 * 58);
  EXPECT_EQ(comparison.changedInside, comparison.inside);
  EXPECT_EQ(decodeUpright(confined).pixelColor(380, 270), QColor(10, 200, 30));
}

TEST(OutsideTheMarks, AThousandBoxesChangeNothing) {
  Workshop shop;
  std::vector<MarkupBox> boxes;
  for (int i = 0; i < 1000; ++i) boxes.push_back(box((i % 37) / 37.0 - 0.1, (i % 41) / 41.0, 0.07, 0.09));
  boxes.resize(1000);
  const QString original = shop.original(encodePng(noise(QImage::Format_ARGB32)));
  EXPECT_EQ(compared(original, shop.confined(original, boxes), boxes).changedOutside, 0);
}

TEST(OutsideTheMarks, BoxesOfNoSizeOrOutsideThePictureLeaveAllOfIt) {
  Workshop shop;
  const QString original = shop.original(encodePng(noise(QImage::Format_ARGB32)));
  const std::vector<MarkupBox> boxes{box(0.5, 0.5, 0, 0), box(2, 2, 1, 1), box(-1, -1, 0.5, 0.5)};
  const QString confined = shop.confined(original, boxes);
  ASSERT_FALSE(confined.isEmpty());
  EXPECT_EQ(secondDecoding(confined), secondDecoding(original));
}

TEST(ConfinedPictures, NeedBoxesAndPicturesThatCanBeRead) {
  Workshop shop;
  const QString picture = shop.original(encodePng(noise(QImage::Format_RGB32)));
  const QString text = shop.file(QStringLiteral("text.png"), "no picture");
  EXPECT_TRUE(confinedPicture(picture, picture, twoBoxes, {}));
  EXPECT_FALSE(confinedPicture(picture, picture, {}, {}));
  EXPECT_FALSE(confinedPicture(text, picture, twoBoxes, {}));
  EXPECT_FALSE(confinedPicture(picture, text, twoBoxes, {}));
  EXPECT_FALSE(confinedPicture(picture, picture + u'x', twoBoxes, {}));
  EXPECT_FALSE(confinedPicture(picture, picture, twoBoxes, MarkedRoute{91, 60, {}}));
}

TEST(ConfinedPictures, TakeResultsWhoseShapeIsOffByLessThanThreePercent) {
  EXPECT_TRUE(fitsShape({1029, 1000}, {500, 500}));
  EXPECT_FALSE(fitsShape({1031, 1000}, {500, 500}));
  EXPECT_TRUE(fitsShape({971, 1000}, {500, 500}));
  EXPECT_FALSE(fitsShape({969, 1000}, {500, 500}));
  EXPECT_FALSE(fitsShape({}, {500, 500}));
  const QImage original = plain({500, 500}, Qt::white);
  EXPECT_TRUE(laidInside(twoBoxes, original, plain({1029, 1000}, Qt::red), original.rect()));
  EXPECT_FALSE(laidInside(twoBoxes, original, plain({1031, 1000}, Qt::red), original.rect()));
}

TEST(ConfinedPictures, HaveTheOriginalsSizeWhateverTheResultsIs) {
  const QImage original = plain(pictureSize, Qt::white);
  for (const QSize size : {QSize(9, 6), QSize(900, 600), QSize(91, 60)}) {
    const auto picture = laidInside(twoBoxes, original, plain(size, Qt::red), original.rect());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), pictureSize);
    EXPECT_EQ(picture->pixelColor(25, 25), QColor(Qt::red));
    EXPECT_EQ(picture->pixelColor(2, 2), QColor(Qt::white));
  }
}

TEST(ConfinedPictures, SoftenTheEdgeOfABoxByHalves) {
  const QImage original = plain({100, 100}, Qt::black);
  const auto picture = laidInside({box(0.1, 0.1, 0.5, 0.5)}, original, plain({100, 100}, Qt::white), original.rect());
  EXPECT_EQ(qRed(picture->pixel(10, 30)), 0);
  EXPECT_NEAR(qRed(picture->pixel(11, 30)), 128, 1);
  EXPECT_EQ(qRed(picture->pixel(12, 30)), 255);
}

TEST(ConfinedPictures, LetTheOriginalShowThroughASeeThroughResult) {
  const QImage original = plain({100, 100}, Qt::black);
  const auto half =
      laidInside({box(0.1, 0.1, 0.5, 0.5)}, original, plain({100, 100}, QColor(255, 255, 255, 128)), original.rect());
  EXPECT_FALSE(half->hasAlphaChannel());
  EXPECT_NEAR(qRed(half->pixel(30, 30)), 128, 1);
  const auto none =
      laidInside({box(0.1, 0.1, 0.5, 0.5)}, original, plain({100, 100}, QColor(255, 0, 0, 0)), original.rect());
  EXPECT_EQ(none->pixel(30, 30), qRgb(0, 0, 0));
}

TEST(ConfinedPictures, FillTransparentPlacesOfTheOriginal) {
  QImage original({100, 100}, QImage::Format_ARGB32);
  original.fill(qRgba(0, 0, 255, 0));
  const auto picture = laidInside({box(0.1, 0.1, 0.5, 0.5)}, original, plain({100, 100}, Qt::red), original.rect());
  EXPECT_EQ(picture->pixel(30, 30), qRgba(255, 0, 0, 255));
  EXPECT_NEAR(qAlpha(picture->pixel(11, 30)), 128, 1);
  EXPECT_EQ(qRed(picture->pixel(11, 30)), 255);
  EXPECT_EQ(picture->pixel(5, 5), qRgba(0, 0, 255, 0));
}

void expectNear(const QColor& colour, int red, int green, int blue) {
  EXPECT_NEAR(colour.red(), red, 1);
  EXPECT_NEAR(colour.green(), green, 1);
  EXPECT_NEAR(colour.blue(), blue, 1);
}

TEST(ConfinedPictures, TakeTheResultsColoursIntoTheOriginalsSpace) {
  QImage wide = plain(pictureSize, Qt::white);
  wide.setColorSpace(QColorSpace::DisplayP3);
  const QImage standard = plain(pictureSize, Qt::red);
  // The red of sRGB stands at these values in Display P3.
  expectNear(laidInside(twoBoxes, wide, standard, wide.rect())->pixelColor(25, 25), 234, 51, 35);
  QImage wideRed = plain(pictureSize, QColor(234, 51, 35));
  wideRed.setColorSpace(QColorSpace::DisplayP3);
  const auto picture = laidInside(twoBoxes, plain(pictureSize, Qt::white), wideRed, wide.rect());
  expectNear(picture->pixelColor(25, 25), 255, 0, 0);
  EXPECT_FALSE(picture->colorSpace().isValid());
}

QByteArray bigEndian(quint32 number) {
  QByteArray bytes(4, '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

/// A profile of greys whose tones follow this power.
QByteArray greyProfile(double gamma) {
  const QByteArray white = QByteArray("XYZ \0\0\0\0", 8) + bigEndian(0xf6d6) + bigEndian(0x10000) + bigEndian(0xd32d);
  QByteArray curve = QByteArray("curv\0\0\0\0", 8) + bigEndian(1) + QByteArray(4, '\0');
  qToBigEndian(quint16(gamma * 256), curve.data() + 12);
  const QByteArray text = QByteArray("desc\0\0\0\0", 8) + bigEndian(5) + QByteArray("grey\0", 5) + QByteArray(79, '\0');
  const quint32 start = 128 + 4 + 3 * 12;
  QByteArray tags = bigEndian(3);
  tags += "wtpt" + bigEndian(start) + bigEndian(20);
  tags += "kTRC" + bigEndian(start + 20) + bigEndian(16);
  tags += "desc" + bigEndian(start + 36) + bigEndian(quint32(text.size()));
  QByteArray header = bigEndian(quint32(start + 36 + text.size())) + QByteArray(4, '\0') + bigEndian(0x02100000) +
                      "mntrGRAYXYZ " + QByteArray(12, '\0') + "acsp" + QByteArray(28, '\0') + bigEndian(0xf6d6) +
                      bigEndian(0x10000) + bigEndian(0xd32d) + QByteArray(48, '\0');
  return header + tags + white + curve + text;
}

TEST(ConfinedPictures, OfGreyOriginalsWithAProfileKeepValuesAndTones) {
  Workshop shop;
  const QByteArray chunk =
      sorvan::test::pngChunk("iCCP", QByteArray("grey\0\0", 6) + qCompress(greyProfile(1.0)).mid(4));
  QByteArray rows;
  for (int y = 0; y < 60; ++y) rows += char(0) + QByteArray(90, char(40 + y));
  const QString original = shop.original(sorvan::test::rawPng(pictureSize, 8, 0, rows, chunk));
  const QImage decoded = decodeUpright(original);
  ASSERT_TRUE(decoded.colorSpace().isValid());
  const QString confined = shop.confined(original);
  expectOnlyTheInsideChanges(original, confined);
  // A linear 188 looks as 222 in sRGB does.
  const QColorTransform look = decodeUpright(confined).colorSpace().transformationToColorSpace(QColorSpace::SRgb);
  const QRgba64 seen = look.map(QRgba64::fromRgba(188, 188, 188, 255));
  EXPECT_NEAR(seen.green8(), 222, 1);
  EXPECT_NEAR(seen.red8(), seen.blue8(), 1);
  // What is laid in has its own colours there.
  const QColor laid = decodeUpright(confined).pixelColor(25, 25);
  const QRgba64 back = look.map(QRgba64::fromRgba(uchar(laid.red()), uchar(laid.green()), uchar(laid.blue()), 255));
  EXPECT_NEAR(back.green8(), 200, 2);
}

TEST(CroppedPictures, AreThePixelsOfTheUprightPicture) {
  Workshop shop;
  const QImage image = noise(QImage::Format_ARGB32);
  const QString file = shop.png(QStringLiteral("a.png"), image);
  EXPECT_EQ(decodeUpright(croppedPicture(file, {10, 20, 30, 40})), image.copy(10, 20, 30, 40));
  const QString turned =
      shop.file(QStringLiteral("t.jpg"), sorvan::test::jpegWithOrientation(sorvan::test::cornerMarked({60, 90}), 6));
  const QByteArray piece = croppedPicture(turned, {80, 0, 10, 10});
  EXPECT_EQ(probePicture(piece)->orientation, 1);
  EXPECT_EQ(decodeUpright(piece).pixelColor(5, 5), decodeUpright(turned).pixelColor(85, 5));
}

TEST(CroppedPictures, AreInTheColoursThatAModelExpects) {
  Workshop shop;
  QImage wide = plain(pictureSize, QColor(234, 51, 35));
  wide.setColorSpace(QColorSpace::DisplayP3);
  const QImage piece = decodeUpright(croppedPicture(shop.png(QStringLiteral("a.png"), wide), {0, 0, 9, 9}));
  expectNear(piece.pixelColor(4, 4), 255, 0, 0);
}

TEST(CroppedPictures, SayWhatCannotBeCut) {
  Workshop shop;
  const QString file = shop.png(QStringLiteral("a.png"), plain(pictureSize, Qt::red));
  const QString text = shop.file(QStringLiteral("text.png"), "no picture");
  const QString sentence = QStringLiteral("Cannot read the image to mark up.");
  EXPECT_EQ(failureOf([&] { croppedPicture(text, {0, 0, 1, 1}); }), sentence);
  EXPECT_EQ(failureOf([&] { croppedPicture(file, {80, 0, 11, 10}); }), sentence);
  EXPECT_EQ(failureOf([&] { croppedPicture(file, {}); }), sentence);
  EXPECT_EQ(failureOf([&] { annotatedPicture(text, twoBoxes); }), sentence);
}

TEST(AnnotatedPictures, HaveRedBoxesWithWhiteNumbers) {
  Workshop shop;
  const QString file = shop.png(QStringLiteral("a.png"), plain({500, 400}, Qt::blue));
  const QImage picture = decodeUpright(annotatedPicture(file, {box(0.2, 0.25, 0.4, 0.5)}));
  const QColor red = QColor::fromRgbF(0.93F, 0.11F, 0.14F);
  expectNear(picture.pixelColor(200, 200), 0, 0, 255);
  expectNear(picture.pixelColor(400 * 3 / 4, 100), red.red(), red.green(), red.blue());
  expectNear(picture.pixelColor(100, 250), red.red(), red.green(), red.blue());
  expectNear(picture.pixelColor(102, 102), red.red(), red.green(), red.blue());
  int white = 0;
  for (int y = 100; y < 122; ++y)
    for (int x = 100; x < 122; ++x) white += picture.pixelColor(x, y).lightness() > 240 ? 1 : 0;
  EXPECT_GT(white, 5);
}

TEST(AnnotatedPictures, AreAtMost4096PixelsLong) {
  Workshop shop;
  const QString file = shop.png(QStringLiteral("a.png"), plain({5000, 50}, Qt::blue));
  EXPECT_EQ(probePicture(annotatedPicture(file, twoBoxes))->size.width(), 4096);
}

TEST(AnnotatedPictures, TakeAThousandBoxesAndThoseOutside) {
  Workshop shop;
  const QString file = shop.png(QStringLiteral("a.png"), plain({300, 200}, Qt::blue));
  std::vector<MarkupBox> boxes(1000, box(3, -3, 0.1, 0.1));
  boxes.push_back(box(0, 0, 0, 0));
  EXPECT_EQ(probePicture(annotatedPicture(file, boxes))->size, QSize(300, 200));
}

}  // namespace
}  // namespace sorvan::generation
