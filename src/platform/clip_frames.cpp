#include "platform/clip_frames.h"

#include "platform/picture_track.h"

namespace sorvan::platform {

class ClipFrames::Reading {
 public:
  Reading(const QString& path, std::optional<QSize> maximum, std::stop_token stop)
      : track_(path, DecodingThreads::all, std::move(stop)), maximum_(maximum) {}

  std::optional<ClipFrame> next() {
    const MediaFrame frame = take();
    if (!frame) return std::nullopt;
    return ClipFrame{uprightImage(*frame, track_.stream(), maximum_, scaler_), track_.secondsOf(*frame)};
  }

  void seek(double seconds) {
    track_.seek(seconds);
    skipTo(seconds);
    if (waiting_) return;
    // Some containers seek behind their last key frame: go through all of it then.
    track_.rewind();
    skipTo(seconds);
  }

 private:
  MediaFrame take() {
    if (waiting_) return std::exchange(waiting_, std::exchange(following_, nullptr));
    return track_.next();
  }

  /// Decodes on until the frame after the wanted one is known, and keeps both.
  void skipTo(double seconds) {
    constexpr double rounding = 1e-4;
    waiting_.reset();
    following_ = track_.next();
    while (following_ && (!waiting_ || track_.secondsOf(*following_) <= seconds + rounding)) {
      waiting_ = std::move(following_);
      following_ = track_.next();
    }
  }

  PictureTrack track_;
  std::optional<QSize> maximum_;
  PixelScaler scaler_;
  MediaFrame waiting_;    ///< what `next` gives first
  MediaFrame following_;  ///< what it gives then
};

ClipFrames::ClipFrames(const QString& path, std::optional<QSize> maximum, std::stop_token stop)
    : reading_(std::make_unique<Reading>(path, maximum, std::move(stop))) {}
ClipFrames::~ClipFrames() = default;
ClipFrames::ClipFrames(ClipFrames&&) noexcept = default;
ClipFrames& ClipFrames::operator=(ClipFrames&&) noexcept = default;

std::optional<ClipFrame> ClipFrames::next() { return reading_->next(); }
void ClipFrames::seek(double seconds) { reading_->seek(seconds); }

}  // namespace sorvan::platform
