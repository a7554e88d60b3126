#include "views/spoken_sample.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <numbers>

namespace sorvan::views {

namespace {

constexpr int kRate = 8000;
constexpr int kSeconds = 4;

// A tone that comes and goes like syllables.
qint16 sampleAt(int index) {
  const double seconds = static_cast<double>(index) / kRate;
  const double loudness = std::abs(std::sin(seconds * std::numbers::pi * 1.5)) * 0.8;
  return static_cast<qint16>(std::sin(seconds * 2 * std::numbers::pi * 220) * loudness * 32000);
}

void writeSound(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return;
  const quint32 bytes = kRate * kSeconds * 2;
  QDataStream out(&file);
  out.setByteOrder(QDataStream::LittleEndian);
  out.writeRawData("RIFF", 4);
  out << quint32(36 + bytes);
  out.writeRawData("WAVEfmt ", 8);
  out << quint32(16) << quint16(1) << quint16(1) << quint32(kRate) << quint32(kRate * 2) << quint16(2) << quint16(16);
  out.writeRawData("data", 4);
  out << bytes;
  for (int index = 0; index < kRate * kSeconds; ++index) out << sampleAt(index);
}

}  // namespace

QString spokenSample() {
  static const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("spoken.wav"));
  if (!QFile::exists(path)) writeSound(path);
  return path;
}

}  // namespace sorvan::views
