// The pages of contact sheets, of one sheet, and of an item's family, with what leads from one to the other.
#pragma once

#include "shell/views/pages.h"

namespace sorvan::views {

// Adds them to the window; without a presenter of theirs it adds nothing.
void addComparisonPages(const PageDesk& desk);

}  // namespace sorvan::views
