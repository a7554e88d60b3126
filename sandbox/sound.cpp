#include "sound.h"

#include <algorithm>
#include <cmath>

namespace sandbox {

void normalise(Sound& sound, float peak) {
  float loudest = 0;
  for (const float sample : sound.samples) loudest = std::max(loudest, std::abs(sample));
  if (loudest <= 0) return;
  for (float& sample : sound.samples) sample *= peak / loudest;
}

Sound asStereo(const Sound& sound) {
  if (sound.channels == 2) return sound;
  Sound stereo{sound.rate, 2, {}};
  stereo.samples.reserve(sound.samples.size() * 2);
  for (const float sample : sound.samples) stereo.samples.insert(stereo.samples.end(), {sample, sample});
  return stereo;
}

}  // namespace sandbox
