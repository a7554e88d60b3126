#include "catalogue/catalog_facts.h"

#include "catalogue/audio_models.h"
#include "catalogue/listings.h"

namespace sorvan::catalogue {

std::optional<ModelFact> CatalogFacts::find(const QString& id) const {
  const auto model = catalog->find(id);
  if (!model) return std::nullopt;
  ModelFact fact;
  fact.name = model->name;
  fact.output = model->output;
  fact.videoInput = model->videoInput.value_or(false);
  fact.audioInput = model->audioInput.value_or(false);
  fact.extendsSound = contains(extendModels(), id);
  fact.makesSoundOfClip = isClipModel(id);
  fact.cutsOut = contains(cutOutTools(), id);
  fact.makesMusic = contains(clipMusicModels(), id);
  fact.needsSeed = model->seedRequired.value_or(false);
  fact.sizes = model->editableSizes();
  return fact;
}

}  // namespace sorvan::catalogue
