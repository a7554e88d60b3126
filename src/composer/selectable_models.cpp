#include "composer/selectable_models.h"

#include "catalogue/audio_models.h"

namespace sorvan::composer {

namespace {

SelectableModel selectable(ComparisonModel comparison, const FalModel& record) {
  QString key = modelKey(comparison);
  return {std::move(key), std::move(comparison), record};
}

}  // namespace

QString modelKey(const ComparisonModel& model) { return modelKey(model.provider, model.model.id); }

QString modelKey(ProviderID provider, const QString& model) { return rawValue(provider) + QLatin1Char(':') + model; }

std::vector<SelectableModel> pictureModels(const FalCatalog& catalog) {
  std::vector<SelectableModel> models;
  for (ComparisonModel& comparison : catalog.comparisonModels())
    if (const auto record = catalog.model(comparison.model.id))
      models.push_back(selectable(std::move(comparison), *record));
  return models;
}

std::vector<SelectableModel> soundModels() {
  std::vector<SelectableModel> models;
  for (const AudioKind kind : {AudioKind::voice, AudioKind::music, AudioKind::effect})
    for (const FalModel& record : audioModels(kind))
      models.push_back(selectable({ProviderID::fal, record.option()}, record));
  return models;
}

std::vector<SelectableModel> selectableModels(const FalCatalog& catalog) {
  std::vector<SelectableModel> models = pictureModels(catalog);
  for (SelectableModel& sound : soundModels()) models.push_back(std::move(sound));
  return models;
}

}  // namespace sorvan::composer
