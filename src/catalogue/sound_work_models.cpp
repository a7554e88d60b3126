// The rows of tools that work on a sound, carry it on, or make sound for a clip. Bounds that no document of the
// endpoint names are not confirmed.
#include "catalogue/audio_model_parts.h"
#include "catalogue/audio_models.h"
#include "catalogue/sound_rows.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int keepOutLimit = 500;
constexpr int clipMusicLimit = 200;
constexpr qint64 longestStableSound = 380;  // 6 min 20 s in all
constexpr qint64 longestSmallAddition = 120;
constexpr qint64 longestMireloSound = 59;

FalModel onSound(const QString& id, const QString& name, const QString& summary) {
  FalModel model = soundRow(id, name, u"audio-to-audio"_s, summary);
  model.imageInput = SingleInput{u"audio_url"_s, true};
  model.audioInput = true;
  return model;
}

FalModel onClip(const QString& id, const QString& name, const QString& summary) {
  FalModel model = soundRow(id, name, u"video-to-audio"_s, summary);
  model.imageInput = SingleInput{u"video_url"_s, true};
  model.videoInput = true;
  model.promptRequired = false;
  return model;
}

TextInput keepOut() {
  return optionalText(u"negative_prompt"_s, u"Leave Out"_s, u"Optional: sounds to keep out"_s, keepOutLimit);
}

Setting seconds(const QString& field, const QString& label, QStringList values, std::optional<QString> start,
                LengthBounds bounds) {
  Setting setting = lengthSetting(field, values, QString(), bounds);
  setting.label = label;
  setting.defaultValue = std::move(start);
  return setting;
}

FalModel cleanUp() {
  FalModel model = onSound(QString::fromUtf16(sound_ids::cleanUp), u"Clean Up"_s,
                           u"VEED · takes out background noise and room echo, and evens the level"_s);
  model.hasPrompt = false;
  model.billedEvery = 60;
  return model;
}

FalModel splitParts() {
  FalModel model = onSound(QString::fromUtf16(sound_ids::splitParts), u"Split into Parts"_s,
                           u"Demucs · vocals, drums, bass, guitar, piano and the rest, each as a sound of its own"_s);
  model.hasPrompt = false;
  return model;
}

FalModel pullOut() {
  return onSound(QString::fromUtf16(sound_ids::pullOut), u"Pull Out a Sound"_s,
                 u"SAM Audio · the sound you describe, and everything else, as two sounds"_s);
}

FalModel outpainting(const QString& id, const QString& name, const QString& summary, qint64 most) {
  FalModel model = onSound(id, name, summary);
  model.promptRequired = false;
  const QStringList steps{u"5"_s, u"10"_s, u"20"_s, u"30"_s, u"60"_s};
  const LengthBounds bounds{0, most, BoundSource::summary};
  model.settings = {seconds(u"extend_seconds_after"_s, u"Add After"_s, steps, u"10"_s, bounds),
                    seconds(u"extend_seconds_before"_s, u"Add Before"_s, steps, std::nullopt, bounds)};
  model.texts = {keepOut()};
  return model;
}

FalModel mireloExtend() {
  FalModel model = onSound(u"mirelo-ai/sfx1.6/extend-audio"_s, u"Mirelo SFX 1.6 Extend"_s,
                           u"Mirelo · a natural tail for a sound effect of 3 to 59 seconds, a minute in all"_s);
  model.promptField = u"text_prompt"_s;
  model.promptRequired = false;
  model.settings = {seconds(u"append_duration"_s, u"Add After"_s, {u"1"_s, u"3"_s, u"5"_s, u"10"_s}, u"5"_s,
                            {1, longestMireloSound, BoundSource::summary})};
  model.defaultsJSON = uR"({"num_samples":1,"upload_audio_format":"mp3","ambience":false})"_s;
  return model;
}

FalModel mireloClip() {
  FalModel model = onClip(u"mirelo-ai/sfx2.0/video-to-audio"_s, u"Mirelo"_s,
                          u"Mirelo · sound effects that follow the action, keeping any speech, up to a minute"_s);
  model.promptField = u"text_prompt"_s;
  model.settings = {
      lengthSetting(u"duration"_s, {u"5"_s, u"10"_s, u"30"_s, u"60"_s}, u"10"_s, {1, 60, BoundSource::summary})};
  model.defaultsJSON = uR"({"num_samples":2,"upload_audio_format":"mp3","preserve_speech":true})"_s;
  return model;
}

FalModel klingClip() {
  FalModel model = onClip(u"fal-ai/kling-video/video-to-audio"_s, u"Kling Video to Audio"_s,
                          u"Kling · effects and background music together, one price a clip of 3 to 20 seconds"_s);
  model.promptField = u"sound_effect_prompt"_s;
  model.promptLimit = clipMusicLimit;
  model.texts = {optionalText(u"background_music_prompt"_s, u"Background Music"_s,
                              u"Optional: the music to play under the sound"_s, clipMusicLimit)};
  return model;
}

FalModel hunyuanClip() {
  FalModel model = onClip(u"fal-ai/hunyuan-video-foley"_s, u"Hunyuan Video Foley"_s,
                          u"Tencent · Foley that follows each movement on screen, up to a minute"_s);
  model.promptField = u"text_prompt"_s;
  model.defaultsJSON = uR"({"text_prompt":"the natural sounds of what happens on screen"})"_s;
  model.texts = {keepOut()};
  return model;
}

FalModel mmaudioClip() {
  FalModel model =
      onClip(u"fal-ai/mmaudio-v2"_s, u"MMAudio"_s, u"MMAudio · quick, low-cost sound for drafts, up to 30 seconds"_s);
  model.settings = {
      lengthSetting(u"duration"_s, {u"4"_s, u"8"_s, u"15"_s, u"30"_s}, u"8"_s, {1, 30, BoundSource::summary})};
  model.defaultsJSON = uR"({"prompt":"","num_steps":25})"_s;
  model.texts = {keepOut()};
  return model;
}

FalModel soniloMusic() {
  FalModel model = onClip(u"sonilo/v1.1/video-to-music"_s, u"Sonilo Video to Music"_s,
                          u"Sonilo · music scored to the clip's cuts and motion"_s);
  model.defaultsJSON = uR"({"num_samples":1})"_s;
  return model;
}

}  // namespace

std::vector<FalModel> soundToolRows() { return {cleanUp(), splitParts(), pullOut()}; }

std::vector<FalModel> extendRows() {
  return {
      outpainting(u"fal-ai/stable-audio-3/medium/audio-outpainting"_s, u"Stable Audio 3"_s,
                  u"Stability AI · carries music or a sound on, before or after, up to 6 min 20 s in all"_s,
                  longestStableSound),
      outpainting(u"fal-ai/stable-audio-3/small/music/audio-outpainting"_s, u"Stable Audio 3 Small Music"_s,
                  u"Stability AI · made for music, quicker and lower-cost, up to 2 minutes added"_s,
                  longestSmallAddition),
      outpainting(u"fal-ai/stable-audio-3/small/sfx/audio-outpainting"_s, u"Stable Audio 3 Small SFX"_s,
                  u"Stability AI · made for sound effects, low-cost, up to 2 minutes added"_s, longestSmallAddition),
      mireloExtend()};
}

std::vector<FalModel> clipEffectRows() {
  return {mireloClip(), klingClip(), hunyuanClip(),
          onClip(u"sonilo/v1.1/video-to-sound-effects"_s, u"Sonilo Video to Sound Effects"_s,
                 u"Sonilo · effects timed to each scene, keeping speech, up to a minute"_s),
          mmaudioClip()};
}

std::vector<FalModel> clipMusicRows() { return {soniloMusic()}; }

}  // namespace sorvan::catalogue
