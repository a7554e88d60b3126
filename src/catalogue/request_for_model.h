// A request told for another model, and the one word that says what a request is for.
#pragma once

#include "catalogue/fal_catalog.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

/// A copy for another model: its options keep only what that model takes, with the length chosen for it.
GenerationRequest requestForModel(const FalCatalog& catalog, const GenerationRequest& request,
                                  const ComparisonModel& target);

/// The word that usage is counted under and that the gateway is told, such as "text-to-video". `comparedModels` is how
/// many models the request's comparison has; without knowledge of them any comparison counts as one of several.
QString featureOf(const FalCatalog& catalog, const GenerationRequest& request, int comparedModels = 2);

}  // namespace sorvan::catalogue
