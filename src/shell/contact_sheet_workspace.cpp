#include "shell/contact_sheet_workspace.h"

#include "core/small_edits.h"
#include "shell/alerts_presenter.h"
#include "shell/job_displays.h"
#include "shell/jobs_presenter.h"
#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"


#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr std::size_t fewestOnSheet = 2;
constexpr std::size_t mostOnSheet = 8;

bool holds(const std::vector<QUuid>& ids, const QUuid& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

ContactSheetWorkspace::ContactSheetWorkspace(Ports ports, QObject* parent) : QObject(parent), on_(ports) {
  connect(&on_.store, &core::LibraryStore::revisionChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&on_.store, &core::LibraryStore::workspaceChanged, this, [this] { open(PassingSelection{}); });
  connect(&on_.state, &WorkspaceState::contactEditsChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&on_.displays, &JobDisplays::ticked, this, [this] {
    if (places_.running) refresh();
  });
}

void ContactSheetWorkspace::open(const ContactSheetSource& source) {
  if (source_ == source) return refresh();
  source_ = source;
  refresh();
}

core::ContactSheetRef ContactSheetWorkspace::sheet() const { return sheetFor(on_.store, source_); }

std::vector<QUuid> ContactSheetWorkspace::baseIDs() const {
  std::vector<QUuid> ids;
  for (const core::AssetRef& asset : assetsOf(placesOf(on_.store, source_))) ids.push_back(asset->id);
  return ids;
}

std::vector<QUuid> ContactSheetWorkspace::ids() const {
  std::vector<QUuid> ids;
  for (const core::AssetRef& asset : assets()) ids.push_back(asset->id);
  return ids;
}

// What all places share, with the names of its references marked.
void ContactSheetWorkspace::fillPrompt(SheetDisplay& shown) const {
  std::vector<core::ReferenceBinding> bindings;
  for (const core::JobRef& job : places_.jobs) {
    const auto request = job->request();
    if (!request) continue;
    shown.prompt = request->prompt;
    shown.names = namesIn(request->prompt, request->referenceBindings.value_or(bindings));
    return;
  }
  for (const core::AssetRef& asset : assets()) {
    const core::GenerationRef made = on_.store.generationOf(asset->id);
    if (!made || (!shown.prompt.isEmpty() && made->prompt != shown.prompt)) {
      shown.prompt.clear();
      shown.names.clear();
      return;
    }
    const auto recipe = made->recipe();
    shown.prompt = made->prompt;
    if (recipe && shown.names.empty()) shown.names = namesIn(made->prompt, recipe->referenceBindings.value_or(bindings));
  }
}

// A source without a record, with what was taken out of it and added to it for now.
ContactSheetPlaces ContactSheetWorkspace::passingPlaces() const {
  const QSet<QUuid>& excluded = on_.state.excludedContactIDs();
  const std::vector<QUuid>& extra = on_.state.extraContactIDs();
  if (excluded.isEmpty() && extra.empty()) return placesOf(on_.store, source_);
  std::vector<QUuid> items = baseIDs();
  std::erase_if(items, [&](const QUuid& item) { return excluded.contains(item); });
  items.insert(items.end(), extra.begin(), extra.end());
  return placesOf(on_.store, PassingSelection{items});
}

// Everything stands anew, so that any order can be told.
void ContactSheetWorkspace::changeForNow(const std::vector<QUuid>& items) {
  const std::vector<QUuid> base = baseIDs();
  on_.state.setContactEdits({base.begin(), base.end()}, items);
}

void ContactSheetWorkspace::refresh() {
  refreshSoon_.withdraw();
  const core::ContactSheetRef record = sheet();
  places_ = record ? placesOf(on_.store, source_) : passingPlaces();
  SheetDisplay shown;
  shown.places = displayPlaces(on_.store, on_.displays, places_, on_.priceOf);
  shown.running = places_.running;
  shown.stored = record != nullptr;
  shown.trashed = record && record->deletedAt;
  shown.title = record ? record->title : texts::contactSheetMode;
  fillPrompt(shown);
  shown.factsText = comparisonFacts(places_.jobs);
  shown.countText = texts::places(static_cast<qsizetype>(shown.places.size()));
  const std::size_t items = assets().size();
  if (places_.running)
    shown.progressText = texts::doneOf(static_cast<qsizetype>(items), static_cast<qsizetype>(shown.places.size()));
  shown.canSave = !record && places_.jobs.empty() && items >= fewestOnSheet && items <= mostOnSheet;
  shown.clips = static_cast<int>(std::ranges::count(shown.places, CellKind::video, &PlaceDisplay::kind));
  display_ = std::move(shown);
  Q_EMIT changed();
}

// A record is changed in the library, a selection only here.
void ContactSheetWorkspace::show(const std::vector<QUuid>& items) {
  if (const core::ContactSheetRef record = sheet())
    setContactSheetAssets(on_.store, record, items);
  else
    changeForNow(items);
  refresh();
}

void ContactSheetWorkspace::add(const std::vector<QUuid>& items) {
  if (!canAdd()) return;
  std::vector<QUuid> wanted = ids();
  for (const QUuid& item : items)
    if (!holds(wanted, item) && on_.store.asset(item)) wanted.push_back(item);
  if (wanted.size() != assets().size()) show(wanted);
}

void ContactSheetWorkspace::say(const QString& text) {
  Toast toast;
  toast.text = text;
  on_.alerts.showToast(std::move(toast));
}

void ContactSheetWorkspace::addDropped(const std::vector<QUuid>& items) {
  if (places_.running) return say(texts::addAfterComparison);
  if (display_.trashed) return say(texts::trashedSheetStays);
  const std::size_t before = assets().size();
  add(items);
  if (assets().size() == before) say(texts::alreadyOnSheet(static_cast<qsizetype>(items.size())));
}

void ContactSheetWorkspace::removeAll(const std::vector<QUuid>& items) {
  std::vector<QUuid> wanted = ids();
  if (std::erase_if(wanted, [&](const QUuid& id) { return holds(items, id); }) > 0) show(wanted);
}

void ContactSheetWorkspace::move(QUuid item, QUuid before) {
  if (item == before) return;
  const auto place = std::ranges::find(display_.places, item, &PlaceDisplay::asset);
  if (place == display_.places.end() || !place->movable) return;
  std::vector<QUuid> wanted = ids();
  std::erase(wanted, item);
  wanted.insert(before.isNull() ? wanted.end() : std::ranges::find(wanted, before), item);
  if (wanted != ids()) show(wanted);
}

void ContactSheetWorkspace::moveBy(QUuid item, int direction) {
  const std::vector<QUuid> order = ids();
  const auto at = std::ranges::find(order, item) - order.begin();
  const auto to = at + direction;
  if (to < 0 || to >= std::ssize(order)) return;
  const auto next = to + (direction > 0 ? 1 : 0);
  move(item, next < std::ssize(order) ? order[static_cast<std::size_t>(next)] : QUuid());
}

void ContactSheetWorkspace::rename(const QString& title) {
  if (const core::ContactSheetRef record = sheet()) renameContactSheet(on_.store, record, title);
}

void ContactSheetWorkspace::moveToTrash() {
  if (const core::ContactSheetRef record = sheet()) deleteContactSheet(on_.store, record);
}

void ContactSheetWorkspace::restore() {
  if (const core::ContactSheetRef record = sheet()) restoreContactSheet(on_.store, record);
}

core::ContactSheetRef ContactSheetWorkspace::save() {
  const std::vector<core::AssetRef> items = assets();
  try {
    const std::optional<QUuid> project = items.empty() ? std::nullopt : items.front()->projectID;
    const core::ContactSheetRef made = createContactSheet(on_.store, items, project);
    on_.state.setContactEdits({}, {});
    open(StoredSheet{made->id});
    return made;
  } catch (const SorvanError& failure) {
    on_.alerts.showError(failure.message());
    return nullptr;
  }
}

void ContactSheetWorkspace::setRating(QUuid item, int stars) {
  if (const core::AssetRef asset = on_.store.asset(item)) core::setRating(on_.store, asset, stars);
}

void ContactSheetWorkspace::toggleFavorite(QUuid item) {
  if (const core::AssetRef asset = on_.store.asset(item)) core::toggleFavorite(on_.store, asset);
}

void ContactSheetWorkspace::setStatus(QUuid item, core::AssetStatus status) {
  if (const core::AssetRef asset = on_.store.asset(item)) core::setStatus(on_.store, asset, status);
}

void ContactSheetWorkspace::toggleReview(QUuid item) {
  const core::AssetRef asset = on_.store.asset(item);
  if (!asset) return;
  const bool marked = asset->status() != core::AssetStatus::draft;
  core::setStatus(on_.store, asset, marked ? core::AssetStatus::draft : core::AssetStatus::shortlist);
}

void ContactSheetWorkspace::perform(QUuid job, JobAction action) { on_.jobs.perform(job, action); }

}  // namespace sorvan::shell
