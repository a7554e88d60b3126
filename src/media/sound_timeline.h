// Which moment of a file is heard when.
#pragma once

#include <deque>
#include <mutex>
#include <optional>

#include "media/room.h"

namespace sorvan::media {

/// Maps seconds of output to seconds of the file. Silence that stands in for samples which are not decoded yet holds
/// the file's time still; silence behind the last sample does not. Any thread.
class SoundTimeline {
 public:
  explicit SoundTimeline(double from) : from_(from) {}

  /// From that second of output on, the file runs on from `media`.
  void runFrom(double output, double media);
  /// From that second of output on, the file stands still.
  void holdFrom(double output);
  /// The file's last sample was given out.
  void noteEnd(double media);

  /// The second of the file that is heard at that second of output.
  double mediaAt(double output);
  std::optional<double> end() const;

 private:
  struct Stretch {
    double output;
    double media;
    bool runs;
    double at(double second) const { return media + (runs ? std::max(0.0, second - output) : 0.0); }
  };
  mutable std::mutex mutex_;
  std::deque<Stretch> stretches_;
  double from_;  ///< what is heard before the first sample is
  std::optional<double> fileEnd_;
};

}  // namespace sorvan::media
