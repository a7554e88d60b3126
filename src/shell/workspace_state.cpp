#include "shell/workspace_state.h"

#include <algorithm>
#include <utility>

namespace sorvan::shell {

namespace {
constexpr int smallestRow = 96;
constexpr int largestRow = 360;
// Nobody walks back further than this, and a window that stays open for weeks keeps no more.
constexpr std::size_t longestWayBack = 50;
}  // namespace

WorkspaceState::WorkspaceState(QObject* parent) : QObject(parent) { filter_.location = location_; }

void WorkspaceState::setAvailable(std::set<ModeKind> kinds) {
  available_ = std::move(kinds);
  Q_EMIT availableChanged();
}

WorkspaceMode WorkspaceState::returnMode() const {
  return canGoBack() && !left_.empty() ? left_.back().mode : WorkspaceMode{};
}

WorkspaceMode WorkspaceState::returnModeOf(ModeKind kind) const {
  if (mode_.kind == kind) return returnMode();
  for (std::size_t index = left_.size(); index-- > 1;)
    if (left_[index].mode.kind == kind) return left_[index - 1].mode;
  return {};
}

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

// A view that takes the place of one of its own kind has the same way back.
void WorkspaceState::rememberLeft(ModeKind next) {
  if (!isSubView(next)) {
    left_.clear();
  } else if (mode_.kind != next) {
    if (left_.size() == longestWayBack) left_.erase(left_.begin());
    left_.push_back({mode_, selection_, assetSequence_});
  }
}

void WorkspaceState::show(const WorkspaceMode& mode) {
  if (mode_ == mode) return;
  mode_ = mode;
  if (mode.kind != ModeKind::asset) autoplayID_ = {};
  Q_EMIT modeChanged();
}

void WorkspaceState::setMode(const WorkspaceMode& mode) {
  if (mode_ == mode || !isAvailable(mode.kind)) return;
  rememberLeft(mode.kind);
  show(mode);
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

void WorkspaceState::setAssetSequence(std::vector<QUuid> sequence) {
  if (assetSequence_ == sequence) return;
  assetSequence_ = std::move(sequence);
  Q_EMIT assetSequenceChanged();
}

void WorkspaceState::openAsset(QUuid item, std::vector<QUuid> sequence, Autoplay autoplay) {
  if (item.isNull() || !isAvailable(ModeKind::asset)) return;
  rememberLeft(ModeKind::asset);
  setAssetSequence(std::move(sequence));
  autoplayID_ = autoplay == Autoplay::yes ? item : QUuid();
  select({item});
  show({ModeKind::asset, item});
}

QUuid WorkspaceState::assetBeside(int direction) const {
  const auto at = std::find(assetSequence_.begin(), assetSequence_.end(), mode_.subject);
  if (mode_.kind != ModeKind::asset || at == assetSequence_.end()) return {};
  const std::ptrdiff_t next = at - assetSequence_.begin() + direction;
  const bool inside = next >= 0 && next < static_cast<std::ptrdiff_t>(assetSequence_.size());
  return inside ? assetSequence_[static_cast<std::size_t>(next)] : QUuid();
}

void WorkspaceState::stepAsset(int direction) {
  const QUuid next = assetBeside(direction);
  if (!next.isNull()) openAsset(next, assetSequence_);
}

QUuid WorkspaceState::takeAutoplay() { return std::exchange(autoplayID_, QUuid()); }

void WorkspaceState::openGeneration(QUuid job, int output) { setMode({ModeKind::generation, job, output}); }

void WorkspaceState::finishGeneration() {
  if (mode_.kind == ModeKind::generation) goBack();
}

void WorkspaceState::openLineage(QUuid item) {
  if (item.isNull() || !isAvailable(ModeKind::lineage)) return;
  rememberLeft(ModeKind::lineage);
  select({item});
  show({ModeKind::lineage, item});
}

void WorkspaceState::openContactSheet(const ContactSheetSource& source) {
  if (!isAvailable(ModeKind::contactSheet)) return;
  if (activeContactSource_ != source) setContactEdits({}, {});
  contactSheetsByLocation_.insert(location_, source);
  activeContactLocation_ = location_;
  activeContactSource_ = source;
  setMode({ModeKind::contactSheet, {}, 0, source});
}

std::optional<ContactSheetSource> WorkspaceState::contactSheetAt(const QString& location) const {
  const auto found = contactSheetsByLocation_.constFind(location);
  return found == contactSheetsByLocation_.cend() ? std::nullopt : std::optional(*found);
}

bool WorkspaceState::viewingContactAsset() const {
  return mode_.kind == ModeKind::asset && returnMode().kind == ModeKind::contactSheet;
}

void WorkspaceState::setContactEdits(const QSet<QUuid>& excluded, const std::vector<QUuid>& extra) {
  if (excludedContactIDs_ == excluded && extraContactIDs_ == extra) return;
  excludedContactIDs_ = excluded;
  extraContactIDs_ = extra;
  Q_EMIT contactEditsChanged();
}

void WorkspaceState::goBack() {
  if (!canGoBack() || left_.empty()) return setMode({});
  const Left last = std::move(left_.back());
  left_.pop_back();
  setAssetSequence(last.assetSequence);
  select(last.selection);
  show(last.mode);
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
  left_.clear();
  contactSheetsByLocation_.clear();
  activeContactLocation_.reset();
  activeContactSource_.reset();
  setContactEdits({}, {});
  setAssetSequence({});
  setLocation(allMediaLocation);
  clearFilters();
  select({});
}

}  // namespace sorvan::shell
