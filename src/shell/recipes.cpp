#include "shell/recipes.h"

#include "core/library_store.h"

namespace sorvan::shell {

namespace {

core::GenerationRequest fromRecord(const core::Generation& generation) {
  core::GenerationRequest recipe;
  recipe.model = generation.model;
  recipe.prompt = generation.prompt;
  recipe.seed = generation.seed;
  return recipe;
}

}  // namespace

std::optional<core::GenerationRequest> recipeOf(const core::LibraryStore& store, const QUuid& itemOrJob) {
  if (const core::GenerationRef generation = store.generationOf(itemOrJob)) {
    if (const auto recipe = generation->recipe()) return *recipe;
    if (generation->prompt.isEmpty()) return std::nullopt;
    return fromRecord(*generation);
  }
  const core::JobRef job = store.job(itemOrJob);
  if (!job || !job->request()) return std::nullopt;
  return *job->request();
}

std::optional<std::int64_t> seedOf(const core::LibraryStore& store, const QUuid& itemOrJob) {
  if (const core::GenerationRef generation = store.generationOf(itemOrJob); generation && generation->seed)
    return generation->seed;
  const auto recipe = recipeOf(store, itemOrJob);
  return recipe ? recipe->seed : std::nullopt;
}

}  // namespace sorvan::shell
