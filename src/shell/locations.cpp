#include "shell/locations.h"

#include "base/ids.h"
#include "core/library_store.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"

namespace sorvan::shell {

QString locationTitle(const core::LibraryStore& store, const QString& location) {
  if (location == recentLocation) return texts::recent;
  if (location == favoritesLocation) return texts::favorites;
  if (location == inboxLocation) return texts::inbox;
  if (location == trashLocation) return texts::trash;
  const core::ProjectRef project = store.project(uuidFromText(location));
  return project ? project->name : texts::allMedia;
}

std::optional<QUuid> locationProject(const core::LibraryStore& store, const QString& location) {
  const core::ProjectRef project = store.project(uuidFromText(location));
  return project ? std::optional(project->id) : std::nullopt;
}

std::vector<ModeKind> modesAt(const core::LibraryStore& store, const QString& location) {
  if (location == recentLocation || location == favoritesLocation) return {ModeKind::gallery};
  std::vector<ModeKind> modes{ModeKind::gallery, ModeKind::contactSheets, ModeKind::sequences};
  if (locationProject(store, location)) modes.push_back(ModeKind::projectReferences);
  return modes;
}

bool showsGallery(ModeKind view) { return view == ModeKind::gallery || view == ModeKind::searchResults; }

QString destinationName(const core::LibraryStore& store, const std::optional<QUuid>& project) {
  const core::ProjectRef found = project ? store.project(*project) : nullptr;
  return found ? found->name : texts::inbox;
}

}  // namespace sorvan::shell
