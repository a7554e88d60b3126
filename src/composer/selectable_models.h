// The models that a composer offers.
#pragma once

#include <QString>
#include <vector>

#include "catalogue/fal_catalog.h"
#include "composer/room.h"
#include "generation/provider.h"

namespace sorvan::composer {

/// A model with its catalogue record and the key that chooses it.
struct SelectableModel {
  QString key;  ///< "{provider}:{model id}"
  ComparisonModel comparison;
  FalModel record;
};

/// "{provider's display name}:{model id}".
QString modelKey(const ComparisonModel& model);
QString modelKey(ProviderID provider, const QString& model);

/// The picture and video models that can be chosen and compared, in catalogue order: no tools that work on a clip or a
/// sound.
std::vector<SelectableModel> pictureModels(const FalCatalog& catalog);

/// The voice, music and sound effect models, in this order.
std::vector<SelectableModel> soundModels();

/// Everything that can be chosen, pictures and clips before sounds.
std::vector<SelectableModel> selectableModels(const FalCatalog& catalog);

}  // namespace sorvan::composer
