// Models for the composer's tests: only what the test says differs from the plainest one.
#pragma once

#include <vector>

#include "composer/selectable_models.h"

namespace sorvan::composer::test {

inline FalModel imageModel(const QString& id, int maxCount = 4, const QStringList& ratios = {}) {
  FalModel model;
  model.id = id;
  model.name = id;
  model.maxCount = maxCount;
  model.sizing = SizeByDimensions{QStringLiteral("image_size")};
  if (!ratios.isEmpty()) model.sizing = SizeByAspect{QStringLiteral("aspect_ratio"), ratios};
  return model;
}

inline FalModel referenceModel(const QString& id) {
  FalModel model = imageModel(id);
  model.imageInput = ListInput{QStringLiteral("image_urls"), false};
  return model;
}

inline FalModel clipModel(const QString& id, const QStringList& lengths) {
  FalModel model = imageModel(id, 1);
  model.output = MediaType::video;
  Setting setting;
  setting.field = QStringLiteral("duration");
  setting.values = lengths;
  setting.defaultValue = lengths.front();
  model.settings = {setting};
  return model;
}

inline std::vector<SelectableModel> selectable(const std::vector<FalModel>& records) {
  std::vector<SelectableModel> models;
  for (const FalModel& model : records) {
    const ComparisonModel comparison{ProviderID::fal, model.option()};
    models.push_back({modelKey(comparison), comparison, model});
  }
  return models;
}

inline const QString startingModelId = QStringLiteral("fal-ai/nano-banana-2");
inline QString keyOf(const QString& id) { return QStringLiteral("fal.ai:") + id; }

}  // namespace sorvan::composer::test
