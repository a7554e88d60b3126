#include "catalogue/sample_media.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include <cmath>

namespace sorvan::test {

namespace {

QImage colours(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) image.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, (x * y) % 256));
  }
  return image;
}

QByteArray encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format, 90);
  return bytes;
}

template <class T>
QByteArray little(T value) {
  QByteArray bytes(sizeof(T), '\0');
  qToLittleEndian(value, bytes.data());
  return bytes;
}

}  // namespace

QByteArray samplePng(QSize size) { return encoded(colours(size), "png"); }
QByteArray sampleJpeg(QSize size) { return encoded(colours(size), "jpg"); }

QByteArray sampleWav(double seconds) {
  constexpr int rate = 8000;
  QByteArray samples;
  for (int index = 0; index < static_cast<int>(seconds * rate); ++index) {
    samples += little(static_cast<qint16>(12000 * std::sin(index * 0.35)));
  }
  const auto length = static_cast<quint32>(samples.size());
  return "RIFF" + little(36 + length) + "WAVEfmt " + little(quint32{16}) + little(quint16{1}) + little(quint16{1}) +
         little(quint32{rate}) + little(quint32{rate * 2}) + little(quint16{2}) + little(quint16{16}) + "data" +
         little(length) + samples;
}

QByteArray boxes(std::initializer_list<std::pair<const char*, int>> list) {
  QByteArray bytes;
  for (const auto& [name, length] : list) {
    QByteArray size(4, '\0');
    qToBigEndian(static_cast<quint32>(length), size.data());
    bytes += size + name + QByteArray(length - 8, 'x');
  }
  return bytes;
}

}  // namespace sorvan::test
