#include "shell/lineage_presenter.h"

#include "shell/job_displays.h"
#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"


#include <algorithm>

namespace sorvan::shell {

namespace {

QString nameOf(const LineageRowDisplay& row) {
  QStringList words{row.name};
  if (!row.deleted) words << row.label << row.detail;
  if (row.openedFrom) words << texts::lineageOpenedFromName;
  if (row.inspected) words << texts::lineageInspected.toLower();
  if (row.trashed) words << texts::sheetInTrash;
  words << texts::lineageLevel(row.depth + 1);
  words.removeAll(QString());
  return words.join(QStringLiteral(", "));
}

}  // namespace

LineagePresenter::LineagePresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& displays,
                                   QObject* parent)
    : QObject(parent), store_(store), state_(state), displays_(displays) {
  connect(&store_, &core::LibraryStore::revisionChanged, this, [this] {
    if (!asset_.isNull()) refreshSoon_.request();
  });
  connect(&store_, &core::LibraryStore::workspaceChanged, this, [this] { open({}); });
  connect(&state_, &WorkspaceState::inspectedChanged, this, [this] {
    markInspected();
    Q_EMIT changed();
  });
}

void LineagePresenter::open(QUuid asset) {
  asset_ = asset;
  if (!asset_.isNull()) inspect(asset_);
  refresh();
}

QUuid LineagePresenter::inspectedID() const { return state_.inspectedId(); }

void LineagePresenter::refresh() {
  refreshSoon_.withdraw();
  rows_.clear();
  const core::AssetRef opened = asset_.isNull() ? nullptr : store_.asset(asset_);
  if (opened) {
    std::vector<int> path;  // the last row of each depth on the way down
    for (const LineageRow& row : lineageRows(store_, *opened)) {
      LineageRowDisplay shown = displayOf(row);
      const auto depth = static_cast<std::size_t>(row.depth);
      path.resize(depth);
      shown.parentRow = depth > 0 ? path.back() : -1;
      path.push_back(static_cast<int>(rows_.size()));
      rows_.push_back(std::move(shown));
    }
  }
  markInspected();
  Q_EMIT changed();
}

LineageRowDisplay LineagePresenter::displayOf(const LineageRow& row) const {
  LineageRowDisplay shown;
  shown.id = row.id;
  shown.depth = row.depth;
  shown.label = row.label;
  shown.openedFrom = row.openedFrom;
  shown.deleted = !row.asset;
  if (!row.asset) {
    shown.name = texts::lineageDeleted;
    shown.detail = texts::lineageDeletedText;
    return shown;
  }
  const core::Asset& asset = *row.asset;
  shown.name = asset.filename();
  shown.trashed = asset.isTrashed();
  if (asset.status() != core::AssetStatus::draft) shown.statusText = statusText(asset.status());
  shown.statusToken = rawValue(asset.status());
  shown.dateText = dayText(asset.createdAt, store_.now());
  if (asset.duration && asset.type() != core::MediaType::image) shown.durationText = clockText(*asset.duration);
  shown.thumbnailPath = store_.thumbnailOf(asset).value_or(QString());
  if (asset.type() == core::MediaType::image) shown.filePath = store_.fileOf(asset);
  const core::GenerationRef made = store_.generationOf(asset.id);
  const bool imported = asset.sourceType() == core::AssetSourceType::imported;
  QStringList origin;
  if (imported && shown.label != texts::lineageImported) origin << texts::lineageImported;
  if (made) origin << displays_.modelName(made->model);
  shown.detail = origin.join(QStringLiteral(" · "));
  return shown;
}

void LineagePresenter::markInspected() {
  for (LineageRowDisplay& row : rows_) {
    row.inspected = row.id == state_.inspectedId();
    row.accessibleName = nameOf(row);
  }
}

int LineagePresenter::indexOf(QUuid item) const {
  const auto found = std::ranges::find(rows_, item, &LineageRowDisplay::id);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QString LineagePresenter::countText() const { return texts::lineageCount(std::ssize(rows_)); }

void LineagePresenter::inspect(QUuid item) {
  if (store_.asset(item)) state_.select({item});
}

bool LineagePresenter::canOpen(QUuid item) const { return store_.asset(item) != nullptr; }

}  // namespace sorvan::shell
