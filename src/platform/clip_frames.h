// The frames of a clip, one after the other.
#pragma once

#include <memory>
#include <optional>
#include <stop_token>

#include <QImage>
#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

struct ClipFrame {
  QImage image;        ///< upright, RGB32
  double seconds = 0;  ///< from the clip's start
};

/// Reads a clip from front to back. Any one thread; blocks. Holds two frames at most. SorvanError "This clip could not
/// be read." when it has no picture; Cancelled on stop.
class ClipFrames {
 public:
  /// Frames are scaled down to fit inside `maximum`, never up.
  explicit ClipFrames(const QString& path, std::optional<QSize> maximum = {}, std::stop_token stop = {});
  ~ClipFrames();
  ClipFrames(ClipFrames&&) noexcept;
  ClipFrames& operator=(ClipFrames&&) noexcept;

  /// The next frame, or nothing after the last. Packets that do not decode are passed over.
  std::optional<ClipFrame> next();
  /// Lets `next` go on with the frame that is shown at `seconds`: the first one before the start, the last one after
  /// the end.
  void seek(double seconds);

 private:
  class Reading;
  std::unique_ptr<Reading> reading_;
};

}  // namespace sorvan::platform
