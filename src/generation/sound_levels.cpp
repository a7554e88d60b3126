#include <algorithm>
#include <cmath>

#include "base/sorvan_error.h"
#include "generation/sound_outputs.h"
#include "platform/sounds.h"

namespace sorvan::generation {

std::optional<double> peakDecibels(const QString& file, const std::stop_token& stop) {
  double peak = 0;
  bool opened = false;
  try {
    const SoundFacts facts = probeSound(file);
    opened = true;
    SoundRange all;
    all.samplesPerSecond = facts.samplesPerSecond;
    all.channels = facts.channels;
    readSound(
        file, all,
        [&peak](std::span<const float> samples) {
          for (const float sample : samples) peak = std::max(peak, std::abs(static_cast<double>(sample)));
        },
        stop);
  } catch (const SorvanError&) {
    if (!opened) return std::nullopt;
  }
  return decibelsOfPeak(peak);
}

}  // namespace sorvan::generation
