// Which actions are offered now: what ActionsPresenter looks at before it says that one is enabled.
#include "core/history.h"
#include "core/library_store.h"
#include "shell/actions_presenter.h"
#include "shell/comparison_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/jobs_presenter.h"
#include "shell/locations.h"
#include "shell/presenters.h"
#include "shell/recipes.h"
#include "shell/transfer_presenter.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

// The views whose items are looked at and opened from where they are.
bool showsItems(ModeKind kind) {
  return showsGallery(kind) || kind == ModeKind::contactSheet || kind == ModeKind::lineage ||
         kind == ModeKind::generation;
}

bool isLivePicture(const core::AssetRef& asset) {
  return asset && !asset->isTrashed() && asset->type() == core::MediaType::image;
}

}  // namespace

QUuid ActionsPresenter::selectedJob() const {
  const QSet<QUuid>& selection = ports_.presenters.state->selection();
  if (selection.size() != 1) return {};
  return ports_.store.job(*selection.begin()) ? *selection.begin() : QUuid();
}

QSet<QUuid> ActionsPresenter::selectedJobs() const {
  QSet<QUuid> jobs;
  for (const QUuid& id : ports_.presenters.state->selection())
    if (ports_.store.job(id)) jobs.insert(id);
  return jobs;
}

bool ActionsPresenter::jobIsSelected() const {
  return std::ranges::any_of(ports_.presenters.state->selection(),
                             [this](const QUuid& id) { return ports_.store.job(id) != nullptr; });
}

bool ActionsPresenter::itemSelected() const {
  for (const QUuid& id : ports_.presenters.state->selection())
    if (ports_.store.asset(id)) return true;
  return false;
}

bool ActionsPresenter::pictureIsSelected() const {
  return std::ranges::any_of(ports_.presenters.state->selection(),
                             [this](const QUuid& id) { return isLivePicture(ports_.store.asset(id)); });
}

QUuid ActionsPresenter::selectedPicture() const {
  const QSet<QUuid>& selection = ports_.presenters.state->selection();
  if (selection.size() != 1) return {};
  const core::AssetRef asset = ports_.store.asset(*selection.begin());
  return isLivePicture(asset) ? asset->id : QUuid();
}

// In the order of the gallery.
std::vector<QUuid> ActionsPresenter::selectedPictures() const {
  std::vector<core::AssetRef> pictures;
  for (const QUuid& id : ports_.presenters.state->selection()) {
    const core::AssetRef asset = ports_.store.asset(id);
    if (isLivePicture(asset)) pictures.push_back(asset);
  }
  std::sort(pictures.begin(), pictures.end(), [this](const auto& left, const auto& right) {
    return ports_.store.position(*left) < ports_.store.position(*right);
  });
  std::vector<QUuid> ids;
  for (const core::AssetRef& picture : pictures) ids.push_back(picture->id);
  return ids;
}

bool ActionsPresenter::promptKnown() const {
  const QSet<QUuid>& selection = ports_.presenters.state->selection();
  if (selection.size() != 1) return false;
  const auto recipe = recipeOf(ports_.store, *selection.begin());
  return recipe && !recipe->prompt.isEmpty();
}

bool ActionsPresenter::seedKnown() const {
  const QSet<QUuid>& selection = ports_.presenters.state->selection();
  return selection.size() == 1 && seedOf(ports_.store, *selection.begin()).has_value();
}

// What the large view shows; empty while it is not in front.
std::optional<core::MediaType> ActionsPresenter::openMedia() const {
  const WorkspaceMode& mode = ports_.presenters.state->mode();
  const core::AssetRef asset = mode.kind == ModeKind::asset ? ports_.store.asset(mode.subject) : nullptr;
  return asset ? std::optional(asset->type()) : std::nullopt;
}

// Views whose cells open something.
bool ActionsPresenter::opensCells() const {
  const ModeKind view = ports_.presenters.state->mode().kind;
  return showsItems(view) || view == ModeKind::activity;
}

bool ActionsPresenter::itemsShown() const {
  const Presenters& p = ports_.presenters;
  return ports_.store.hasWorkspace() && showsGallery(p.state->mode().kind) && p.gallery->count() > 0;
}

bool ActionsPresenter::holds(EnabledWhen condition) const {
  const bool open = ports_.store.hasWorkspace();
  const auto job = [this] { return ports_.presenters.jobs->job(selectedJob()); };
  switch (condition) {
    case EnabledWhen::always:
      return true;
    case EnabledWhen::workspaceOpen:
      return open;
    case EnabledWhen::textFocused:
      return textFocused_;
    case EnabledWhen::textFocusedOrItemsShown:
      return textFocused_ || itemsShown();
    case EnabledWhen::textFocusedOrCellSelected:
      return textFocused_ || ports_.presenters.transfer->hasItems() || jobIsSelected();
    case EnabledWhen::itemsShown:
      return itemsShown();
    case EnabledWhen::textFocusedOrUndo:
      return textFocused_ || core::canTake(ports_.store, core::HistoryDirection::undo);
    case EnabledWhen::textFocusedOrRedo:
      return textFocused_ || core::canTake(ports_.store, core::HistoryDirection::redo);
    case EnabledWhen::itemSelected:
      return itemSelected();
    case EnabledWhen::picturesSelected:
      return pictureIsSelected();
    case EnabledWhen::pictureSelected:
      return !selectedPicture().isNull();
    case EnabledWhen::liveItemSelected:
      return ports_.presenters.curation->hasLiveItems();
    case EnabledWhen::trashedItemSelected:
      return ports_.presenters.curation->hasTrashedItems();
    case EnabledWhen::oneLiveItemSelected:
      return ports_.presenters.curation->soleItem() != nullptr;
    case EnabledWhen::jobSelected:
      return jobIsSelected();
    case EnabledWhen::jobCanRetry:
      return job().canRetry;
    case EnabledWhen::jobHasResult:
      return job().canSaveRawResult;
    case EnabledWhen::jobCanSubmitAgain:
      return job().action == JobAction::submitAgain;
    case EnabledWhen::jobActive:
      return job().action == JobAction::cancel;
    case EnabledWhen::promptKnown:
      return promptKnown();
    case EnabledWhen::seedKnown:
      return seedKnown();
    case EnabledWhen::itemsComparable:
      return ports_.presenters.comparison && ports_.presenters.comparison->canCompare();
    case EnabledWhen::oneItemSelected:
      return ports_.presenters.comparison && ports_.presenters.comparison->canShowLineage();
    case EnabledWhen::sheetsHere:
      return open && isHere(ModeKind::contactSheets);
    case EnabledWhen::referencesHere:
      return open && isHere(ModeKind::projectReferences);
    case EnabledWhen::galleryItemSelected:
      return showsItems(ports_.presenters.state->mode().kind) && itemSelected();
    case EnabledWhen::cellSelected:
      return opensCells() && (itemSelected() || jobIsSelected());
    case EnabledWhen::pictureOpen:
      return openMedia() == core::MediaType::image;
    case EnabledWhen::playerOpen:
      return openMedia() == core::MediaType::video || openMedia() == core::MediaType::audio;
    case EnabledWhen::clipOpen:
      return openMedia() == core::MediaType::video;
    case EnabledWhen::subView:
      return open && ports_.presenters.state->mode().kind != ModeKind::gallery;
  }
  return false;
}

EnabledWhen ActionsPresenter::conditionOf(ActionId id) {
  switch (id) {
    case ActionId::saveRawResult:
      return EnabledWhen::jobHasResult;
    case ActionId::submitAgain:
      return EnabledWhen::jobCanSubmitAgain;
    case ActionId::cancelJob:
      return EnabledWhen::jobActive;
    default:
      return actionRow(id).enabledWhen;
  }
}

bool ActionsPresenter::isHere(ModeKind mode) const {
  const std::vector<ModeKind> modes = modesAt(ports_.store, ports_.presenters.state->location());
  return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

bool ActionsPresenter::isOffered(ActionId id) const {
  const WorkspaceState& state = *ports_.presenters.state;
  switch (id) {
    case ActionId::showContactSheets:
      return state.isAvailable(ModeKind::contactSheets);
    case ActionId::showReferences:
      return state.isAvailable(ModeKind::projectReferences);
    case ActionId::compareItems:
    case ActionId::newContactSheet:
      return ports_.presenters.comparison && state.isAvailable(ModeKind::contactSheet);
    case ActionId::showLineage:
      return ports_.presenters.comparison && state.isAvailable(ModeKind::lineage);
    default:
      return true;
  }
}

bool ActionsPresenter::isEnabled(ActionId id) const { return isOffered(id) && holds(conditionOf(id)); }

bool ActionsPresenter::isChecked(ActionId id) const {
  if (id == ActionId::toggleSidebar) return ports_.presenters.state->sidebarVisible();
  if (id == ActionId::toggleInspector) return ports_.presenters.state->inspectorVisible();
  if (id == ActionId::toggleFilters) return ports_.presenters.state->filtersVisible();
  if (id == ActionId::stepOnAfterMark) return ports_.presenters.curation->stepsOn();
  return false;
}

}  // namespace sorvan::shell
