#include "shell/quit_rule.h"

#include "core/library_store.h"
#include "shell/texts.h"

namespace sorvan::shell {

std::optional<QString> quitQuestion(const core::LibraryStore& store) {
  const bool unsaved = store.hasUnsavedMetadata();
  const bool working = !store.activeJobs().empty() || store.isImporting() || store.isExporting();
  if (!working && !unsaved) return std::nullopt;
  return unsaved ? texts::quitUnsavedText + texts::quitText : texts::quitText;
}

}  // namespace sorvan::shell
