// The rows of speech. Prompt fields and value lists whose endpoint has no document at hand are not confirmed: they
// stand as the makers describe them, and a refusal of the service is shown as it comes.
#include "catalogue/audio_model_parts.h"
#include "catalogue/audio_models.h"
#include "catalogue/audio_voice.h"
#include "catalogue/sound_rows.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int speechPromptLimit = 5000;
constexpr int directionLimit = 500;

FalModel speech(const QString& id, const QString& name, const QString& summary, const QString& promptField) {
  FalModel model = soundRow(id, name, u"text-to-speech"_s, summary);
  if (promptField != u"prompt"_s) model.promptField = promptField;
  return model;
}

Setting voices(const QString& field, VoiceTable table, const QString& start) {
  return choiceSetting(field, voiceLabel(), voiceIds(table), start);
}

FalModel elevenLabs(const QString& id, const QString& name, const QString& summary) {
  FalModel model = speech(id, name, summary, u"text"_s);
  model.settings = {voices(u"voice"_s, VoiceTable::elevenLabs, u"Rachel"_s)};
  model.defaultsJSON = uR"({"output_format":"mp3_44100_128"})"_s;
  model.promptLimit = speechPromptLimit;
  return model;
}

FalModel elevenDialogue() {
  FalModel model = speech(QString::fromUtf16(sound_ids::elevenDialogue), u"ElevenLabs Dialogue"_s,
                          u"ElevenLabs · a scene for several voices; start each line with a name"_s, u"prompt"_s);
  model.dialogue = true;
  model.promptLimit = speechPromptLimit;
  return model;
}

FalModel gemini(const QString& id, const QString& name, const QString& summary) {
  FalModel model = speech(id, name, summary, u"prompt"_s);
  model.settings = {voices(u"voice"_s, VoiceTable::gemini, u"Kore"_s)};
  model.texts = {optionalText(u"style_instructions"_s, u"Direction"_s,
                              u"Optional: how to speak, such as “warm and unhurried”"_s, directionLimit)};
  return model;
}

QStringList miniMaxEmotions() {
  return {u"happy"_s, u"sad"_s, u"angry"_s, u"fearful"_s, u"disgusted"_s, u"surprised"_s, u"neutral"_s};
}

QStringList miniMaxLanguages() {
  return {u"auto"_s,        u"Afrikaans"_s,  u"Arabic"_s,     u"Bulgarian"_s, u"Catalan"_s, u"Chinese"_s,
          u"Chinese,Yue"_s, u"Croatian"_s,   u"Czech"_s,      u"Danish"_s,    u"Dutch"_s,   u"English"_s,
          u"Finnish"_s,     u"French"_s,     u"German"_s,     u"Greek"_s,     u"Hebrew"_s,  u"Hindi"_s,
          u"Hungarian"_s,   u"Indonesian"_s, u"Italian"_s,    u"Japanese"_s,  u"Korean"_s,  u"Malay"_s,
          u"Norwegian"_s,   u"Polish"_s,     u"Portuguese"_s, u"Romanian"_s,  u"Russian"_s, u"Slovak"_s,
          u"Slovenian"_s,   u"Spanish"_s,    u"Swedish"_s,    u"Thai"_s,      u"Turkish"_s, u"Ukrainian"_s,
          u"Vietnamese"_s};
}

FalModel miniMax() {
  FalModel model = speech(u"fal-ai/minimax/speech-2.8-hd"_s, u"MiniMax Speech 2.8 HD"_s,
                          u"MiniMax · lifelike, with emotions; Hindi and 35 more languages"_s, u"prompt"_s);
  model.settings = {voices(u"voice_setting.voice_id"_s, VoiceTable::miniMax, u"Wise_Woman"_s),
                    choiceSetting(u"voice_setting.emotion"_s, u"Emotion"_s, miniMaxEmotions()),
                    choiceSetting(u"language_boost"_s, u"Language"_s, miniMaxLanguages(), u"auto"_s)};
  model.defaultsJSON =
      uR"({"output_format":"url","voice_setting":{"voice_id":"Wise_Woman","speed":1,"vol":1,"pitch":0}})"_s;
  model.promptLimit = speechPromptLimit;
  return model;
}

FalModel inworld() {
  FalModel model = speech(u"fal-ai/inworld-tts"_s, u"Inworld TTS-1.5 Max"_s,
                          u"Inworld · natural and low-priced; English, Hindi and 12 more languages"_s, u"text"_s);
  model.settings = {voices(u"voice"_s, VoiceTable::inworld, u"Craig (en)"_s)};
  return model;
}

FalModel grok() {
  FalModel model = speech(u"xai/tts/v1"_s, u"Grok TTS"_s,
                          u"xAI · expressive and low-priced; takes cues like [pause] and <whisper>"_s, u"text"_s);
  QStringList languages = otherLanguageCodes();
  languages.prepend(u"auto"_s);
  model.settings = {voices(u"voice"_s, VoiceTable::grok, u"ara"_s),
                    choiceSetting(u"language"_s, u"Language"_s, languages, u"auto"_s)};
  model.defaultsJSON = uR"({"output_format":{"codec":"mp3","sample_rate":44100}})"_s;
  return model;
}

FalModel fish() {
  FalModel model = speech(u"fish-audio/s2.1-pro"_s, u"Fish Audio S2.1 Pro"_s,
                          u"Fish Audio · natural and expressive; English, Hindi, Bengali and more"_s, u"text"_s);
  model.settings = {voices(u"reference_id"_s, VoiceTable::fish, u"933563129e564b19a115bedd57b7406a"_s)};
  return model;
}

FalModel sarvam() {
  FalModel model = speech(u"sarvam/bulbul-v3"_s, u"Sarvam Bulbul v3"_s,
                          u"Sarvam · Indian voices in 11 Indian languages"_s, u"text"_s);
  model.settings = {voices(u"speaker"_s, VoiceTable::sarvam, u"shubh"_s),
                    choiceSetting(u"language_code"_s, u"Language"_s, sarvamLanguageCodes(), u"hi-IN"_s)};
  return model;
}

FalModel kokoro() {
  FalModel model = speech(u"fal-ai/kokoro/hindi"_s, u"Kokoro Hindi"_s,
                          u"Kokoro · native Hindi voices, clear and quick"_s, u"prompt"_s);
  model.settings = {voices(u"voice"_s, VoiceTable::kokoro, u"hf_alpha"_s)};
  return model;
}

FalModel dia() {
  FalModel model =
      speech(u"fal-ai/dia-tts"_s, u"Dia"_s, u"Nari Labs · a two-voice dialogue; mark lines [S1] and [S2]"_s, u"text"_s);
  model.promptLimit = speechPromptLimit;
  return model;
}

}  // namespace

std::vector<FalModel> speechRows() {
  return {elevenLabs(u"elevenlabs/tts/eleven-v4-turbo"_s, u"Eleven v4 Turbo"_s,
                     u"ElevenLabs · natural and quick, for narration and voice-overs"_s),
          elevenLabs(u"elevenlabs/tts/eleven-v4"_s, u"Eleven v4"_s,
                     u"ElevenLabs · most expressive; acts out cues like [whispers]"_s),
          elevenDialogue(),
          gemini(u"google/gemini-3.8-flash-tts"_s, u"Gemini 3.8 Flash TTS"_s,
                 u"Google · takes directions on how to speak: mood, pace, accent"_s),
          gemini(u"google/gemini-3.8-flash-lite-tts"_s, u"Gemini 3.8 Flash Lite TTS"_s,
                 u"Google · Gemini's voices and directions, for less"_s),
          miniMax(),
          inworld(),
          grok(),
          fish(),
          sarvam(),
          kokoro(),
          dia()};
}

}  // namespace sorvan::catalogue
