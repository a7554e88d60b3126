// One encoded stream of a file that is being written.
#pragma once
#include "coder.h"
#include "sound.h"

namespace sandbox {

class Track {
 public:
  // Takes an encoder that is set up but not opened, with options for it.
  Track(AVFormatContext* format, Codec codec, AVDictionary* options);
  // Encodes one frame, or with none what the encoder still holds, and writes the packets.
  void encode(AVFrame* frame);
  AVCodecContext* codec() const { return codec_.get(); }

 private:
  AVFormatContext* format_;
  AVStream* stream_;
  Codec codec_;
  Packet packet_;
};

// An encoder context of that name, with the flags that keep its output the same on every run.
Codec newEncoder(const char* name, const AVFormatContext* format);
// An encoder for the sound's rate and channels, taking planar floats.
Codec newSoundEncoder(const char* name, const AVFormatContext* format, const Sound& sound, int bitsASecond);
// The frame of `count` samples a channel from `at` on, as planar floats.
Frame soundFrame(const Sound& sound, qsizetype at, qsizetype count);

}  // namespace sandbox
