#include "views/spoken_sample.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <numbers>

#include "core/waveform.h"

namespace sorvan::views {

namespace {

constexpr int kRate = 8000;
constexpr int kSeconds = 4;

// A tone that comes and goes like syllables, some louder than others.
qint16 sampleAt(int index) {
  const double seconds = static_cast<double>(index) / kRate;
  const double syllable = std::abs(std::sin(seconds * std::numbers::pi * 1.5));
  const double sentence = 0.55 + 0.45 * std::sin(seconds * 7.3) * std::sin(seconds * 2.1);
  const double grain = 0.7 + 0.3 * std::sin(seconds * 91) * std::sin(seconds * 37);
  const double loudness = syllable * sentence * grain * 0.8;
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

QString inFolder(const QString& name) {
  static const QTemporaryDir folder;
  return folder.filePath(name);
}

}  // namespace

QString spokenSample() {
  const QString path = inFolder(QStringLiteral("spoken.wav"));
  if (!QFile::exists(path)) writeSound(path);
  return path;
}

QString spokenWave() {
  const QString path = inFolder(QStringLiteral("spoken.png"));
  if (!QFile::exists(path)) core::waveformPicture(spokenSample(), QSize(640, 400)).save(path);
  return path;
}

}  // namespace sorvan::views
