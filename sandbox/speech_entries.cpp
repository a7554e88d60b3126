// Models that speak.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "text-to-speech";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field words(const char* name) { return text(name).about("What is spoken.").required(); }

Field soundFormats(const char* start) {
  return oneOf("output_format",
               {"mp3_22050_32", "mp3_44100_32", "mp3_44100_64", "mp3_44100_96", "mp3_44100_128", "mp3_44100_192",
                "pcm_16000", "pcm_24000", "pcm_44100", "opus_48000_128"},
               start);
}

Sheet elevenLabs() {
  return {.input = {words("text").with("minLength", 1).with("maxLength", 5000),
                    text("voice").startingWith("Rachel").with("examples", json::array{"Aria", "Roger", "Sarah"}),
                    real("stability", 0, 1, 0.5), real("speed", 0.7, 1.2, 1), flag("timestamps", false),
                    text("language_code").orNull(), soundFormats("mp3_44100_128")},
          .output = {object("audio", "File").required(), objects("timestamps", "File").orNull()}};
}

Sheet dialogue() {
  return {.input = {objects("inputs", "DialogueBlock").with("maxItems", 200).required(),
                    real("stability", 0, 1, 0.5).orNull(), flag("use_speaker_boost", true).orNull(),
                    whole("seed", 0, 2147483647, 0).without("default").orNull()},
          .output = {object("audio", "File").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet gemini() {
  return {
      .input = {words("prompt").with("maxLength", 8000),
                oneOf("voice", {"Achernar", "Achird",     "Algenib",     "Algieba",      "Alnilam",   "Aoede",
                                "Autonoe",  "Callirrhoe", "Charon",      "Despina",      "Enceladus", "Erinome",
                                "Fenrir",   "Gacrux",     "Iapetus",     "Kore",         "Laomedeia", "Leda",
                                "Orus",     "Puck",       "Pulcherrima", "Rasalgethi",   "Sadachbia", "Sadaltager",
                                "Schedar",  "Sulafat",    "Umbriel",     "Vindemiatrix", "Zephyr",    "Zubenelgenubi"},
                      "Kore"),
                text("style_instructions").orNull(), real("temperature", 0, 2, 1),
                oneOf("output_format", {"mp3", "wav", "ogg_opus"}, "mp3")},
      .output = soundOut()};
}

Sheet miniMax() {
  return {
      .input = {words("prompt").with("maxLength", 10000),
                object("voice_setting", "VoiceSetting").about("How the voice speaks."),
                oneOf("language_boost",
                      {"Afrikaans",  "Arabic",    "Bulgarian", "Catalan",   "Chinese",    "Chinese,Yue", "Croatian",
                       "Czech",      "Danish",    "Dutch",     "English",   "Finnish",    "French",      "German",
                       "Greek",      "Hebrew",    "Hindi",     "Hungarian", "Indonesian", "Italian",     "Japanese",
                       "Korean",     "Malay",     "Norwegian", "Polish",    "Portuguese", "Romanian",    "Russian",
                       "Slovak",     "Slovenian", "Spanish",   "Swedish",   "Thai",       "Turkish",     "Ukrainian",
                       "Vietnamese", "auto"},
                      nullptr)
                    .orNull(),
                oneOf("output_format", {"url", "hex"}, "hex")},
      .output = {object("audio", "File").required(),
                 whole("duration_ms", 0, 2147483647, 0).without("default").required()}};
}

Sheet inworld() {
  return {.input = {words("text").with("maxLength", 2000), text("voice").startingWith("Craig (en)"),
                    real("temperature", 0, 2, 1).orNull()},
          .output = soundOut("audio", "AudioFile")};
}

Sheet grok() {
  return {.input = {words("text").with("maxLength", 15000), oneOf("voice", {"ara", "eve", "leo", "rex", "sal"}, "eve"),
                    text("language").startingWith("auto"), object("output_format", "SoundFormat").orNull()},
          .output = soundOut()};
}

Sheet fish() {
  return {.input = {words("text"),
                    text("reference_id").orNull().with("examples", json::array{"933563129e564b19a115bedd57b7406a"}),
                    oneOf("format", {"mp3", "wav", "opus"}, "mp3"), real("temperature", 0, 1, 0.7),
                    real("top_p", 0, 1, 0.7)},
          .output = soundOut()};
}

Sheet sarvam() {
  return {.input = {words("text").with("maxLength", 2500), text("speaker").startingWith("shubh"),
                    oneOf("language_code",
                          {"hi-IN", "bn-IN", "ta-IN", "te-IN", "gu-IN", "kn-IN", "ml-IN", "mr-IN", "pa-IN", "od-IN",
                           "en-IN"},
                          "hi-IN"),
                    real("pace", 0.5, 2, 1)},
          .output = soundOut()};
}

Sheet kokoro() {
  return {.input = {words("prompt"), oneOf("voice", {"hf_alpha", "hf_beta", "hm_omega", "hm_psi"}, "hf_alpha"),
                    real("speed", 0.1, 5, 1)},
          .output = soundOut()};
}

Sheet dia() { return {.input = {words("text")}, .output = soundOut()}; }

}  // namespace

Entries speechEntries() {
  return {
      {"elevenlabs/tts/eleven-v4-turbo", "Eleven v4 Turbo", kind, "Natural and quick.", elevenLabs,
       price(0.05, u"1000 characters")},
      {"elevenlabs/tts/eleven-v4", "Eleven v4", kind, "The most expressive.", elevenLabs,
       price(0.1, u"1000 characters ")},
      {"fal-ai/elevenlabs/text-to-dialogue/eleven-v3", "ElevenLabs Dialogue", kind, "A scene for several voices.",
       dialogue, price(0.1, u"1000 characters")},
      {"google/gemini-3.8-flash-tts", "Gemini 3.8 Flash TTS", kind, "Takes directions.", gemini,
       price(0.00002, u"1000 tokens")},
      {"google/gemini-3.8-flash-lite-tts", "Gemini 3.8 Flash Lite TTS", kind, "Takes directions, for less.", gemini,
       price(10, u"1m tokens")},
      {"fal-ai/minimax/speech-2.8-hd", "MiniMax Speech 2.8 HD", kind, "Lifelike, with emotions.", miniMax,
       price(0.1, u"1000 characters")},
      {"fal-ai/inworld-tts", "Inworld TTS-1.5 Max", kind, "Natural and low-priced.", inworld,
       price(0.01, u"1000 characters")},
      {"xai/tts/v1", "Grok TTS", kind, "Takes cues.", grok, price(0.015, u"1000 characters")},
      {"fish-audio/s2.1-pro", "Fish Audio S2.1 Pro", kind, "Natural and expressive.", fish,
       price(0.00002, u"characters")},
      {"sarvam/bulbul-v3", "Sarvam Bulbul v3", kind, "Indian voices.", sarvam,
       Price{2.5, QStringLiteral("1000 characters"), QStringLiteral("INR")}},
      {"fal-ai/kokoro/hindi", "Kokoro Hindi", kind, "Native Hindi voices.", kokoro, price(0.02, u"1000 characters")},
      {"fal-ai/dia-tts", "Dia", kind, "A dialogue of two voices.", dia, price(0.04, u"1000 characters")}};
}

}  // namespace sandbox
