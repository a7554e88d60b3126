// The controls that a published input gives a model.
#pragma once

#include <vector>

#include "catalogue/fal_model.h"
#include "catalogue/schema_input.h"

namespace sorvan::catalogue {

/// In the order in which they are shown.
std::vector<Setting> settingsFrom(const SchemaInput& input);
/// Whether the field is one that becomes a control, or could: what it stands for is known.
bool isKnownSetting(const SchemaField& field);

}  // namespace sorvan::catalogue
