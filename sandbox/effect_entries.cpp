// Models that make sound effects out of words.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "text-to-audio";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Sheet stable() {
  return {.input = {prompt(), real("duration", 1, 120, 5), text("negative_prompt").orNull(), seed()},
          .output = {object("audio", "AudioFile").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet elevenLabs() {
  return {
      .input = {text("text").about("The text describing the sound effect to generate").required(),
                real("duration_seconds", 0.5, 22, 5).without("default").orNull(), real("prompt_influence", 0, 1, 0.3),
                oneOf("output_format",
                      {"mp3_22050_32", "mp3_44100_32", "mp3_44100_64", "mp3_44100_96", "mp3_44100_128", "mp3_44100_192",
                       "pcm_8000", "pcm_16000", "pcm_22050", "pcm_24000", "pcm_44100", "pcm_48000", "ulaw_8000",
                       "alaw_8000", "opus_48000_32", "opus_48000_64", "opus_48000_96", "opus_48000_128",
                       "opus_48000_192"},
                      "mp3_44100_128"),
                flag("loop", false)},
      .output = soundOut()};
}

Sheet mirelo() {
  return {.input = {text("text_prompt").required(), whole("num_samples", 1, 8, 2), real("duration", 1, 120, 10),
                    oneOf("upload_audio_format", {"mp3", "wav"}, "wav"), seed()},
          .output = {objects("audio", "AudioFile").required()}};
}

Sheet mmaudio() {
  return {.input = {prompt(), text("negative_prompt").startingWith(""), seed().with("minimum", 0),
                    whole("num_steps", 4, 50, 25), real("duration", 1, 30, 8), real("cfg_strength", 0, 20, 4.5),
                    flag("mask_away_clip", false)},
          .output = soundOut()};
}

Sheet cassette() {
  return {.input = {prompt(), whole("duration", 1, 30, 10)}, .output = soundOut("audio_file")};
}

}  // namespace

Entries effectEntries() {
  return {
      {"fal-ai/stable-audio-3/small/sfx/text-to-audio", "Stable Audio 3 SFX", kind, "Follows distinct events.", stable,
       price(0.001, u"seconds")},
      {"fal-ai/elevenlabs/sound-effects/v2",
       "ElevenLabs Sound Effects V2",
       kind,
       "Crisp single effects.",
       elevenLabs,
       {}},
      {"mirelo-ai/sfx2.0/text-to-audio", "Mirelo SFX 2.0", kind, "Steady scenes.", mirelo, price(0.007, u"seconds")},
      {"fal-ai/mmaudio-v2/text-to-audio", "MMAudio v2", kind, "Textures and ambiences.", mmaudio,
       price(0.001, u"seconds")},
      {"cassetteai/sound-effects-generator", "CassetteAI SFX", kind, "Quick textures.", cassette,
       price(0.01, u"generations")}};
}

}  // namespace sandbox
