#include "catalogue/audio_models.h"

#include "catalogue/sound_rows.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

QString audioKindName(AudioKind kind) {
  if (kind == AudioKind::music) return u"music"_s;
  return kind == AudioKind::effect ? u"effect"_s : u"voice"_s;
}

const std::vector<FalModel>& audioModels(AudioKind kind) {
  static const std::vector<FalModel> voices = speechRows();
  static const std::vector<FalModel> music = musicRows();
  static const std::vector<FalModel> effects = effectRows();
  if (kind == AudioKind::music) return music;
  return kind == AudioKind::effect ? effects : voices;
}

std::optional<AudioKind> audioKindOf(const QString& model) {
  for (const AudioKind kind : {AudioKind::voice, AudioKind::music, AudioKind::effect}) {
    if (contains(audioModels(kind), model)) return kind;
  }
  return std::nullopt;
}

const std::vector<FalModel>& soundTools() {
  static const std::vector<FalModel> rows = soundToolRows();
  return rows;
}

const std::vector<FalModel>& extendModels() {
  static const std::vector<FalModel> rows = extendRows();
  return rows;
}

const std::vector<FalModel>& clipEffectModels() {
  static const std::vector<FalModel> rows = clipEffectRows();
  return rows;
}

const std::vector<FalModel>& clipMusicModels() {
  static const std::vector<FalModel> rows = clipMusicRows();
  return rows;
}

bool contains(const std::vector<FalModel>& models, const QString& model) {
  return std::any_of(models.begin(), models.end(), [&](const FalModel& each) { return each.id == model; });
}

bool isClipModel(const QString& model) {
  return contains(clipEffectModels(), model) || contains(clipMusicModels(), model);
}

}  // namespace sorvan::catalogue
