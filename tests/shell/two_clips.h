// Two models of clips whose lengths have only one in common.
#pragma once

#include "composer/selectable_models.h"

#include <vector>

namespace sorvan::test {

inline composer::SelectableModel clipModelOf(const QString& id, const QStringList& lengths) {
  catalogue::Setting duration;
  duration.field = QStringLiteral("duration");
  duration.values = lengths;
  duration.defaultValue = lengths.front();
  catalogue::FalModel model;
  model.id = id;
  model.name = id;
  model.maxCount = 1;
  model.output = core::MediaType::video;
  model.settings = {duration};
  const generation::ComparisonModel comparison{core::ProviderID::fal, model.option()};
  return {composer::modelKey(comparison), comparison, model};
}

inline std::vector<composer::SelectableModel> twoClips() {
  return {clipModelOf(QStringLiteral("one"), {QStringLiteral("5"), QStringLiteral("10")}),
          clipModelOf(QStringLiteral("two"), {QStringLiteral("6"), QStringLiteral("10")})};
}

}  // namespace sorvan::test
