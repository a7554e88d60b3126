#include "shell/comparison_presenter.h"

#include "shell/gallery_presenter.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

ComparisonPresenter::ComparisonPresenter(Ports ports, QObject* parent)
    : QObject(parent),
      on_(ports),
      sheets_({on_.store, on_.state, on_.displays, on_.alerts}),
      sheet_({on_.store, on_.state, on_.displays, on_.jobs, on_.alerts, on_.priceOf}),
      lineage_(on_.store, on_.state, on_.displays) {}

// In the order in which they are seen: of the sheet that is open, else of the gallery.
std::vector<QUuid> ComparisonPresenter::selectedItems() const {
  const QSet<QUuid>& selection = on_.state.selection();
  std::vector<QUuid> items;
  if (selection.size() > mostCompared) return items;
  const bool onSheet = on_.state.mode().kind == ModeKind::contactSheet;
  std::vector<std::pair<int, QUuid>> placed;
  for (const QUuid& id : selection) {
    const core::AssetRef asset = on_.store.asset(id);
    if (asset && !asset->isTrashed()) placed.emplace_back(onSheet ? 0 : on_.gallery.indexOf(id), id);
  }
  std::ranges::sort(placed);
  for (const auto& [place, id] : placed) items.push_back(id);
  if (!onSheet) return items;
  std::vector<QUuid> ordered;
  std::ranges::copy_if(sheet_.ids(), std::back_inserter(ordered),
                       [&](const QUuid& id) { return selection.contains(id); });
  return ordered;
}

bool ComparisonPresenter::canCompare() const {
  qsizetype live = 0;
  for (const QUuid& id : on_.state.selection()) {
    const core::AssetRef asset = on_.store.asset(id);
    live += asset && !asset->isTrashed() ? 1 : 0;
    if (live > mostCompared) return false;
  }
  return live >= fewestCompared;
}

bool ComparisonPresenter::canShowLineage() const {
  const QSet<QUuid>& selection = on_.state.selection();
  return selection.size() == 1 && on_.store.asset(*selection.begin());
}

void ComparisonPresenter::compareSelected() {
  const std::vector<QUuid> items = selectedItems();
  sheet_.askToCompare();
  on_.state.openContactSheet(PassingSelection{items});
}

void ComparisonPresenter::makeSheet() {
  const QUuid made = sheets_.create(selectedItems());
  if (!made.isNull()) openSheet(made);
}

void ComparisonPresenter::showLineage() {
  if (canShowLineage()) on_.state.openLineage(*on_.state.selection().begin());
}

void ComparisonPresenter::openSheet(QUuid sheet) { on_.state.openContactSheet(StoredSheet{sheet}); }

}  // namespace sorvan::shell
