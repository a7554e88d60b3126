#include "platform/picture_rows.h"

#include <gtest/gtest.h>

namespace sorvan::platform {
namespace {

QImage ramp(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      image.setPixel(x, y, qRgb(x * 255 / size.width(), y * 255 / size.height(), 7));
  return image;
}

QRgb pixelAt(const quint8* row, int column) {
  const quint8* pixel = row + ptrdiff_t(column) * 4;
  return qRgba(pixel[2], pixel[1], pixel[0], pixel[3]);
}

TEST(ScaledRows, PassAPictureOfTheRightSizeThrough) {
  const QImage image = ramp({40, 30});
  ScaledRows<quint8> rows(image, image.size(), {5, 4, 10, 10});
  EXPECT_EQ(pixelAt(rows.row(6), 2), image.pixel(7, 6));
}

TEST(ScaledRows, KeepAPlainColourAtAnySize) {
  for (const QSize size : {QSize(1, 1), QSize(3, 200), QSize(500, 7), QSize(1999, 11)}) {
    QImage image({37, 23}, QImage::Format_ARGB32);
    image.fill(qRgba(200, 100, 50, 130));
    ScaledRows<quint8> rows(image, size, QRect(QPoint(), size));
    for (int y = 0; y < size.height(); ++y) {
      const quint8* row = rows.row(y);
      for (int x = 0; x < size.width(); ++x) ASSERT_EQ(pixelAt(row, x), qRgba(200, 100, 50, 130)) << x << "," << y;
    }
  }
}

TEST(ScaledRows, FollowARampUpAndDown) {
  for (const QSize size : {QSize(400, 300), QSize(20, 15)}) {
    ScaledRows<quint8> rows(ramp({100, 75}), size, QRect(QPoint(), size));
    const QPoint middle(size.width() / 2, size.height() / 2);
    const QRgb pixel = pixelAt(rows.row(middle.y()), middle.x());
    EXPECT_NEAR(qRed(pixel), ((middle.x() + 0.5) / size.width() - 0.005) * 255, 2);
    EXPECT_NEAR(qGreen(pixel), ((middle.y() + 0.5) / size.height() - 0.5 / 75) * 255, 2);
    EXPECT_EQ(qBlue(pixel), 7);
  }
}

TEST(ScaledRows, AreTheSameForAPartAndInAnyOrder) {
  const QSize size(333, 222);
  ScaledRows<quint8> whole(ramp({100, 75}), size, QRect(QPoint(), size));
  ScaledRows<quint8> part(ramp({100, 75}), size, {50, 60, 70, 80});
  for (const int y : {139, 60, 100, 61, 138}) {
    const QRgb inPart = pixelAt(part.row(y), 10);
    EXPECT_EQ(inPart, pixelAt(whole.row(y), 60)) << y;
  }
}

TEST(ScaledRows, NeverShowColoursUnderTransparency) {
  QImage image({2, 1}, QImage::Format_ARGB32);
  image.setPixel(0, 0, qRgba(0, 255, 0, 0));
  image.setPixel(1, 0, qRgba(255, 0, 0, 255));
  ScaledRows<quint8> rows(image, {8, 1}, {0, 0, 8, 1});
  const quint8* row = rows.row(0);
  for (int x = 0; x < 8; ++x) EXPECT_EQ(qGreen(pixelAt(row, x)), 0) << x;
}

TEST(ScaledRows, KeepSixteenBits) {
  QImage image({3, 3}, QImage::Format_RGBA64);
  image.fill(QColor::fromRgba64(1001, 20002, 60003, 65535));
  ScaledRows<quint16> rows(image, {50, 50}, {0, 0, 50, 50});
  const quint16* row = rows.row(25);
  EXPECT_EQ(row[100], 1001);
  EXPECT_EQ(row[101], 20002);
  EXPECT_EQ(row[102], 60003);
  EXPECT_EQ(row[103], 65535);
}

}  // namespace
}  // namespace sorvan::platform
