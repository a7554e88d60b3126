#include "shell/views/pages.h"

#include "shell/views/library_view.h"

namespace sorvan::views {

void addPages(const PageDesk&) {}

}  // namespace sorvan::views
