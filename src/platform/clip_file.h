// Writing a clip to an MP4 file.
#pragma once

#include <memory>
#include <span>
#include <stop_token>

#include <QImage>
#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

enum class ClipQuality {
  best,    ///< for what stays in the library
  compact  ///< for what is only sent
};

struct ClipFormat {
  QSize size;  ///< pixels; odd numbers are made even by cutting one off
  double framesPerSecond = 24;
  ClipQuality quality = ClipQuality::best;
  int soundChannels = 0;  ///< 0 for a silent clip, else 1 or 2
  int samplesPerSecond = 48'000;
};

/// Encodes H.264 and AAC into an MP4 at a temporary path, tagged with its colour space. Any one thread; blocks. Every
/// failure is SorvanError "This clip could not be written.". Without a successful `finish` the file is removed with the
/// object. Nothing is synced. Picture and sound should come roughly in step, so that little has to wait in memory.
class ClipFileWriter {
 public:
  ClipFileWriter(const QString& path, const ClipFormat& format);
  ~ClipFileWriter();
  ClipFileWriter(const ClipFileWriter&) = delete;
  ClipFileWriter& operator=(const ClipFileWriter&) = delete;

  /// A picture shown from `seconds` on, scaled to the clip's size. One that is not later than the one before is left
  /// out.
  void writeFrame(const QImage& image, double seconds);
  /// Interleaved samples from -1 to 1, that go on where the ones before ended.
  void writeSound(std::span<const float> samples);
  void finish();

 private:
  class Encoding;
  std::unique_ptr<Encoding> encoding_;
};

/// Writes the clip again, upright, fitted inside `maximum` and never enlarged, with its sound, to a temporary MP4 at
/// `destination`. Failures as above, "This clip could not be read.", or Cancelled; then there is no file.
void writeClipWithin(const QString& clip, QSize maximum, const QString& destination, const std::stop_token& stop = {});

}  // namespace sorvan::platform
