#include "shell/curation_presenter.h"

#include "base/ids.h"
#include "base/settings.h"
#include "composer/saved_references.h"
#include "core/history.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "shell/alerts_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/locations.h"
#include "shell/step_card.h"
#include "shell/texts.h"
#include "shell/trash_texts.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

const QString stepsOnKey = QStringLiteral("stepOnAfterMark");

std::vector<QUuid> idsOf(const std::vector<core::AssetRef>& items) {
  std::vector<QUuid> ids;
  ids.reserve(items.size());
  for (const core::AssetRef& item : items) ids.push_back(item->id);
  return ids;
}

}  // namespace

CurationPresenter::CurationPresenter(Ports ports, QObject* parent) : QObject(parent), on_(std::move(ports)) {
  connect(&on_.store, &core::LibraryStore::revisionChanged, this, &CurationPresenter::withdrawTrashCards);
  connect(&on_.alerts, &AlertsPresenter::toastDismissed, this, [this](quint64 id) {
    std::erase_if(trashCards_, [id](const TrashCard& card) { return card.id == id; });
  });
}

std::vector<core::AssetRef> CurationPresenter::shownItems(bool inTrash) const {
  std::vector<core::AssetRef> items;
  const QSet<QUuid>& selection = on_.state.selection();
  if (selection.isEmpty()) return items;
  // Outside the gallery, what is selected is what is seen.
  if (!showsGallery(on_.state.mode().kind)) {
    for (const QUuid& id : selection) {
      core::AssetRef item = on_.store.asset(id);
      if (item && item->isTrashed() == inTrash) items.push_back(std::move(item));
    }
    return items;
  }
  // In the order of the wall, so that what counts names or opens the first does what the eye expects.
  for (int index = on_.gallery.jobCount(); index < on_.gallery.count(); ++index) {
    const QUuid id = on_.gallery.idAt(index);
    if (!selection.contains(id)) continue;
    const core::AssetRef item = on_.store.asset(id);
    if (item && item->isTrashed() == inTrash) items.push_back(item);
    if (static_cast<qsizetype>(items.size()) == selection.size()) break;
  }
  return items;
}

qsizetype CurationPresenter::selectedItems() const {
  const QSet<QUuid>& selection = on_.state.selection();
  if (selection.size() < 2) return soleItem() || hasTrashedItems() ? 1 : 0;
  return std::ranges::count_if(selection, [&gallery = on_.gallery](const QUuid& id) {
    return gallery.indexOf(id) >= gallery.jobCount();
  });
}

// Many actions ask after each change, and the selection may be all of a large library.
const CurationPresenter::Held& CurationPresenter::held() const {
  const QSet<QUuid>& selection = on_.state.selection();
  if (held_ && held_->opening == on_.store.opening() && held_->revision == on_.store.revision() &&
      held_->selection == selection)
    return *held_;
  held_ = Held{on_.store.opening(), on_.store.revision(), selection};
  for (const QUuid& id : selection) {
    const core::AssetRef item = on_.store.asset(id);
    if (item) (item->isTrashed() ? held_->trashed : held_->live) = true;
    if (held_->live && held_->trashed) break;
  }
  return *held_;
}

bool CurationPresenter::hasLiveItems() const { return held().live; }
bool CurationPresenter::hasTrashedItems() const { return held().trashed; }

core::AssetRef CurationPresenter::soleItem() const {
  const QSet<QUuid>& selection = on_.state.selection();
  if (selection.size() != 1) return nullptr;
  const core::AssetRef item = on_.store.asset(*selection.begin());
  return item && !item->isTrashed() ? item : nullptr;
}

std::vector<core::AssetRef> CurationPresenter::still(const std::vector<QUuid>& ids) const {
  std::vector<core::AssetRef> items;
  for (const QUuid& id : ids)
    if (core::AssetRef item = on_.store.asset(id)) items.push_back(std::move(item));
  return items;
}

std::vector<core::AssetRef> CurationPresenter::live(const std::vector<QUuid>& ids) const {
  std::vector<core::AssetRef> items = still(ids);
  std::erase_if(items, [](const core::AssetRef& item) { return item->isTrashed(); });
  return items;
}

void CurationPresenter::withinHistory(qint64 bytes, const std::vector<core::AssetRef>& items, Change change) {
  within(bytes, texts::tooLargeToUndo(static_cast<qsizetype>(items.size())), items, std::move(change));
}

// A change that is larger than all of the history is told of before it is made.
void CurationPresenter::within(qint64 bytes, const QString& warning, const std::vector<core::AssetRef>& items,
                               Change change) {
  if (items.empty()) return;
  if (bytes <= core::LibraryHistory::maximumBytes) return change(items);
  Alert alert;
  alert.tone = AlertTone::warning;
  alert.title = texts::tooLargeToUndoTitle;
  alert.text = warning;
  alert.buttons = {{texts::continueAnyway, AlertButtonRole::primary, false},
                   {texts::cancel, AlertButtonRole::plain, true}};
  on_.alerts.ask(std::move(alert), [this, ids = idsOf(items), change = std::move(change)](int button) {
    if (button == 0) change(still(ids));
  });
}

// The neighbour is looked for first: the mark may change the order of the wall.
void CurationPresenter::mark(const std::function<void(const std::vector<core::AssetRef>&)>& change) {
  const std::vector<core::AssetRef> items = shownItems(false);
  const QUuid next = stepsOn() && walks() && items.size() == 1 ? itemAfter({items.front()->id}) : QUuid();
  withinHistory(core::historyBytesOfMarks(static_cast<qsizetype>(items.size())), items, change);
  if (!next.isNull() && !on_.store.error()) goTo(next);
}

void CurationPresenter::toggleFavorite() {
  const std::vector<core::AssetRef> items = shownItems(false);
  const bool all = std::ranges::all_of(items, [](const core::AssetRef& item) { return item->favorite; });
  withinHistory(core::historyBytesOfMarks(static_cast<qsizetype>(items.size())), items,
                [this, all](const auto& marked) { core::setFavorite(on_.store, marked, !all); });
}

void CurationPresenter::toggleFavoriteOf(QUuid item) {
  const core::AssetRef asset = on_.store.asset(item);
  if (asset && !asset->isTrashed()) core::setFavorite(on_.store, {asset}, !asset->favorite);
}

void CurationPresenter::setRating(int stars) {
  mark([this, stars](const auto& items) { core::setRating(on_.store, items, stars); });
}

void CurationPresenter::setStatus(core::AssetStatus status) {
  mark([this, status](const auto& items) { core::setStatus(on_.store, items, status); });
}

void CurationPresenter::rename(QUuid item, const QString& name) {
  if (const core::AssetRef asset = on_.store.asset(item)) core::rename(on_.store, asset, name);
}

void CurationPresenter::setNotes(QUuid item, const QString& notes) {
  const core::AssetRef asset = on_.store.asset(item);
  if (!asset || asset->notes.value_or(QString()) == notes) return;
  // Escaped, a character takes six bytes at most.
  const qint64 bytes = 6 * (asset->notes.value_or(QString()).size() + notes.size());
  within(bytes, texts::notesTooLongToUndo, {asset}, [this, notes](const auto& items) {
    const std::optional<QString> kept = notes.trimmed().isEmpty() ? std::nullopt : std::optional(notes);
    for (const core::AssetRef& noted : items) core::setNotes(on_.store, noted, kept);
  });
}

std::vector<Destination> CurationPresenter::destinations() const {
  const std::vector<core::AssetRef> items = shownItems(false);
  const auto allThere = [&](const std::optional<QUuid>& project) {
    return std::ranges::all_of(items, [&](const core::AssetRef& item) { return item->projectID == project; });
  };
  std::vector<Destination> places;
  if (!allThere(std::nullopt)) places.push_back({std::nullopt, texts::inbox});
  for (const core::ProjectRef& project : on_.store.projects())
    if (!project->archived && !allThere(project->id)) places.push_back({project->id, project->name});
  return places;
}

void CurationPresenter::moveTo(std::optional<QUuid> project) { place(shownItems(false), project); }

void CurationPresenter::place(const std::vector<core::AssetRef>& items, std::optional<QUuid> project) {
  withinHistory(core::historyBytesOfMoves(items), items, [this, project](const auto& moved) {
    const auto before = on_.store.history().next(core::HistoryDirection::undo);
    core::move(on_.store, moved, project);
    if (on_.store.history().next(core::HistoryDirection::undo) == before) return;
    Toast toast;
    toast.tone = AlertTone::success;
    toast.text = texts::movedTo(static_cast<qsizetype>(moved.size()), destinationName(on_.store, project));
    showStepCard(on_.store, on_.alerts, std::move(toast));
  });
}

void CurationPresenter::drop(const std::vector<QUuid>& dropped, const QString& location) {
  const std::vector<core::AssetRef> items = live(dropped);
  if (location == trashLocation) {
    // As by its key.
    on_.state.select(QSet<QUuid>(dropped.begin(), dropped.end()));
    return moveToTrash();
  }
  if (location == inboxLocation) return place(items, std::nullopt);
  if (location == favoritesLocation)
    return withinHistory(core::historyBytesOfMarks(static_cast<qsizetype>(items.size())), items,
                         [this](const auto& marked) { core::setFavorite(on_.store, marked, true); });
  if (const core::ProjectRef project = on_.store.project(base::uuidFromText(location))) place(items, project->id);
}

// Where one walks from item to item: the order in which the open item is stepped through, else that of the wall.
std::vector<QUuid> CurationPresenter::walkedItems() const {
  const std::vector<QUuid>& sequence = on_.state.assetSequence();
  const WorkspaceMode& mode = on_.state.mode();
  if (mode.kind == ModeKind::asset && std::ranges::find(sequence, mode.subject) != sequence.end()) return sequence;
  std::vector<QUuid> items;
  for (int index = on_.gallery.jobCount(); index < on_.gallery.count(); ++index)
    items.push_back(on_.gallery.idAt(index));
  return items;
}

bool CurationPresenter::walks() const {
  const ModeKind mode = on_.state.mode().kind;
  return showsGallery(mode) || mode == ModeKind::asset;
}

// The one that follows the last of those, else the one before the first; null when nothing is left.
QUuid CurationPresenter::itemAfter(const QSet<QUuid>& leaving) const {
  const std::vector<QUuid> items = walkedItems();
  const auto leaves = [&](const QUuid& id) { return leaving.contains(id); };
  const auto stays = [this](const QUuid& id) { return on_.gallery.canShow(id); };
  const auto first = std::ranges::find_if(items, leaves);
  if (first == items.end()) return {};
  const auto behind = std::find_if(items.rbegin(), items.rend(), leaves).base();
  const auto after = std::find_if(behind, items.end(), stays);
  if (after != items.end()) return *after;
  const auto before = std::find_if(std::make_reverse_iterator(first), items.rend(), stays);
  return before == items.rend() ? QUuid() : *before;
}

// Elsewhere than on the wall or in the large view, the view in front knows what takes the place of what left.
void CurationPresenter::goTo(QUuid item) {
  if (!walks()) return;
  const bool opened = on_.state.mode().kind == ModeKind::asset;
  on_.state.select(item.isNull() ? QSet<QUuid>() : QSet<QUuid>{item});
  if (opened) on_.state.setMode(item.isNull() ? WorkspaceMode{} : WorkspaceMode{ModeKind::asset, item, 0});
}

void CurationPresenter::moveToTrash() {
  const std::vector<core::AssetRef> items = shownItems(false);
  const std::vector<QUuid> ids = idsOf(items);
  const std::optional<QString> warning = composer::trashWarning(on_.store, QSet<QUuid>(ids.begin(), ids.end()));
  if (!warning) return trash(items);
  Alert alert;
  alert.tone = AlertTone::warning;
  alert.title = texts::trashQuestionTitle(static_cast<qsizetype>(items.size()));
  alert.text = *warning;
  alert.buttons = {{texts::moveToTrash, AlertButtonRole::destructive, false},
                   {texts::cancel, AlertButtonRole::plain, true}};
  on_.alerts.ask(std::move(alert), [this, ids](int button) {
    if (button == 0) trash(live(ids));
  });
}

void CurationPresenter::trash(const std::vector<core::AssetRef>& trashed) {
  const qint64 bytes = core::historyBytesOfMarks(static_cast<qsizetype>(trashed.size()));
  withinHistory(bytes, trashed, [this](const auto& items) {
    const std::vector<QUuid> ids = idsOf(items);
    const QUuid next = itemAfter(QSet<QUuid>(ids.begin(), ids.end()));
    if (on_.noteUsage) on_.noteUsage(QStringLiteral("trash"));
    if (!exchange::trash(on_.store, items)) return;
    goTo(next);
    showTrashCard(ids);
  });
}

// Undo waits while a job runs; its Restore does not.
void CurationPresenter::showTrashCard(const std::vector<QUuid>& ids) {
  Toast toast;
  toast.text = texts::movedToTrash(static_cast<qsizetype>(ids.size()));
  toast.secondLine = texts::trashKeepsFiles;
  toast.actionTitle = texts::restore;
  toast.leaves = true;
  trashCards_.push_back(
      {on_.alerts.showToast(toast, [this, ids] { restore(ids, exchange::Rejoin::everywhere); }), ids});
}

// What is back needs no card that brings it back.
void CurationPresenter::withdrawTrashCards() {
  const auto isInTrash = [this](const QUuid& id) {
    const core::AssetRef item = on_.store.asset(id);
    return item && item->isTrashed();
  };
  std::vector<quint64> outdated;
  std::erase_if(trashCards_, [&](const TrashCard& card) {
    const bool isBack = std::ranges::none_of(card.items, isInTrash);
    if (isBack) outdated.push_back(card.id);
    return isBack;
  });
  for (const quint64 card : outdated) on_.alerts.dismissToast(card);
}

void CurationPresenter::restore(const std::vector<QUuid>& ids, exchange::Rejoin rejoin) {
  withinHistory(core::historyBytesOfMarks(static_cast<qsizetype>(ids.size())), still(ids),
                [this, rejoin](const auto& items) { exchange::restore(on_.store, items, rejoin); });
}

void CurationPresenter::restoreSelected() {
  const std::vector<core::AssetRef> items = shownItems(true);
  if (items.empty()) return;
  const std::vector<QUuid> ids = idsOf(items);
  const QUuid next = itemAfter(QSet<QUuid>(ids.begin(), ids.end()));
  const auto carryOut = [this, ids, next](exchange::Rejoin rejoin) {
    const qint64 bytes = core::historyBytesOfMarks(static_cast<qsizetype>(ids.size()));
    withinHistory(bytes, still(ids), [this, next, rejoin](const auto& restored) {
      if (exchange::restore(on_.store, restored, rejoin)) goTo(next);
    });
  };
  const std::optional<exchange::Holders> holders = exchange::holdersOf(on_.store, items);
  if (!holders) return carryOut(exchange::Rejoin::everywhere);
  Alert alert;
  alert.title = texts::restoreQuestionTitle(static_cast<qsizetype>(items.size()));
  alert.text = restoreQuestionText(static_cast<qsizetype>(items.size()), *holders);
  alert.buttons = {{texts::restoreEverywhere, AlertButtonRole::primary, false},
                   {texts::restoreToGalleryOnly, AlertButtonRole::plain, false},
                   {texts::cancel, AlertButtonRole::plain, true}};
  on_.alerts.ask(std::move(alert), [carryOut](int button) {
    if (button == 0) carryOut(exchange::Rejoin::everywhere);
    if (button == 1) carryOut(exchange::Rejoin::galleryOnly);
  });
}

bool CurationPresenter::stepsOn() const { return on_.store.settings().get(stepsOnKey, false); }

void CurationPresenter::setStepsOn(bool stepsOn) {
  try {
    on_.store.settings().set(stepsOnKey, stepsOn);
  } catch (const SorvanError&) {
    // It holds for this run all the same; the settings tell of their own trouble.
  }
  Q_EMIT stepsOnChanged();
}

QString restoreQuestionText(qsizetype items, const exchange::Holders& holders) {
  QStringList places;
  if (holders.references > 0) places << texts::savedReferenceCount(holders.references);
  if (holders.sheets > 0) places << texts::contactSheetCount(holders.sheets);
  return texts::restoreQuestion(items, places.join(texts::andBetween));
}

}  // namespace sorvan::shell
