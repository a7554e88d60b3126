#include "generation/in_place_work.h"

#include <algorithm>

#include "core/library_store.h"
#include "generation/generation_request.h"

namespace sorvan::generation {
namespace {

using Kind = InPlaceWork::Kind;

bool startsWithAFrame(const GenerationRequest& request, const LibraryStore& store) {
  if (request.referenceIDs.empty()) return false;
  const auto& parents = store.parentEdges(request.referenceIDs.front());
  return std::any_of(parents.begin(), parents.end(),
                     [](const RelationshipRef& edge) { return edge->type() == RelationshipType::frameOf; });
}

bool hasEditSource(const GenerationRequest& request) {
  const auto references = orderedReferences(request);
  return std::any_of(references.begin(), references.end(),
                     [](const ReferenceBinding& binding) { return binding.role && *binding.role == editSourceRole; });
}

}  // namespace

InPlaceWork inPlaceWork(const GenerationRequest& request, const LibraryStore& store, const ModelFacts& models) {
  const auto fact = models.find(request.model);
  if (request.relationship == RelationshipType::upscaledFrom) return {Kind::upscale, false, false};
  if (fact && fact->cutsOut) return {Kind::cutOut, false, false};
  if (request.relationship == RelationshipType::imageToVideo)
    return {startsWithAFrame(request, store) ? Kind::continueClip : Kind::animate, false, false};
  if (request.layUnder || (fact && fact->makesSoundOfClip)) return {Kind::clipSound, false, fact && fact->makesMusic};
  if (hasEditSource(request)) return {Kind::edit, request.markup && !request.markup->empty(), false};
  return {};
}

}  // namespace sorvan::generation
