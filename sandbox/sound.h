// A sound in memory.
#pragma once
#include <QByteArray>
#include <vector>

namespace sandbox {

struct Sound {
  int rate = 44100;  // frames a second
  int channels = 1;
  std::vector<float> samples;  // interleaved, -1 to 1

  qsizetype frames() const { return qsizetype(samples.size()) / channels; }
  double seconds() const { return double(frames()) / rate; }
};

// Scales the sound so that its loudest sample is `peak`; silence stays silence.
void normalise(Sound& sound, float peak);
Sound asStereo(const Sound& sound);

}  // namespace sandbox
