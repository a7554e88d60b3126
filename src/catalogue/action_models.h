// Which model an action of the inspector works with: the user's choice for it, or the first that fits.
#pragma once

#include <optional>

#include "base/settings.h"
#include "catalogue/fal_catalog.h"

namespace sorvan::catalogue {

enum class ActionRole { edit, animate, variation, extend, upscale, cutOut, shotSet };

/// The role's key in the settings, such as "cutOut".
QString actionRoleKey(ActionRole role);

/// Whether a model can do the action: a picture from a picture, a clip from a picture, or one of the role's tools.
bool fitsRole(const FalModel& model, ActionRole role);

/// The model's id: the one chosen for the role while it still fits, else the first that fits in the catalogue's order,
/// and for tools the first row of their panel. Nothing when no model fits. Choices stand under "actionModels".
std::optional<QString> actionModel(const FalCatalog& catalog, const Settings& settings, ActionRole role);

/// Remembers the choice. Throws SorvanError when it cannot be stored.
void chooseActionModel(Settings& settings, ActionRole role, const QString& model);

}  // namespace sorvan::catalogue
