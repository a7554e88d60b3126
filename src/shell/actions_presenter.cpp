#include "shell/actions_presenter.h"

#include "core/history.h"
#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/comparison_presenter.h"
#include "shell/composer_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/inspector_presenter.h"
#include "shell/jobs_presenter.h"
#include "shell/locations.h"
#include "shell/marking_presenter.h"
#include "shell/presenters.h"
#include "shell/saved_references_presenter.h"
#include "shell/texts.h"
#include "shell/updates_presenter.h"
#include "shell/transfer_presenter.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"
#include "shell/workspace_state.h"

namespace sorvan::shell {

namespace {

constexpr int rowHeightStep = 24;

int starsOf(ActionId id) {
  switch (id) {
    case ActionId::rateOne:
      return 1;
    case ActionId::rateTwo:
      return 2;
    case ActionId::rateThree:
      return 3;
    case ActionId::rateFour:
      return 4;
    case ActionId::rateFive:
      return 5;
    default:
      return 0;
  }
}

std::optional<core::AssetStatus> statusOf(ActionId id) {
  switch (id) {
    case ActionId::statusDraft:
      return core::AssetStatus::draft;
    case ActionId::statusShortlist:
      return core::AssetStatus::shortlist;
    case ActionId::statusApproved:
      return core::AssetStatus::approved;
    case ActionId::statusFinal:
      return core::AssetStatus::final;
    case ActionId::statusRejected:
      return core::AssetStatus::rejected;
    default:
      return std::nullopt;
  }
}

core::HistoryDirection directionOf(ActionId id) {
  return id == ActionId::redo ? core::HistoryDirection::redo : core::HistoryDirection::undo;
}

}  // namespace

ActionsPresenter::ActionsPresenter(Ports ports, QObject* parent) : QObject(parent), ports_(std::move(ports)) {
  const Presenters& p = ports_.presenters;
  connect(&ports_.store, &core::LibraryStore::workspaceChanged, this, &ActionsPresenter::changed);
  connect(&ports_.store, &core::LibraryStore::activityChanged, this, &ActionsPresenter::changed);
  connect(&ports_.store.history(), &core::LibraryHistory::changed, this, &ActionsPresenter::changed);
  connect(p.curation, &CurationPresenter::stepsOnChanged, this, &ActionsPresenter::changed);
  connect(p.state, &WorkspaceState::selectionChanged, this, &ActionsPresenter::changed);
  connect(p.state, &WorkspaceState::modeChanged, this, &ActionsPresenter::changed);
  connect(p.state, &WorkspaceState::availableChanged, this, &ActionsPresenter::changed);
  connect(p.state, &WorkspaceState::locationChanged, this, &ActionsPresenter::changed);
  connect(p.state, &WorkspaceState::layoutChanged, this, &ActionsPresenter::changed);
  connect(p.gallery, &GalleryPresenter::layoutChanged, this, &ActionsPresenter::changed);
  connect(p.jobs, &JobsPresenter::layoutChanged, this, &ActionsPresenter::changed);
  connect(p.jobs, &JobsPresenter::activeChanged, this, &ActionsPresenter::changed);
}

void ActionsPresenter::setTextFocused(bool focused) {
  if (textFocused_ == focused) return;
  textFocused_ = focused;
  Q_EMIT changed();
}

void ActionsPresenter::toggleMarking() {
  MarkingPresenter* marking = ports_.presenters.marking;
  if (!marking) return;
  if (marking->isMarking())
    marking->leave();
  else
    marking->begin(selectedPicture());
}

QString ActionsPresenter::title(ActionId id) const {
  const QString plain = actionRow(id).title;
  if (textFocused_ || (id != ActionId::undo && id != ActionId::redo)) return plain;
  const auto edit = ports_.store.history().next(directionOf(id));
  if (!edit) return plain;
  return id == ActionId::undo ? texts::undoNamed(edit->name) : texts::redoNamed(edit->name);
}

void ActionsPresenter::trigger(ActionId id) {
  if (!isEnabled(id)) return;
  if (triggerForWindow(id) || triggerForComposer(id) || triggerForHistory(id) || triggerForCuration(id) ||
      triggerForComparison(id) || triggerForSelection(id))
    return;
  Q_EMIT viewActionRequested(id);
}

bool ActionsPresenter::triggerForWindow(ActionId id) {
  const Presenters& p = ports_.presenters;
  switch (id) {
    case ActionId::openAnotherWorkspace:
      p.welcome->chooseWorkspace();
      return true;
    case ActionId::quit:
      ports_.quit();
      return true;
    case ActionId::showGallery:
      p.state->setMode({ModeKind::gallery});
      return true;
    case ActionId::showContactSheets:
      p.state->setMode({ModeKind::contactSheets});
      return true;
    case ActionId::showReferences:
      p.state->setMode({ModeKind::projectReferences});
      return true;
    case ActionId::showHistory:
      p.state->setMode({ModeKind::activity});
      return true;
    case ActionId::showCosts:
      p.state->setMode({ModeKind::costs});
      return true;
    case ActionId::goBack:
      p.state->goBack();
      return true;
    case ActionId::searchMedia:
      // The gallery and the history have a field each; the window gives it the keyboard.
      if (p.state->mode().kind != ModeKind::activity && !showsGallery(p.state->mode().kind))
        p.state->setMode({ModeKind::gallery});
      return false;
    case ActionId::toggleFilters:
      p.state->setFiltersVisible(!p.state->filtersVisible());
      return true;
    case ActionId::toggleSidebar:
      p.state->setSidebarVisible(!p.state->sidebarVisible());
      return true;
    case ActionId::toggleInspector:
      p.state->setInspectorVisible(!p.state->inspectorVisible());
      return true;
    case ActionId::largerThumbnails:
      p.state->setRowHeight(p.state->rowHeight() + rowHeightStep);
      return true;
    case ActionId::smallerThumbnails:
      p.state->setRowHeight(p.state->rowHeight() - rowHeightStep);
      return true;
    case ActionId::checkForUpdates:
      if (p.updates) p.updates->checkAndTell();
      return true;
    case ActionId::about:
      p.alerts->showInformation(texts::applicationName, texts::aboutText(ports_.version));
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::triggerForComposer(ActionId id) {
  ComposerPresenter& composer = *ports_.presenters.composer;
  switch (id) {
    case ActionId::newAudio:
      composer.startAudio();
      return true;
    case ActionId::focusComposer:
      composer.focus();
      return true;
    case ActionId::generate:
      composer.submit();
      return true;
    case ActionId::clearComposer:
      composer.clear();
      return true;
    case ActionId::commandMode:
      composer.setCommandMode(!composer.display().command);
      return true;
    case ActionId::useAsReference:
      composer.useAsReferences(selectedPictures());
      return true;
    case ActionId::saveAsReference:
      if (ports_.presenters.savedReferences) ports_.presenters.savedReferences->saveSelection();
      return true;
    case ActionId::reusePrompt:
      composer.reusePrompt(*ports_.presenters.state->selection().begin());
      return true;
    case ActionId::useSeed:
      composer.useSeed(*ports_.presenters.state->selection().begin());
      return true;
    case ActionId::copyPrompt:
      composer.copyPrompt(*ports_.presenters.state->selection().begin());
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::triggerForSelection(ActionId id) {
  const Presenters& p = ports_.presenters;
  switch (id) {
    case ActionId::copy:
      if (textFocused_) return false;
      if (ports_.presenters.transfer->hasItems())
        p.transfer->copySelected();
      else
        p.jobs->copyDetails(selectedJobs());
      return true;
    case ActionId::selectAll:
      return !textFocused_ && selectAllItems();
    case ActionId::retryJob:
      p.jobs->retry(selectedJob());
      return true;
    case ActionId::saveResult:
      p.jobs->saveResult(selectedJob());
      return true;
    case ActionId::saveRawResult:
      p.jobs->saveRawResult(selectedJob());
      return true;
    case ActionId::submitAgain:
      p.jobs->submitAgain(selectedJob());
      return true;
    case ActionId::cancelJob:
      p.jobs->cancel(selectedJob());
      return true;
    case ActionId::copyJobDetails:
      p.jobs->copyDetails(selectedJobs());
      return true;
    case ActionId::showInFiles:
      showInFiles();
      return true;
    case ActionId::markAreas:
      toggleMarking();
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::triggerForHistory(ActionId id) {
  switch (id) {
    case ActionId::undo:
    case ActionId::redo:
      if (textFocused_) return false;
      core::applyHistory(ports_.store, directionOf(id));
      return true;
    case ActionId::aboutUndo:
      ports_.presenters.alerts->showInformation(texts::aboutUndoTitle, texts::aboutUndo);
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::triggerForComparison(ActionId id) {
  ComparisonPresenter* comparison = ports_.presenters.comparison;
  switch (id) {
    case ActionId::compareItems:
      comparison->compareSelected();
      return true;
    case ActionId::newContactSheet:
      comparison->makeSheet();
      return true;
    case ActionId::showLineage:
      comparison->showLineage();
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::triggerForCuration(ActionId id) {
  CurationPresenter& curation = *ports_.presenters.curation;
  if (const auto status = statusOf(id)) {
    curation.setStatus(*status);
    return true;
  }
  switch (id) {
    case ActionId::toggleFavorite:
      curation.toggleFavorite();
      return true;
    case ActionId::rateNone:
    case ActionId::rateOne:
    case ActionId::rateTwo:
    case ActionId::rateThree:
    case ActionId::rateFour:
    case ActionId::rateFive:
      curation.setRating(starsOf(id));
      return true;
    case ActionId::stepOnAfterMark:
      curation.setStepsOn(!curation.stepsOn());
      return true;
    case ActionId::moveToTrash:
      curation.moveToTrash();
      return true;
    case ActionId::restoreItems:
      curation.restoreSelected();
      return true;
    default:
      return false;
  }
}

bool ActionsPresenter::selectAllItems() {
  const GalleryPresenter& gallery = *ports_.presenters.gallery;
  QSet<QUuid> all;
  all.reserve(gallery.count());
  for (int index = gallery.jobCount(); index < gallery.count(); ++index) all.insert(gallery.idAt(index));
  ports_.presenters.state->select(all);
  return true;
}

void ActionsPresenter::showInFiles() {
  for (const QUuid& id : ports_.presenters.state->selection())
    if (const core::AssetRef asset = ports_.store.asset(id)) {
      ports_.showFile(ports_.store.fileOf(*asset));
      return;
    }
}

}  // namespace sorvan::shell
