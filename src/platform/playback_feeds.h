// Pictures and samples of a file, decoded ahead of their moment on threads of the machine's.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include <QSize>
#include <QString>

#include "platform/clip_frames.h"

namespace sorvan::platform {

enum class FeedState {
  filling,  ///< nothing of the place that was asked for last is there yet
  ready,
  ended,  ///< everything up to the end was decoded; what was decoded may still wait to be taken
  failed
};

/// The frames of a clip, a few ahead. Made, used and destroyed by one thread, which never waits for the decoding.
class PictureFeed {
 public:
  /// Frames are scaled down to fit inside `maximum`, where that is not empty. `arrived` is called on a thread of the
  /// machine's when the first frame of a place is there, or when there will be none; it must not block.
  PictureFeed(const QString& path, QSize maximum, std::function<void()> arrived);
  ~PictureFeed();
  PictureFeed(const PictureFeed&) = delete;
  PictureFeed& operator=(const PictureFeed&) = delete;

  /// Goes on with the frame that is shown at `seconds`; frames of other places are dropped at once.
  void seek(double seconds);
  /// Frames of another size from the place at `seconds` on.
  void resize(QSize maximum, double seconds);
  /// The newest frame that is due at `seconds`, with the ones before it dropped; empty when there is none newer than
  /// the last one taken.
  std::optional<ClipFrame> takeDue(double seconds);
  /// The next frame, due or not.
  std::optional<ClipFrame> takeNext();
  FeedState state() const;
  /// How far the decoded frames reach, in seconds of the clip; empty while there is none.
  std::optional<double> reach() const;
  /// True when frames wait up to the limit or up to the end: more comes only after some were taken.
  bool isFull() const;

  struct Shared;

 private:
  std::shared_ptr<Shared> shared_;
};

/// The samples of a file at the rate and channels of SoundOutput, about a second ahead. `read` may be called on another
/// thread than the rest.
class SoundFeed {
 public:
  SoundFeed(const QString& path, std::function<void()> arrived);
  ~SoundFeed();
  SoundFeed(const SoundFeed&) = delete;
  SoundFeed& operator=(const SoundFeed&) = delete;

  void seek(double seconds);
  struct Piece {
    size_t samples = 0;   ///< how many of each channel were written
    double seconds = 0;   ///< where the first of them stands in the file
    bool ended = false;   ///< nothing comes after them
  };
  /// Writes interleaved samples, as many as are there. Never waits.
  Piece read(std::span<float> samples);
  FeedState state() const;
  bool isFull() const;

  struct Shared;

 private:
  std::shared_ptr<Shared> shared_;
};

}  // namespace sorvan::platform
