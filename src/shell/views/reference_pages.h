// The pages, the editor and the file question of references, put into the window.
#pragma once

#include "shell/views/pages.h"

namespace sorvan::views {

// Adds what the presenters there are stand for; without them the window has no references.
void addReferencePages(const PageDesk& desk);

}  // namespace sorvan::views
