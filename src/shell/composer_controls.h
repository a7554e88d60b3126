#pragma once

#include "composer/composer_state.h"
#include "shell/composer_presenter.h"
#include "shell/model_prices.h"

#include <functional>

namespace sorvan::shell {

// What the composer's controls show of its state. Pure functions.

// Whether sounds are being composed: a sound model is chosen.
bool composesSound(const ComposerState& state);
// Whether the model makes a sound; sounds are generated one at a time.
bool makesSound(const SelectableModel& model);
// The setting that gives a model's length, or null.
const Setting* lengthSetting(const FalModel& model);
// “5 s” for “5”, “5s” and for “5000” of a field that counts milliseconds.
QString lengthLabel(const QString& field, const QString& value);
// The picker's tabs for what is being composed. `priceOf` is asked for each model.
std::vector<ModelSection> makeModelSections(const ComposerState& state,
                                            const std::function<PriceText(const QString&)>& priceOf);
// Fills everything but destination, notices, submission and `expanded`.
ComposerDisplay makeComposerControls(const ComposerState& state);

}  // namespace sorvan::shell
