// The small choices behind the composer's chips: ratio, count, length, seed.
#pragma once

#include "shell/composer_presenter.h"
#include "shell/views/popover.h"

class QVBoxLayout;

namespace sorvan::views {

// Each opens over its chip and deletes itself when closed. The presenter outlives them.
Popover* openRatioPopover(ComposerPresenter& composer, QWidget* chip);
Popover* openCountPopover(ComposerPresenter& composer, QWidget* chip);
Popover* openLengthPopover(ComposerPresenter& composer, QWidget* chip);
// Rows for several models, into the column of their popover.
void fillLengthRows(ComposerPresenter& composer, Popover* popover, QVBoxLayout* column);
Popover* openSeedPopover(ComposerPresenter& composer, QWidget* chip);

}  // namespace sorvan::views
