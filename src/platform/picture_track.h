// The picture track of a clip, decoded frame by frame. For the sources of this room only.
#pragma once

#include <stop_token>

#include <QImage>
#include <QTransform>

#include "platform/ffmpeg.h"

namespace sorvan::platform {

/// How the stored picture is turned for showing: quarter turns and mirrors, without scale or shift.
QTransform displayTurn(const AVStream& stream);
bool swapsSides(const QTransform& turn);
/// Square pixels as shown before the turn: the width is stretched by the shape of the stored pixels.
QSize squaredSize(const AVStream& stream);

/// One frame upright, RGB32, scaled down to fit inside `maximum`. The scaler is kept for the next frame of its shape.
QImage uprightImage(const AVFrame& frame, const AVStream& stream, std::optional<QSize> maximum, PixelScaler& scaler);

/// One pass over the picture track. Throws SorvanError "This clip could not be read." when there is none.
class PictureTrack {
 public:
  PictureTrack(const QString& path, DecodingThreads threads, std::stop_token stop);

  const AVStream& stream() const { return *stream_; }
  std::optional<double> duration() const { return durationOf(input_); }
  /// Goes to the key frame at or before `seconds`; to the start when the container cannot.
  void seek(double seconds);
  void rewind();
  /// The next frame that decodes whole, or null after the last. Packets that do not decode are passed over.
  MediaFrame next();
  double secondsOf(const AVFrame& frame) const;

 private:
  void restart();
  void feed();

  MediaInput input_;
  AVStream* stream_ = nullptr;
  MediaCodec decoder_;
  MediaPacket packet_ = makePacket();
  std::stop_token stop_;
};

}  // namespace sorvan::platform
