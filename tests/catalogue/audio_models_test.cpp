#include "catalogue/audio_models.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "catalogue/audio_voice.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

const FalModel& modelOf(const std::vector<FalModel>& models, const QString& id) {
  for (const FalModel& model : models) {
    if (model.id == id) return model;
  }
  throw std::runtime_error("no such model");
}

std::vector<FalModel> everySoundModel() {
  std::vector<FalModel> all;
  for (const auto* part :
       {&audioModels(AudioKind::voice), &audioModels(AudioKind::music), &audioModels(AudioKind::effect), &soundTools(),
        &extendModels(), &clipEffectModels(), &clipMusicModels()}) {
    all.insert(all.end(), part->begin(), part->end());
  }
  return all;
}

TEST(AudioModels, AllMakeOneSoundWithoutASize) {
  for (const FalModel& model : everySoundModel()) {
    EXPECT_EQ(model.output, MediaType::audio) << model.id.toStdString();
    EXPECT_EQ(model.maxCount, 1) << model.id.toStdString();
    EXPECT_EQ(model.sizing, Sizing(NoSizing{})) << model.id.toStdString();
  }
}

TEST(AudioModels, HaveDefaultsThatAreObjects) {
  for (const FalModel& model : everySoundModel()) {
    if (!model.defaultsJSON) continue;
    EXPECT_TRUE(QJsonDocument::fromJson(model.defaultsJSON->toUtf8()).isObject()) << model.id.toStdString();
  }
}

TEST(AudioModels, StartWithAValueThatIsValid) {
  for (const FalModel& model : everySoundModel()) {
    for (const Setting& setting : model.allSettings()) {
      if (setting.defaultValue) {
        EXPECT_TRUE(setting.isValid(*setting.defaultValue)) << (model.id + u' ' + setting.field).toStdString();
      }
      for (const QString& value : setting.values) EXPECT_TRUE(setting.isValid(value));
    }
  }
}

TEST(AudioModels, TellTheKindOfAModel) {
  EXPECT_EQ(audioKindOf(u"fal-ai/dia-tts"_s), AudioKind::voice);
  EXPECT_EQ(audioKindOf(u"minimax/music-3"_s), AudioKind::music);
  EXPECT_EQ(audioKindOf(u"cassetteai/sound-effects-generator"_s), AudioKind::effect);
  EXPECT_EQ(audioKindOf(u"fal-ai/demucs"_s), std::nullopt);
  EXPECT_EQ(audioKindName(AudioKind::effect), u"effect"_s);
}

TEST(AudioModels, LimitThePromptOfTheVoicesThatNameALimit) {
  QStringList limited;
  for (const FalModel& model : audioModels(AudioKind::voice)) {
    if (model.promptLimit == 5000) limited << model.id;
  }
  EXPECT_EQ(limited, (QStringList{u"elevenlabs/tts/eleven-v4-turbo"_s, u"elevenlabs/tts/eleven-v4"_s,
                                  u"fal-ai/elevenlabs/text-to-dialogue/eleven-v3"_s, u"fal-ai/minimax/speech-2.8-hd"_s,
                                  u"fal-ai/dia-tts"_s}));
}

TEST(AudioModels, BoundTheLengthsThatTheirSummariesName) {
  const auto& effects = audioModels(AudioKind::effect);
  const auto most = [&](const QString& id, const QString& field) {
    return modelOf(effects, id).setting(field)->accepts->upper;
  };
  EXPECT_EQ(most(u"fal-ai/elevenlabs/sound-effects/v2"_s, u"duration_seconds"_s), 22);
  EXPECT_EQ(most(u"fal-ai/stable-audio-3/small/sfx/text-to-audio"_s, u"duration"_s), 120);
  EXPECT_EQ(most(u"fal-ai/mmaudio-v2/text-to-audio"_s, u"duration"_s), 30);
  const FalModel& music = modelOf(audioModels(AudioKind::music), u"elevenlabs/music/v2.5"_s);
  EXPECT_EQ(music.setting(u"music_length_ms"_s)->accepts->upper, 180000);
  EXPECT_TRUE(music.billedPerMinute.value_or(false));
}

TEST(AudioModels, KeepTheSingerForLyricsOnly) {
  const FalModel& song = modelOf(audioModels(AudioKind::music), u"mureka/api/generate/song"_s);
  EXPECT_EQ(song.setting(u"gender"_s)->onlyWith, u"lyrics"_s);
}

TEST(AudioModels, MakeSoundForAClipFromTheClipAlone) {
  for (const auto* part : {&clipEffectModels(), &clipMusicModels()}) {
    for (const FalModel& model : *part) {
      EXPECT_TRUE(model.option().requiresReference) << model.id.toStdString();
      EXPECT_FALSE(model.option().needsPrompt) << model.id.toStdString();
      EXPECT_TRUE(isClipModel(model.id));
    }
  }
  EXPECT_FALSE(isClipModel(u"fal-ai/demucs"_s));
}

TEST(AudioVoice, TablesHaveTheirNumbersOfVoices) {
  EXPECT_EQ(voices(VoiceTable::elevenLabs).size(), 21u);
  EXPECT_EQ(voices(VoiceTable::gemini).size(), 30u);
  EXPECT_EQ(voices(VoiceTable::miniMax).size(), 17u);
  EXPECT_EQ(voices(VoiceTable::kokoro).size(), 4u);
  EXPECT_EQ(voices(VoiceTable::grok).size(), 5u);
  EXPECT_EQ(voices(VoiceTable::fish).size(), 15u);
  EXPECT_EQ(voices(VoiceTable::sarvam).size(), 37u);
  EXPECT_EQ(voices(VoiceTable::inworld).size(), 32u);
}

TEST(AudioVoice, OffersTheVoicesOfTheModelInItsOrder) {
  const FalModel& kokoro = modelOf(audioModels(AudioKind::voice), u"fal-ai/kokoro/hindi"_s);
  const auto offered = offeredVoices(kokoro);
  ASSERT_EQ(offered.size(), 4u);
  EXPECT_EQ(offered[0].name, u"Alpha"_s);
  EXPECT_EQ(offered[3].group, AudioVoice::Group::men);
  EXPECT_EQ(voiceField(kokoro), u"voice"_s);
}

TEST(AudioVoice, OffersAnUnknownVoiceUnderItsBareId) {
  FalModel model = modelOf(audioModels(AudioKind::voice), u"fal-ai/kokoro/hindi"_s);
  model.settings->front().values = {u"hm_psi"_s, u"brand_new"_s, u"hf_alpha"_s};
  const auto offered = offeredVoices(model);
  ASSERT_EQ(offered.size(), 3u);
  EXPECT_EQ(offered[1].id, u"brand_new"_s);
  EXPECT_FALSE(offered[1].group);
  EXPECT_EQ(offered[2].id, u"hf_alpha"_s);
}

TEST(AudioVoice, IsNotOfferedWithoutAVoiceSetting) {
  const FalModel& dia = modelOf(audioModels(AudioKind::voice), u"fal-ai/dia-tts"_s);
  EXPECT_TRUE(offeredVoices(dia).empty());
  EXPECT_EQ(voiceField(dia), std::nullopt);
}

TEST(AudioVoice, KnowsAccentsAndLanguagesOfInworld) {
  const auto& table = voices(VoiceTable::inworld);
  const auto helene = std::find_if(table.begin(), table.end(), [](const auto& v) { return v.id == u"Hélène (fr)"_s; });
  ASSERT_NE(helene, table.end());
  EXPECT_EQ(helene->about, u"French"_s);
  EXPECT_EQ(helene->group, AudioVoice::Group::women);
}

TEST(AudioVoice, NamesLanguages) {
  EXPECT_EQ(languageName(u"en-IN"_s), u"English (India)"_s);
  EXPECT_EQ(languageName(u"pt-BR"_s), u"Portuguese (Brazil)"_s);
  EXPECT_EQ(languageName(u"tlh"_s), u"tlh"_s);
  EXPECT_EQ(sarvamLanguageCodes().size(), 11);
  EXPECT_EQ(otherLanguageCodes().size(), 20);
  EXPECT_EQ(voiceGroupTitle(AudioVoice::Group::neutral), u"Neutral"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
