// The models that the program recommends and the tools that panels offer: rows only, read as models when they are
// added.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

/// By category: "text-to-image", "image-to-image", "text-to-video" and "image-to-video". Best first.
const std::map<QString, std::vector<FalListing>>& recommendedModels();

const std::vector<FalListing>& upscaleTools();
const std::vector<FalListing>& cutOutTools();
/// The same rows in the order of the panel.
const std::vector<FalListing>& cutOutPanelTools();
/// The one tool that moves the camera by exact angles.
const std::vector<FalListing>& shotAngleTools();

/// The recommended rows behind the first tool of each list.
const FalListing& upscalerRow();
const FalListing& backgroundRemoverRow();

bool contains(const std::vector<FalListing>& listings, const QString& id);
/// The name of the first row with this id, recommended rows before tools.
std::optional<QString> listedName(const QString& id);

}  // namespace sorvan::catalogue
