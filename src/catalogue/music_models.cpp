// The rows of music and sound effects. A length's bounds say where they come from; those that no document of the
// endpoint names are not confirmed.
#include "catalogue/audio_model_parts.h"
#include "catalogue/sound_rows.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int lyricsLimit = 3000;
constexpr int keepOutLimit = 500;
constexpr LengthBounds unbounded{};

LengthBounds upTo(qint64 seconds) { return {1, seconds, BoundSource::summary}; }

TextInput keepOut() {
  return optionalText(u"negative_prompt"_s, u"Leave Out"_s, u"Optional: what it should not have"_s, keepOutLimit);
}

TextInput lyrics(bool required) {
  TextInput text =
      optionalText(u"lyrics"_s, u"Lyrics"_s, u"The words to be sung, with [Verse] and [Chorus] lines"_s, lyricsLimit);
  text.required = required;
  return text;
}

FalModel music(const QString& id, const QString& name, const QString& summary) {
  return soundRow(id, name, u"text-to-music"_s, summary);
}

FalModel effect(const QString& id, const QString& name, const QString& summary) {
  return soundRow(id, name, u"text-to-sound-effect"_s, summary);
}

FalModel elevenMusic() {
  FalModel model = music(u"elevenlabs/music/v2.5"_s, u"ElevenLabs Music v2.5"_s,
                         u"ElevenLabs · songs with vocals or instrumentals, up to three minutes"_s);
  const LengthBounds threeMinutes{1000, 180000, BoundSource::summary};
  model.settings = {
      lengthSetting(u"music_length_ms"_s, {u"15000"_s, u"30000"_s, u"60000"_s, u"90000"_s, u"120000"_s, u"180000"_s},
                    u"60000"_s, threeMinutes),
      toggleSetting(u"force_instrumental"_s, u"Instrumental"_s)};
  model.billedPerMinute = true;
  return model;
}

FalModel lyria(const QString& id, const QString& name, const QString& summary) {
  FalModel model = music(id, name, summary);
  model.texts = {keepOut()};
  return model;
}

FalModel miniMaxMusic() {
  FalModel model = music(u"minimax/music-3"_s, u"MiniMax Music 3"_s, u"MiniMax · full songs sung to your own lyrics"_s);
  // No document names the bounds of this length: not confirmed.
  model.settings = {lengthSetting(u"duration"_s, {u"30"_s, u"60"_s, u"90"_s, u"120"_s, u"180"_s}, u"60"_s, unbounded)};
  model.texts = {lyrics(true)};
  return model;
}

FalModel murekaSong() {
  FalModel model = music(u"mureka/api/generate/song"_s, u"Mureka 9.5 Song"_s,
                         u"Mureka · full songs with vocals, to your lyrics or its own"_s);
  Setting singer = choiceSetting(u"gender"_s, u"Singer"_s, {u"female"_s, u"male"_s});
  singer.onlyWith = u"lyrics"_s;
  model.settings = {singer};
  model.texts = {lyrics(false)};
  return model;
}

FalModel stableMusic() {
  FalModel model = music(u"fal-ai/stable-audio-25/text-to-audio"_s, u"Stable Audio 2.5"_s,
                         u"Stability AI · instrumentals and loops, made quickly"_s);
  // No document names the bounds of this length: not confirmed.
  model.settings = {
      lengthSetting(u"seconds_total"_s, {u"10"_s, u"30"_s, u"60"_s, u"90"_s, u"120"_s, u"180"_s}, u"60"_s, unbounded)};
  return model;
}

FalModel stableMusic3() {
  FalModel model = music(u"fal-ai/stable-audio-3/medium/text-to-audio"_s, u"Stable Audio 3"_s,
                         u"Stability AI · instrumentals, loops and textures, up to five minutes"_s);
  model.settings = {
      lengthSetting(u"duration"_s, {u"10"_s, u"30"_s, u"60"_s, u"120"_s, u"180"_s, u"300"_s}, u"60"_s, upTo(300))};
  model.texts = {keepOut()};
  return model;
}

FalModel stableEffect() {
  FalModel model = effect(u"fal-ai/stable-audio-3/small/sfx/text-to-audio"_s, u"Stable Audio 3 SFX"_s,
                          u"Stability AI · follows distinct events best, such as barks or knocks, up to two minutes"_s);
  model.settings = {lengthSetting(u"duration"_s, {u"5"_s, u"10"_s, u"30"_s, u"60"_s, u"120"_s}, u"5"_s, upTo(120))};
  model.texts = {keepOut()};
  return model;
}

FalModel elevenEffect() {
  FalModel model = effect(u"fal-ai/elevenlabs/sound-effects/v2"_s, u"ElevenLabs Sound Effects v2"_s,
                          u"ElevenLabs · crisp single effects, and the only one that loops, up to 22 seconds"_s);
  model.promptField = u"text"_s;
  // The document allows half a second to 22; a length here is a whole number.
  model.settings = {lengthSetting(u"duration_seconds"_s, {u"2"_s, u"5"_s, u"10"_s, u"15"_s, u"22"_s}, u"5"_s,
                                  {1, 22, BoundSource::published}),
                    toggleSetting(u"loop"_s, u"Seamless"_s)};
  return model;
}

FalModel mireloEffect() {
  FalModel model = effect(u"mirelo-ai/sfx2.0/text-to-audio"_s, u"Mirelo SFX 2.0"_s,
                          u"Mirelo · steady scenes and long ambiences rather than single events, up to two minutes"_s);
  model.settings = {lengthSetting(u"duration"_s, {u"5"_s, u"10"_s, u"30"_s, u"60"_s, u"120"_s}, u"10"_s, upTo(120))};
  model.promptField = u"text_prompt"_s;
  model.defaultsJSON = uR"({"num_samples":1,"upload_audio_format":"mp3"})"_s;
  return model;
}

FalModel mmaudio() {
  FalModel model = effect(u"fal-ai/mmaudio-v2/text-to-audio"_s, u"MMAudio v2"_s,
                          u"MMAudio · steady textures and ambiences at the lowest price, up to 30 seconds"_s);
  model.settings = {lengthSetting(u"duration"_s, {u"4"_s, u"8"_s, u"15"_s, u"30"_s}, u"8"_s, upTo(30))};
  model.texts = {keepOut()};
  return model;
}

FalModel cassette() {
  FalModel model = effect(u"cassetteai/sound-effects-generator"_s, u"CassetteAI SFX"_s,
                          u"CassetteAI · quick textures in about a second, for drafts, up to 30 seconds"_s);
  model.settings = {lengthSetting(u"duration"_s, {u"5"_s, u"10"_s, u"20"_s, u"30"_s}, u"10"_s, upTo(30))};
  return model;
}

}  // namespace

std::vector<FalModel> musicRows() {
  return {elevenMusic(),
          lyria(u"google/lyria-3.5"_s, u"Lyria 3.5"_s, u"Google · rich, polished tracks; the model sets the length"_s),
          lyria(u"fal-ai/lyria3/pro"_s, u"Lyria 3 Pro"_s, u"Google · Lyria's top model; the model sets the length"_s),
          miniMaxMusic(),
          murekaSong(),
          music(u"mureka/api/generate/instrumental"_s, u"Mureka 9.5 Instrumental"_s,
                u"Mureka · instrumental tracks in many styles"_s),
          stableMusic(),
          stableMusic3()};
}

std::vector<FalModel> effectRows() { return {stableEffect(), elevenEffect(), mireloEffect(), mmaudio(), cassette()}; }

}  // namespace sorvan::catalogue
