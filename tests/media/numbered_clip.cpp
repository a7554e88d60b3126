#include "media/numbered_clip.h"

#include <QColor>
#include <QPainter>

#include <vector>

#include "platform/clip_file.h"

namespace sorvan::test {
namespace {

constexpr int bits = 12;
constexpr int square = 16;  // pixels; large enough to survive the encoder
constexpr int rate = 48'000;

QImage numbered(int number) {
  QImage image(bits * square, square, QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  for (int bit = 0; bit < bits; ++bit) {
    if (number >> bit & 1) painter.fillRect(bit * square, 0, square, square, Qt::white);
  }
  return image;
}

// One frame's worth of samples: silence, or a loud tone at the start of a whole second.
std::vector<float> samplesOf(int frame) {
  std::vector<float> samples(size_t(rate / framesPerSecond), 0.0f);
  if (frame % framesPerSecond != 0) return samples;
  for (size_t index = 0; index < samples.size(); ++index) samples[index] = index / 24 % 2 == 0 ? 0.8f : -0.8f;
  return samples;
}

}  // namespace

void makeNumberedClip(const QString& path, int frames, bool sound) {
  platform::ClipFileWriter writer(path, {.size = {bits * square, square},
                                         .framesPerSecond = framesPerSecond,
                                         .soundChannels = sound ? 1 : 0,
                                         .samplesPerSecond = rate});
  for (int frame = 0; frame < frames; ++frame) {
    writer.writeFrame(numbered(frame), double(frame) / framesPerSecond);
    if (sound) writer.writeSound(samplesOf(frame));
  }
  writer.finish();
}

int numberOn(const QImage& frame) {
  int number = 0;
  const int step = frame.width() / bits;
  for (int bit = 0; bit < bits; ++bit) {
    if (qGray(frame.pixel(bit * step + step / 2, frame.height() / 2)) > 128) number |= 1 << bit;
  }
  return number;
}

}  // namespace sorvan::test
