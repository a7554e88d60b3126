#include "catalogue/audio_voice.h"

#include <array>

#include "catalogue/voice_tables.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

using Table = std::vector<AudioVoice>;

const std::array<Table, 8>& allTables() {
  static const std::array<Table, 8> tables{elevenLabsVoices(), geminiVoices(), miniMaxVoices(), kokoroVoices(),
                                           fishVoices(),       sarvamVoices(), grokVoices(),    inworldVoices()};
  return tables;
}

AudioVoice voiceOf(const QString& id) {
  for (const Table& table : allTables()) {
    for (const AudioVoice& voice : table) {
      if (voice.id == id) return voice;
    }
  }
  return AudioVoice{id, QString(), std::nullopt, std::nullopt};
}

const Setting* voiceSetting(const FalModel& model) {
  if (!model.settings) return nullptr;
  for (const Setting& setting : *model.settings) {
    if (setting.label == voiceLabel()) return &setting;
  }
  return nullptr;
}

struct Language {
  const char16_t* code;
  const char16_t* name;
};

constexpr std::array sarvamLanguages{Language{u"hi-IN", u"Hindi"},   Language{u"en-IN", u"English (India)"},
                                     Language{u"bn-IN", u"Bengali"}, Language{u"gu-IN", u"Gujarati"},
                                     Language{u"kn-IN", u"Kannada"}, Language{u"ml-IN", u"Malayalam"},
                                     Language{u"mr-IN", u"Marathi"}, Language{u"od-IN", u"Odia"},
                                     Language{u"pa-IN", u"Punjabi"}, Language{u"ta-IN", u"Tamil"},
                                     Language{u"te-IN", u"Telugu"}};

constexpr std::array otherLanguages{Language{u"en", u"English"},
                                    Language{u"ar-EG", u"Arabic (Egypt)"},
                                    Language{u"ar-SA", u"Arabic (Saudi Arabia)"},
                                    Language{u"ar-AE", u"Arabic (United Arab Emirates)"},
                                    Language{u"bn", u"Bengali"},
                                    Language{u"zh", u"Chinese"},
                                    Language{u"fr", u"French"},
                                    Language{u"de", u"German"},
                                    Language{u"hi", u"Hindi"},
                                    Language{u"id", u"Indonesian"},
                                    Language{u"it", u"Italian"},
                                    Language{u"ja", u"Japanese"},
                                    Language{u"ko", u"Korean"},
                                    Language{u"pt-BR", u"Portuguese (Brazil)"},
                                    Language{u"pt-PT", u"Portuguese (Portugal)"},
                                    Language{u"ru", u"Russian"},
                                    Language{u"es-MX", u"Spanish (Mexico)"},
                                    Language{u"es-ES", u"Spanish (Spain)"},
                                    Language{u"tr", u"Turkish"},
                                    Language{u"vi", u"Vietnamese"}};

template <class Languages>
QStringList codesOf(const Languages& languages) {
  QStringList codes;
  for (const Language& language : languages) codes << QString::fromUtf16(language.code);
  return codes;
}

template <class Languages>
std::optional<QString> nameIn(const Languages& languages, const QString& code) {
  for (const Language& language : languages) {
    if (QStringView(language.code) == code) return QString::fromUtf16(language.name);
  }
  return std::nullopt;
}

}  // namespace

QString voiceGroupTitle(AudioVoice::Group group) {
  if (group == AudioVoice::Group::women) return u"Women"_s;
  return group == AudioVoice::Group::men ? u"Men"_s : u"Neutral"_s;
}

const std::vector<AudioVoice>& voices(VoiceTable table) {
  const auto& [elevenLabs, gemini, miniMax, kokoro, fish, sarvam, grok, inworld] = allTables();
  switch (table) {
    case VoiceTable::elevenLabs:
      return elevenLabs;
    case VoiceTable::gemini:
      return gemini;
    case VoiceTable::miniMax:
      return miniMax;
    case VoiceTable::kokoro:
      return kokoro;
    case VoiceTable::fish:
      return fish;
    case VoiceTable::sarvam:
      return sarvam;
    case VoiceTable::grok:
      return grok;
    case VoiceTable::inworld:
      return inworld;
  }
  return elevenLabs;
}

QStringList voiceIds(VoiceTable table) {
  QStringList ids;
  for (const AudioVoice& voice : voices(table)) ids << voice.id;
  return ids;
}

QString voiceLabel() { return u"Voice"_s; }

std::optional<QString> voiceField(const FalModel& model) {
  const Setting* setting = voiceSetting(model);
  if (!setting) return std::nullopt;
  return setting->field;
}

std::vector<AudioVoice> offeredVoices(const FalModel& model) {
  std::vector<AudioVoice> offered;
  const Setting* setting = voiceSetting(model);
  if (!setting) return offered;
  for (const QString& id : setting->values) offered.push_back(voiceOf(id));
  return offered;
}

QString languageName(const QString& code) {
  if (const auto name = nameIn(sarvamLanguages, code)) return *name;
  return nameIn(otherLanguages, code).value_or(code);
}

QStringList sarvamLanguageCodes() { return codesOf(sarvamLanguages); }
QStringList otherLanguageCodes() { return codesOf(otherLanguages); }

}  // namespace sorvan::catalogue
