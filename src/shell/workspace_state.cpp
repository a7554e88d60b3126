#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {
constexpr int smallestRow = 96;
constexpr int largestRow = 360;
}  // namespace

WorkspaceState::WorkspaceState(QObject* parent) : QObject(parent) { filter_.location = location_; }

bool WorkspaceState::canGoBack() const { return mode_.kind == ModeKind::generation; }

void WorkspaceState::setLocation(const QString& location) {
  if (location_ != location) {
    location_ = location;
    filter_.location = location;
    select({});
    Q_EMIT locationChanged();
  }
  setMode({ModeKind::gallery});
}

void WorkspaceState::setFilter(const GalleryFilter& filter) {
  GalleryFilter wanted = filter;
  wanted.location = location_;
  if (wanted == filter_) return;
  filter_ = wanted;
  Q_EMIT filterChanged();
}

void WorkspaceState::clearFilters() {
  GalleryFilter plain;
  plain.sort = filter_.sort;
  setFilter(plain);
}

void WorkspaceState::setMode(const WorkspaceMode& mode) {
  if (mode_ == mode) return;
  mode_ = mode;
  Q_EMIT modeChanged();
}

void WorkspaceState::select(const QSet<QUuid>& cells) {
  if (selection_ != cells) {
    selection_ = cells;
    Q_EMIT selectionChanged();
  }
  inspect(cells.size() == 1 ? *cells.begin() : QUuid());
}

void WorkspaceState::inspect(QUuid cell) {
  if (inspectedId_ == cell) return;
  inspectedId_ = cell;
  Q_EMIT inspectedChanged();
}

void WorkspaceState::openGeneration(QUuid job, int output) {
  if (mode_.kind != ModeKind::generation) generationReturnMode_ = mode_;
  setMode({ModeKind::generation, job, output});
}

void WorkspaceState::finishGeneration() {
  if (mode_.kind == ModeKind::generation) setMode(generationReturnMode_);
}

void WorkspaceState::goBack() {
  if (mode_.kind == ModeKind::generation) {
    finishGeneration();
  } else {
    setMode({ModeKind::gallery});
  }
}

void WorkspaceState::setSidebarVisible(bool visible) {
  if (sidebarVisible_ == visible) return;
  sidebarVisible_ = visible;
  Q_EMIT layoutChanged();
}

void WorkspaceState::setFiltersVisible(bool visible) {
  if (filtersVisible_ == visible) return;
  filtersVisible_ = visible;
  Q_EMIT layoutChanged();
}

void WorkspaceState::setInspectorVisible(bool visible) {
  if (inspectorVisible_ == visible) return;
  inspectorVisible_ = visible;
  Q_EMIT layoutChanged();
}

void WorkspaceState::setRowHeight(int height) {
  const int bounded = std::clamp(height, smallestRow, largestRow);
  if (rowHeight_ == bounded) return;
  rowHeight_ = bounded;
  Q_EMIT layoutChanged();
}

void WorkspaceState::reset() {
  generationReturnMode_ = {};
  setLocation(allMediaLocation);
  clearFilters();
  select({});
}

}  // namespace sorvan::shell
