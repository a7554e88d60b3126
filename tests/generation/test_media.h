// Small real media for the tests of this room.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QDataStream>
#include <QImage>

#include "support/text_printers.h"

namespace sorvan::generation::test {

inline QByteArray pictureBytes(const QColor& colour = Qt::red, const char* format = "PNG", QSize size = {48, 32}) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

/// A tenth of a second of a square wave of this height (1 is full scale), 16 bits, one channel, 8,000 samples a second.
inline QByteArray wavBytes(double height) {
  constexpr quint32 count = 800;
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setByteOrder(QDataStream::LittleEndian);
  stream.writeRawData("RIFF", 4);
  stream << quint32(36 + count * 2);
  stream.writeRawData("WAVEfmt ", 8);
  stream << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(16000) << quint16(2) << quint16(16);
  stream.writeRawData("data", 4);
  stream << quint32(count * 2);
  const auto sample = static_cast<qint16>(height * 32767);
  for (quint32 i = 0; i < count; ++i) stream << (i % 20 < 10 ? sample : static_cast<qint16>(-sample));
  return bytes;
}

}  // namespace sorvan::generation::test
