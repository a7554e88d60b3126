// A sound track decoded frame by frame, before any conversion. For the sources of this room only.
#pragma once

#include <stop_token>

#include "platform/ffmpeg.h"

namespace sorvan::platform {

/// One pass over the first sound track of a file. Throws SorvanError "This sound could not be read." when it cannot be
/// opened.
class SoundDecoder {
 public:
  SoundDecoder(const QString& path, std::stop_token stop);

  const AVStream& stream() const { return *stream_; }
  /// The next decoded frame, which stays valid until the next call, or null after the last. Packets that do not decode
  /// are passed over.
  const AVFrame* next();
  /// Goes to a place at or before `seconds`, early enough for the decoder to be in swing there.
  void seek(double seconds);
  /// Where a frame begins, in seconds of the file.
  double secondsOf(const AVFrame& frame) const;
  /// True when any packet did not decode.
  bool stumbled() const { return stumbled_; }

 private:
  void feed();

  MediaInput input_;
  AVStream* stream_ = nullptr;
  MediaCodec decoder_;
  MediaPacket packet_ = makePacket();
  MediaFrame frame_ = makeFrame();
  std::stop_token stop_;
  bool stumbled_ = false;
  bool ended_ = false;  ///< the decoder has been told that no more packets come
};

}  // namespace sorvan::platform
