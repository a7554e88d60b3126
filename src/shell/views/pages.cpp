#include "shell/views/pages.h"

#include "shell/views/comparison_pages.h"
#include "shell/views/cost_report_page.h"
#include "shell/views/generation_page.h"
#include "shell/views/library_view.h"
#include "shell/views/reference_pages.h"

namespace sorvan::views {

void addPages(const PageDesk& desk) {
  addComparisonPages(desk);
  addGenerationPage(desk);
  addReferencePages(desk);
  addCostPage(desk);
}

}  // namespace sorvan::views
