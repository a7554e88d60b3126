// What plays samples.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "platform/room.h"

namespace sorvan::platform {

/// Asks for samples at its own pace and tells which of them are heard by now. Always 48,000 samples a second in two
/// interleaved channels.
class SoundOutput {
 public:
  static constexpr int samplesPerSecond = 48'000;
  static constexpr int channels = 2;

  enum class State {
    opening,  ///< the device is being looked for
    ready,
    absent  ///< there is no device, or it was lost: nothing will be asked for any more
  };
  /// Fills the whole span; `first` is the number of its first sample since `start`, counted in one channel. Called on
  /// the output's own thread: it must not block.
  using Fill = std::function<void(std::span<float> samples, qint64 first)>;

  virtual ~SoundOutput() = default;

  /// Any thread.
  virtual State state() const = 0;
  /// Asks for samples from now on, counted from zero. Does not block. The owner's thread, like `stop`.
  virtual void start(Fill fill) = 0;
  /// Asks for no more and drops what was not heard. When it returns, the fill is called no more.
  virtual void stop() = 0;
  /// Seconds of samples that were heard since `start`; empty before the first one is. Any thread.
  virtual std::optional<double> heardSeconds() const = 0;
};

/// The desktop's sound device. It is looked for on a thread of its own, so that nobody waits for it.
std::unique_ptr<SoundOutput> openSoundDevice();

}  // namespace sorvan::platform
