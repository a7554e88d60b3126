// Makes the table of each maker's voices; `audio_voice` keeps them.
#pragma once

#include <vector>

#include "catalogue/audio_voice.h"

namespace sorvan::catalogue {

std::vector<AudioVoice> elevenLabsVoices();
std::vector<AudioVoice> geminiVoices();
std::vector<AudioVoice> miniMaxVoices();
std::vector<AudioVoice> kokoroVoices();
std::vector<AudioVoice> grokVoices();
std::vector<AudioVoice> fishVoices();
std::vector<AudioVoice> sarvamVoices();
std::vector<AudioVoice> inworldVoices();

}  // namespace sorvan::catalogue
