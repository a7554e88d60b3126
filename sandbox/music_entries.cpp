// Models that play music.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "text-to-audio";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field count(const char* name, int least, int most) { return whole(name, least, most, least).without("default"); }

Sheet elevenLabs() {
  return {.input = {prompt().with("maxLength", 4100), count("music_length_ms", 1000, 600000).orNull(),
                    flag("force_instrumental", false), flag("respect_sections_durations", true),
                    oneOf("output_format", {"mp3_22050_32", "mp3_44100_128", "pcm_44100"}, "mp3_44100_128")},
          .output = soundOut()};
}

Sheet lyria() {
  return {.input = {prompt(), text("negative_prompt").startingWith("low quality"), seed()}, .output = soundOut()};
}

Sheet miniMax() {
  return {.input = {prompt().with("minLength", 1).with("maxLength", 2000),
                    text("lyrics").with("minLength", 1).with("maxLength", 3500).required(),
                    whole("duration", 5, 360, 60), oneOf("audio_format", {"mp3", "wav"}, "mp3")},
          .output = soundOut()};
}

Sheet song() {
  return {
      .input = {prompt().with("maxLength", 1024), text("lyrics").with("maxLength", 3000).orNull(),
                oneOf("gender", {"female", "male"}, nullptr).orNull(), oneOf("model", {"auto", "mureka-9.5"}, "auto")},
      .output = soundOut("audio", "AudioFile")};
}

Sheet instrumental() {
  return {.input = {prompt().with("maxLength", 1024), oneOf("model", {"auto", "mureka-9.5"}, "auto")},
          .output = soundOut("audio", "AudioFile")};
}

Sheet stable25() {
  return {.input = {prompt(), whole("seconds_total", 1, 190, 190), whole("num_inference_steps", 4, 8, 8),
                    real("guidance_scale", 1, 25, 1), syncMode(), seed()},
          .output = {object("audio", "File").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet stable3() {
  return {.input = {prompt(), real("duration", 1, 380, 60).orNull(), text("negative_prompt").orNull(), seed(),
                    oneOf("output_format", {"wav", "mp3"}, "mp3")},
          .output = {object("audio", "AudioFile").required(), whole("seed", 0, 2147483647, 0).required()}};
}

}  // namespace

Entries musicEntries() {
  return {
      {"elevenlabs/music/v2.5", "ElevenLabs Music v2.5", kind, "Songs and instrumentals.", elevenLabs,
       price(0.8, u"minutes")},
      {"google/lyria-3.5", "Lyria 3.5", kind, "Rich, polished tracks.", lyria, price(0.06, u"30 seconds")},
      {"fal-ai/lyria3/pro", "Lyria 3 Pro", kind, "The top model of its family.", lyria, price(0.08, u"generations")},
      {"minimax/music-3", "MiniMax Music 3", kind, "Full songs.", miniMax, price(0.15, u"audios")},
      {"mureka/api/generate/song", "Mureka 9.5 Song", kind, "Full songs with vocals.", song, price(0.045, u"requests")},
      {"mureka/api/generate/instrumental", "Mureka 9.5 Instrumental", kind, "Instrumental tracks.", instrumental,
       price(0.045, u"requests")},
      {"fal-ai/stable-audio-25/text-to-audio", "Stable Audio 2.5", kind, "Instrumentals and loops.", stable25, {}},
      {"fal-ai/stable-audio-3/medium/text-to-audio", "Stable Audio 3", kind, "Loops and textures.", stable3,
       price(0.12, u"")}};
}

}  // namespace sandbox
