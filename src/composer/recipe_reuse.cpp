// The part of the composer's state that takes a recipe over.
#include <algorithm>

#include "composer/composer_state.h"

namespace sorvan::composer {
namespace {

/// What of a recipe another generation can have: neither its place in a comparison or a storyboard, nor its payment,
/// nor its seed, which would make the same result again.
GenerationRequest reusable(const GenerationRequest& recipe) {
  GenerationRequest request;
  // Recipes that credits paid for are told to the service itself again; who pays is chosen when they are submitted.
  request.provider = recipe.provider == ProviderID::credits ? ProviderID::fal : recipe.provider;
  request.model = recipe.model;
  request.prompt = recipe.prompt;
  request.size = recipe.size;
  request.count = recipe.count;
  request.referenceIDs = recipe.referenceIDs;
  request.referenceBindings = recipe.referenceBindings;
  request.relationship = recipe.relationship;
  request.options = recipe.options;
  request.shapeChosen = recipe.shapeChosen;
  request.markup = recipe.markup;
  request.confineToMarks = recipe.confineToMarks;
  return request;
}

}  // namespace

bool ComposerState::reuse(const GenerationRequest& recipe, const std::function<bool(const QUuid&)>& usable) {
  GenerationRequest request = reusable(recipe);
  // 1. Marks are on the picture that was sent first.
  markupAssetId_ =
      request.markup && !request.referenceIDs.empty() ? std::optional(request.referenceIDs.front()) : std::nullopt;
  // 2. The model, where it can still be chosen; else those that are chosen stay.
  const QString key = modelKey(request.provider, request.model);
  const bool isThere =
      std::any_of(models_.begin(), models_.end(), [&](const SelectableModel& model) { return model.key == key; });
  if (isThere) selectedModels_ = {key};
  // 3. The request in place of the one before; the prompt goes with the text.
  const QString prompt = std::exchange(request.prompt, QString());
  takeRequest(std::move(request), usable);
  dropStrayMarks();
  adoptFirstSelected();
  fitOutputSettings();
  seedText_.clear();
  // 4. The words, with automatic names counted from one again.
  mode_ = ComposerMode::generation;
  waitingPrompt_.clear();
  improvements_.clear();
  setText(prompt);
  synchronizeReferenceNames();
  resetReferenceNamesForNewPrompt();
  Q_EMIT changed();
  return isThere;
}

}  // namespace sorvan::composer
