#include "shell/window_desk.h"

#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/contact_sheets.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

GalleryFilter filterOf(const LibraryFilter& wanted, GallerySort sort) {
  GalleryFilter filter;
  filter.search = wanted.search;
  filter.model = wanted.model;
  filter.type = wanted.type;
  filter.status = wanted.status;
  filter.orientation = wanted.orientation;
  filter.favoritesOnly = wanted.favoritesOnly;
  filter.days = wanted.days;
  if (wanted.generatedInterval)
    filter.generatedInterval = {wanted.generatedInterval->lower, wanted.generatedInterval->upper};
  filter.sort = sort;
  return filter;
}

}  // namespace

std::vector<QUuid> WindowDesk::selection() const {
  const QSet<QUuid>& selected = ports_.window.selection();
  std::vector<std::pair<int, QUuid>> placed;
  placed.reserve(static_cast<std::size_t>(selected.size()));
  for (const QUuid& id : selected) placed.emplace_back(ports_.placeOf(id), id);
  std::sort(placed.begin(), placed.end());
  std::vector<QUuid> ids;
  for (const auto& [place, id] : placed) ids.push_back(id);
  return ids;
}

void WindowDesk::showResults(const LibraryFilter& filter) {
  ports_.window.setLocation(allMediaLocation);
  ports_.window.setFilter(filterOf(filter, ports_.window.filter().sort));
  ports_.window.setMode({ModeKind::searchResults});
}

void WindowDesk::showGallery(const std::optional<QString>& location) {
  if (location) ports_.window.setLocation(*location);
  ports_.window.clearFilters();
  ports_.window.setMode({ModeKind::gallery});
}

void WindowDesk::openContactSheet(const QUuid& sheet) { ports_.window.openContactSheet(StoredSheet{sheet}); }

void WindowDesk::openComparison(const QUuid& comparison) {
  ports_.window.openContactSheet(ComparisonBatch{comparison});
}

void WindowDesk::openLineage(const QUuid& asset) { ports_.window.openLineage(asset); }

QUuid WindowDesk::createProject(const QString& name) { return ports_.makeProject(name); }

QUuid WindowDesk::createContactSheet(const std::vector<AssetRef>& assets, const std::optional<QUuid>& project) {
  return shell::createContactSheet(ports_.store, assets, project)->id;
}

std::optional<QUuid> WindowDesk::enqueue(const Submission& submission) {
  return composer::enqueue(ports_.queue, submission);
}

QDateTime WindowDesk::localNow() const { return ports_.store.now().toDateTime().toLocalTime(); }

}  // namespace sorvan::shell
