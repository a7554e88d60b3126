#include "shell/views/picture_canvas.h"

#include <QColorSpace>
#include <QFile>
#include <QSignalSpy>

#include "shell/views/zoom_bar.h"
#include "support/temporary_folder.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class PictureCanvasTest : public Dressed {
 protected:
  QString picture(const QString& name, QSize size, const QColor& color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    const QString path = folder / name;
    EXPECT_TRUE(image.save(path));
    return path;
  }
  void showPicture(const QString& path) {
    show(canvas, {648, 448});  // 600 × 400 inside its padding
    canvas.setPicture(path, {}, u"A picture"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return canvas.percent() > 0; }, 10'000));
  }
  QColor inTheMiddle() { return canvas.grab().toImage().pixelColor(324, 224); }

  test::TemporaryFolder folder;
  ThumbnailStore thumbnails;
  PictureCanvas canvas{thumbnails};
};

TEST_F(PictureCanvasTest, ALargePictureFitsAndTellsItsSize) {
  showPicture(picture(u"wide.png"_s, {1200, 400}, Qt::darkCyan));
  EXPECT_TRUE(canvas.isFitted());
  EXPECT_EQ(canvas.percent(), 50);
  EXPECT_EQ(canvas.picturePlace().size(), QSizeF(600, 200));
}

TEST_F(PictureCanvasTest, ZGoesToOneScreenPixelForAPixelOfTheFileAndBack) {
  showPicture(picture(u"wide.png"_s, {3000, 1000}, Qt::darkCyan));
  canvas.toggleFit();
  EXPECT_EQ(canvas.percent(), 100);
  EXPECT_EQ(canvas.picturePlace().width(), 3000);
  ASSERT_TRUE(QTest::qWaitFor([this] { return canvas.showsFullSize(); }, 10'000));
  canvas.toggleFit();
  EXPECT_EQ(canvas.percent(), 20);
}

TEST_F(PictureCanvasTest, ZoomGoesInStepsAndStopsAtItsEnds) {
  showPicture(picture(u"wide.png"_s, {1200, 400}, Qt::darkCyan));
  canvas.zoomIn();
  EXPECT_EQ(canvas.percent(), 67);
  canvas.zoomIn();
  EXPECT_EQ(canvas.percent(), 100);
  canvas.zoomOut();
  canvas.zoomOut();
  EXPECT_EQ(canvas.percent(), 50);
  for (int turn = 0; turn < 30; ++turn) canvas.zoomIn();
  EXPECT_EQ(canvas.percent(), 800);
  for (int turn = 0; turn < 60; ++turn) canvas.zoomOut();
  EXPECT_EQ(canvas.percent(), 2);
}

TEST_F(PictureCanvasTest, APictureCannotBePushedOutOfSight) {
  showPicture(picture(u"wide.png"_s, {2000, 2000}, Qt::darkCyan));
  canvas.toggleFit();
  canvas.panBy({100'000, 100'000});
  EXPECT_TRUE(canvas.picturePlace().intersects(QRectF(canvas.rect())));
  EXPECT_GT(canvas.picturePlace().intersected(QRectF(canvas.rect())).width(), 300);
}

TEST_F(PictureCanvasTest, TheZoomBarShowsTheSizeAndChangesIt) {
  ZoomBar bar(canvas);
  showPicture(picture(u"wide.png"_s, {1200, 400}, Qt::darkCyan));
  EXPECT_EQ(bar.text(), u"50 %"_s);
  QTest::mouseClick(named<QWidget>(bar, u"Zoom In"_s), Qt::LeftButton);
  EXPECT_EQ(bar.text(), u"67 %"_s);
  QTest::mouseClick(named<QWidget>(bar, u"Fit"_s), Qt::LeftButton);
  EXPECT_EQ(bar.text(), u"50 %"_s);
}

TEST_F(PictureCanvasTest, TheZoomBarOffersNoStepBeyondTheEnds) {
  ZoomBar bar(canvas);
  showPicture(picture(u"wide.png"_s, {1200, 400}, Qt::darkCyan));
  const auto* more = named<QWidget>(bar, u"Zoom In"_s);
  const auto* less = named<QWidget>(bar, u"Zoom Out"_s);
  EXPECT_TRUE(more->isEnabled());
  EXPECT_TRUE(less->isEnabled());
  for (int turn = 0; turn < 30; ++turn) canvas.zoomIn();
  EXPECT_FALSE(more->isEnabled());
  EXPECT_TRUE(less->isEnabled());
  for (int turn = 0; turn < 60; ++turn) canvas.zoomOut();
  EXPECT_TRUE(more->isEnabled());
  EXPECT_FALSE(less->isEnabled());
}

// The same numbers mean a stronger red on a wide-gamut screen; on this one they must become its own numbers for it.
TEST_F(PictureCanvasTest, WideGamutPicturesAreShownInTheScreensColours) {
  QImage image(800, 600, QImage::Format_RGB32);
  image.fill(QColor(180, 90, 60));
  image.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
  const QString path = folder / u"p3.png"_s;
  ASSERT_TRUE(image.save(path));
  const QColor expected = image.convertedToColorSpace(QColorSpace(QColorSpace::SRgb)).pixelColor(0, 0);
  ASSERT_NE(expected, QColor(180, 90, 60));
  showPicture(path);
  ASSERT_TRUE(QTest::qWaitFor([&] { return inTheMiddle() == expected; }, 5000)) << inTheMiddle().name().toStdString();
  canvas.zoomIn();
  canvas.zoomIn();
  EXPECT_EQ(inTheMiddle(), expected);
}

TEST_F(PictureCanvasTest, AdobeRgbPicturesToo) {
  QImage image(3000, 900, QImage::Format_RGB32);
  image.fill(QColor(40, 160, 60));
  image.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
  const QString path = folder / u"adobe.png"_s;
  ASSERT_TRUE(image.save(path));
  const QColor expected = image.convertedToColorSpace(QColorSpace(QColorSpace::SRgb)).pixelColor(0, 0);
  ASSERT_NE(expected, QColor(40, 160, 60));
  showPicture(path);
  canvas.toggleFit();
  canvas.grab();  // asks for the pixels
  ASSERT_TRUE(QTest::qWaitFor([this] { return canvas.showsFullSize(); }, 10'000));
  EXPECT_NEAR(inTheMiddle().red(), expected.red(), 2);
  EXPECT_NEAR(inTheMiddle().green(), expected.green(), 2);
  EXPECT_NEAR(inTheMiddle().blue(), expected.blue(), 2);
}

TEST_F(PictureCanvasTest, AMissingFileSaysSoAndKeepsItsThumbnail) {
  show(canvas, {648, 448});
  canvas.setPicture(folder / u"gone.png"_s, picture(u"thumb.png"_s, {320, 200}, Qt::darkRed), u"Gone"_s);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !canvas.problem().isEmpty(); }, 5000));
  EXPECT_EQ(canvas.problem(), u"The original file is missing."_s);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !canvas.picturePlace().isEmpty(); }, 5000));
}

TEST_F(PictureCanvasTest, WhatIsNoPictureSaysSo) {
  folder.write(u"words.png"_s, QByteArray(4000, 'w'));
  show(canvas, {648, 448});
  canvas.setPicture(folder / u"words.png"_s, {}, u"Words"_s);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !canvas.problem().isEmpty(); }, 5000));
  EXPECT_EQ(canvas.problem(), u"This image could not be read."_s);
  EXPECT_EQ(canvas.percent(), 0);
}

TEST_F(PictureCanvasTest, ACutPictureIsShownAsFarAsItGoes) {
  QImage image(1600, 1200, QImage::Format_RGB32);
  for (int y = 0; y < 1200; ++y)
    for (int x = 0; x < 1600; ++x) image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
  const QString path = folder / u"cut.jpg"_s;
  ASSERT_TRUE(image.save(path, "JPG", 90));
  QFile bytes(path);
  ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
  ASSERT_TRUE(bytes.resize(bytes.size() / 2));
  bytes.close();
  showPicture(path);
  EXPECT_TRUE(canvas.problem().isEmpty());
  ASSERT_TRUE(QTest::qWaitFor([this] { return inTheMiddle().lightness() > 30 || canvas.showsFullSize(); }, 5000));
}

// A hundred megapixels: the preview comes first, and nothing that is asked of the canvas waits for the file.
TEST_F(PictureCanvasTest, NothingThatIsAskedOfAHugePictureWaitsForItsFile) {
  const QString path = picture(u"huge.png"_s, {12'000, 8300}, Qt::darkGreen);
  show(canvas, {648, 448});
  canvas.setPicture(path, {}, u"Huge"_s);
  EXPECT_EQ(canvas.percent(), 0) << "its head is not read yet";
  ASSERT_TRUE(QTest::qWaitFor([this] { return canvas.percent() == 5; }, 20'000)) << canvas.percent();
  canvas.toggleFit();
  canvas.grab();
  EXPECT_FALSE(canvas.showsFullSize()) << "its pixels are not read yet";
  EXPECT_EQ(canvas.percent(), 100);
  ASSERT_TRUE(QTest::qWaitFor([this] { return canvas.showsFullSize(); }, 60'000));
  const QPointF before = canvas.picturePlace().topLeft();
  canvas.panBy({-500, -300});
  canvas.grab();
  EXPECT_TRUE(canvas.showsFullSize()) << "it is not read again";
  EXPECT_EQ(canvas.picturePlace().topLeft(), before + QPointF(-500, -300));
}

}  // namespace
}  // namespace sorvan::views
