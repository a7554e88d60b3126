// The pages of the window that are not built into the library view. Each view adds its own here, in one line.
#pragma once

#include "shell/presenters.h"
#include "shell/views/room.h"

namespace sorvan::views {

class LibraryView;

// What a page is built on. All of it outlives the page.
struct PageDesk {
  LibraryView& library;
  const Presenters& on;
};

// Called once, before the window is bound to its presenters.
void addPages(const PageDesk& desk);

}  // namespace sorvan::views
