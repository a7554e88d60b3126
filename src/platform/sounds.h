// Sounds as values: measuring, reading samples as a stream, and taking the sound out of a clip. Plain functions that
// may run on any thread; they block, so they belong on the pool. The first sound track of a file is the one that is
// used.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <stop_token>

#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

struct SoundFacts {
  std::optional<double> duration;  ///< seconds; counted from the packets where the header does not tell
  int samplesPerSecond = 0;        ///< in the file
  int channels = 0;                ///< in the file
};

/// SorvanError "This sound could not be read." for what has no sound track.
SoundFacts probeSound(const QString& path);

/// Which samples to read and how: the reader converts rate and channels.
struct SoundRange {
  double fromSeconds = 0;
  double lengthSeconds = std::numeric_limits<double>::infinity();
  int samplesPerSecond = 48'000;
  int channels = 1;  ///< samples come interleaved
};

/// Gives the samples of the range to `take`, in order and in pieces of at most some thousands, so that memory stays
/// small however long the sound is; exact to the sample at both ends. Pieces are only valid during the call. An
/// exception of `take` ends the reading and is passed on. SorvanError "This sound could not be read.", also when the
/// file breaks off in a way that leaves no sample; Cancelled on stop. Without a single sample `take` is never called.
void readSound(const QString& path, const SoundRange& range, const std::function<void(std::span<const float>)>& take,
               const std::stop_token& stop = {});
/// The same in 16-bit integers.
void readSound16(const QString& path, const SoundRange& range,
                 const std::function<void(std::span<const std::int16_t>)>& take, const std::stop_token& stop = {});

/// Writes the sound track of a clip as an M4A file to `destination`, a temporary file that may exist already and is not
/// synced. AAC is copied as it is, anything else is encoded to AAC. SorvanError "This clip has no sound." or "This
/// sound could not be written."; after a failure or Cancelled there is no file.
void writeSoundTrack(const QString& clip, const QString& destination, const std::stop_token& stop = {});

}  // namespace sorvan::platform
