// Writing a sound to an M4A file.
#pragma once

#include <memory>
#include <span>

#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

/// Encodes samples to AAC in an M4A file at a temporary path. Any one thread; blocks. Every failure is SorvanError
/// "This sound could not be written.". Without a successful `finish` the file is removed with the object. Nothing is
/// synced.
class SoundFileWriter {
 public:
  /// `samplesPerSecond` is one that AAC knows, such as 44,100 or 48,000; 1 or 2 channels.
  SoundFileWriter(const QString& path, int samplesPerSecond, int channels);
  ~SoundFileWriter();
  SoundFileWriter(const SoundFileWriter&) = delete;
  SoundFileWriter& operator=(const SoundFileWriter&) = delete;

  /// Interleaved samples from -1 to 1, in pieces of any length.
  void write(std::span<const float> samples);
  /// Writes what is left and closes the file.
  void finish();

 private:
  class Encoding;
  std::unique_ptr<Encoding> encoding_;
};

}  // namespace sorvan::platform
