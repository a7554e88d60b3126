// Models that work on sounds, carry them on, or make sound for clips.
#include "entry.h"

namespace sandbox {

namespace {

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field sound() { return text("audio_url").about("URL of the audio file.").required(); }
Field clip() { return text("video_url").about("URL of the video.").required(); }

Sheet cleanUp() { return {.input = {sound().with("max_file_size", 209715200)}, .output = soundOut()}; }

Sheet stems() {
  const Words names{"vocals", "drums", "bass", "other", "guitar", "piano"};
  json::object element;
  element["enum"] = listOf(names);
  element["type"] = "string";
  Sheet sheet{.input = {sound(),
                        oneOf("model",
                              {"htdemucs", "htdemucs_ft", "htdemucs_6s", "hdemucs_mmi", "mdx", "mdx_extra", "mdx_q",
                               "mdx_extra_q"},
                              "htdemucs_6s"),
                        listOfTexts("stems").with("items", element).orNull().startingWith(listOf(names)),
                        whole("segment_length", 1, 60, 7).without("default").orNull(), whole("shifts", 1, 10, 1),
                        real("overlap", 0, 1, 0.25), oneOf("output_format", {"wav", "mp3"}, "mp3")},
              .output = {}};
  for (const char* name : names) sheet.output.push_back(object(name, "File").orNull());
  return sheet;
}

Sheet pullOut() {
  return {.input = {sound(), prompt(), flag("predict_spans", false), whole("reranking_candidates", 1, 4, 1),
                    oneOf("acceleration", {"fast", "balanced", "quality"}, "balanced"),
                    oneOf("output_format", {"wav", "mp3"}, "wav")},
          .output = {object("target", "File").required(), object("residual", "File").required(),
                     real("duration", 0, 3600, 0).without("default").required()}};
}

Sheet outpainting() {
  return {.input = {sound(), text("prompt").orNull(), real("extend_seconds_after", 0, 380, 10),
                    real("extend_seconds_before", 0, 380, 0), text("negative_prompt").orNull(), seed()},
          .output = {object("audio", "AudioFile").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet mireloExtend() {
  return {
      .input = {sound(), text("text_prompt").orNull(), real("append_duration", 1, 59, 5), whole("num_samples", 1, 8, 2),
                flag("ambience", false), oneOf("upload_audio_format", {"mp3", "wav"}, "wav"), seed()},
      .output = {objects("audio", "AudioFile").required()}};
}

Sheet mireloClip() {
  return {.input = {clip(), text("text_prompt").orNull(), whole("num_samples", 1, 8, 2), real("duration", 1, 60, 10),
                    flag("preserve_speech", false), oneOf("upload_audio_format", {"mp3", "wav"}, "wav"), seed()},
          .output = {objects("audio", "AudioFile").required()}};
}

Sheet kling() {
  return {.input = {clip(), text("sound_effect_prompt").with("maxLength", 200).orNull(),
                    text("background_music_prompt").with("maxLength", 200).orNull(), flag("asmr_mode", false)},
          .output = soundOut()};
}

Sheet hunyuan() {
  return {.input = {clip(), text("text_prompt").required(), text("negative_prompt").startingWith("noisy, harsh"),
                    real("guidance_scale", 1, 10, 4.5), whole("num_inference_steps", 10, 100, 50), seed()},
          .output = soundOut()};
}

Sheet sonilo() {
  return {.input = {clip(), text("prompt").orNull(), whole("num_samples", 1, 4, 1)}, .output = soundOut()};
}

Sheet mmaudio() {
  return {.input = {clip(), text("prompt").required(), text("negative_prompt").startingWith(""),
                    seed().with("minimum", 0), whole("num_steps", 4, 50, 25), real("duration", 1, 30, 8),
                    real("cfg_strength", 0, 20, 4.5), flag("mask_away_clip", false)},
          .output = soundOut()};
}

}  // namespace

Entries soundToolEntries() {
  const char* const sounds = "audio-to-audio";
  const char* const clips = "video-to-audio";
  return {{"veed/clean-audio", "Clean Audio", sounds, "Takes out noise and echo.", cleanUp, price(0.01, u"minutes")},
          {"fal-ai/demucs", "Demucs", sounds, "Vocals, drums, bass and the rest.", stems, {}},
          {"fal-ai/sam-audio/separate", "SAM Audio", sounds, "The sound that is described.", pullOut,
           price(0.05, u"30 seconds")},
          {"fal-ai/stable-audio-3/medium/audio-outpainting", "Stable Audio 3", sounds, "Carries a sound on.",
           outpainting, price(0.002, u"output seconds")},
          {"fal-ai/stable-audio-3/small/music/audio-outpainting", "Stable Audio 3 Small Music", sounds,
           "Carries music on.", outpainting, price(0.001, u"seconds")},
          {"fal-ai/stable-audio-3/small/sfx/audio-outpainting", "Stable Audio 3 Small SFX", sounds,
           "Carries effects on.", outpainting, price(0.001, u"seconds")},
          {"mirelo-ai/sfx1.6/extend-audio", "Mirelo SFX 1.6 Extend", sounds, "A natural tail.", mireloExtend,
           price(0.007, u"input seconds")},
          {"mirelo-ai/sfx2.0/video-to-audio", "Mirelo", clips, "Effects that follow the action.", mireloClip,
           price(0.007, u"seconds")},
          {"fal-ai/kling-video/video-to-audio", "Kling Video to Audio", clips, "Effects and music together.", kling,
           price(0.035, u"videos")},
          {"fal-ai/hunyuan-video-foley", "Hunyuan Video Foley", clips, "Foley that follows each movement.", hunyuan,
           price(0.01, u"seconds")},
          {"sonilo/v1.1/video-to-sound-effects", "Sonilo Video to Sound Effects", clips, "Effects timed to each scene.",
           sonilo, price(0.02, u"minute of video ")},
          {"fal-ai/mmaudio-v2", "MMAudio", clips, "Sound for drafts.", mmaudio, price(0.001, u"seconds")},
          {"sonilo/v1.1/video-to-music", "Sonilo Video to Music", clips, "Music to a clip's cuts.", sonilo,
           price(0.03, u"video segments")}};
}

}  // namespace sandbox
