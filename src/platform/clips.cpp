#include "platform/clips.h"

#include "base/sorvan_error.h"
#include "platform/media_texts.h"
#include "platform/picture_track.h"

namespace sorvan::platform {
namespace {

[[noreturn]] void refuse() { throw SorvanError(texts::clipUnreadable()); }

double rateOf(const AVStream& stream) {
  const AVRational rate = stream.avg_frame_rate.num > 0 ? stream.avg_frame_rate : stream.r_frame_rate;
  return rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0;
}

/// The last frame that begins at `seconds` or before, else the first there is.
MediaFrame frameShownAt(PictureTrack& track, double seconds) {
  constexpr double rounding = 1e-4;
  MediaFrame shown;
  while (MediaFrame frame = track.next()) {
    if (shown && track.secondsOf(*frame) > seconds + rounding) break;
    shown = std::move(frame);
    if (track.secondsOf(*shown) >= seconds - rounding) break;
  }
  return shown;
}

MediaFrame lastOf(PictureTrack& track) {
  MediaFrame last;
  while (MediaFrame frame = track.next()) last = std::move(frame);
  return last;
}

}  // namespace

ClipFacts probeClip(const QString& path) {
  const MediaInput input = openMedia(path);
  if (!input) refuse();
  ClipFacts facts{.duration = durationOf(input), .hasSound = firstStream(input, AVMEDIA_TYPE_AUDIO) != nullptr};
  const AVStream* picture = firstStream(input, AVMEDIA_TYPE_VIDEO);
  if (picture == nullptr && !facts.hasSound) refuse();
  if (picture == nullptr) return facts;
  facts.hasPicture = true;
  facts.framesPerSecond = rateOf(*picture);
  facts.size = squaredSize(*picture);
  if (swapsSides(displayTurn(*picture))) facts.size.transpose();
  return facts;
}

QImage frameAt(const QString& path, double seconds, std::optional<QSize> maximum, const std::stop_token& stop) {
  PictureTrack track(path, seconds > 0 ? DecodingThreads::all : DecodingThreads::one, stop);
  if (seconds > 0) track.seek(seconds);
  MediaFrame frame = frameShownAt(track, seconds);
  if (!frame) {
    track.rewind();
    frame = frameShownAt(track, seconds);
  }
  if (!frame) refuse();
  PixelScaler scaler;
  return uprightImage(*frame, track.stream(), maximum, scaler);
}

QImage lastFrame(const QString& path, const std::stop_token& stop) {
  constexpr double tail = 0.5;  // seconds
  PictureTrack track(path, DecodingThreads::all, stop);
  track.seek(track.duration().value_or(0) - tail);
  MediaFrame frame = lastOf(track);
  if (!frame) {
    track.rewind();
    frame = lastOf(track);
  }
  if (!frame) refuse();
  PixelScaler scaler;
  return uprightImage(*frame, track.stream(), {}, scaler);
}

}  // namespace sorvan::platform
