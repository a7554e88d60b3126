#include "shell/views/generation_page.h"

#include <QHBoxLayout>
#include <QPainter>

#include "shell/actions_presenter.h"
#include "shell/composer_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/inspector_texts.h"
#include "shell/jobs_presenter.h"
#include "shell/texts.h"
#include "shell/views/inspector_view.h"
#include "shell/views/library_view.h"
#include "shell/views/media_wall.h"
#include "shell/views/results_source.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

namespace sorvan::views {

namespace {
constexpr int kRequestWidth = 340;
constexpr int kResultHeight = 280;
}  // namespace

GenerationView::GenerationView(const PageDesk& desk)
    : library_(desk.library),
      on_(desk.on),
      source_(new ResultsSource(*on_.inspector, *on_.gallery, this)),
      request_(new InspectorView(library_.thumbnails())),
      wall_(new MediaWall(*source_, library_.thumbnails())) {
  request_->setAccessibleName(shell::texts::requestZone);
  request_->setFixedWidth(kRequestWidth);
  wall_->setAccessibleName(shell::texts::resultsZone);
  wall_->setRowHeight(kResultHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(request_);
  row->addWidget(wall_, 1);
  bindWall();
  bindRequest();
}

void GenerationView::bindWall() {
  connect(source_, &WallSource::layoutChanged, this, &GenerationView::refresh);
  connect(source_, &WallSource::contentChanged, this, &GenerationView::refresh);
  connect(source_, &ResultsSource::lost, on_.state, &WorkspaceState::finishGeneration, Qt::QueuedConnection);
  connect(wall_, &MediaWall::selectionRequested, on_.state, &WorkspaceState::select);
  connect(on_.state, &WorkspaceState::selectionChanged, wall_, [this] { wall_->setSelection(on_.state->selection()); });
  connect(wall_, &MediaWall::opened, this, &GenerationView::openItem);
  connect(wall_, &MediaWall::quickLookRequested, this, [this] { on_.actions->trigger(ActionId::quickLook); });
  connect(wall_, &MediaWall::jobActionRequested, on_.jobs, &JobsPresenter::perform);
  connect(wall_, &MediaWall::jobDismissed, this, [this](QUuid job) {
    on_.gallery->dismissJob(job);
    on_.state->finishGeneration();
  });
  connect(wall_, &MediaWall::favoriteToggled, on_.curation, &CurationPresenter::toggleFavoriteOf);
  connect(wall_, &MediaWall::menuRequested, this, [this](QPoint at) { Q_EMIT library_.wall().menuRequested(at); });
  connect(wall_, &MediaWall::escapePressed, on_.state, &WorkspaceState::finishGeneration);
}

void GenerationView::bindRequest() {
  connect(on_.inspector, &InspectorPresenter::changed, this, &GenerationView::refresh);
  connect(request_, &InspectorView::actionRequested, this, &GenerationView::perform);
  connect(request_, &InspectorView::previewOpened, this,
          [this](QUuid item) { if (on_.gallery->canShow(item)) on_.state->openAsset(item, {item}); });
}

void GenerationView::open(QUuid job) {
  source_->open(job);
  refresh();
}

void GenerationView::refresh() {
  if (source_->job().isNull()) return;
  request_->show(on_.inspector->displayOfJob(source_->job()));
  if (isVisible()) Q_EMIT changed();
}

void GenerationView::openItem(QUuid item) {
  if (on_.gallery->canShow(item)) on_.state->openAsset(item, source_->results());
}

void GenerationView::perform(ActionId action) {
  const QUuid job = source_->job();
  switch (action) {
    case ActionId::cancelJob:
      return on_.jobs->cancel(job);
    case ActionId::retryJob:
      return on_.jobs->retry(job);
    case ActionId::saveResult:
      return on_.jobs->saveResult(job);
    case ActionId::saveRawResult:
      return on_.jobs->saveRawResult(job);
    case ActionId::submitAgain:
      return on_.jobs->submitAgain(job);
    case ActionId::copyJobDetails:
      return on_.jobs->copyDetails(job);
    case ActionId::reusePrompt:
      return on_.composer->reusePrompt(job);
    case ActionId::copyPrompt:
      return on_.composer->copyPrompt(job);
    default:
      return on_.actions->trigger(action);
  }
}

void GenerationView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceCanvas);
}

void addGenerationPage(const PageDesk& desk) {
  auto* view = new GenerationView(desk);
  WorkspaceState* state = desk.on.state;
  PageTraits traits;
  traits.show = [view, state](const WorkspaceMode& mode) {
    if (mode.subject.isNull()) return;
    view->open(mode.subject);
    const std::vector<QUuid>& results = view->source().results();
    const bool chosen = std::any_of(results.begin(), results.end(),
                                    [state](const QUuid& item) { return state->selection().contains(item); });
    if (chosen) return;
    const auto wanted = static_cast<size_t>(std::max(0, mode.index));
    state->select({wanted < results.size() ? results[wanted] : mode.subject});
  };
  traits.title = [view] {
    const auto count = static_cast<qsizetype>(view->source().results().size());
    return PageTitle{titleOf(ModeKind::generation),
                     count == 0 ? QString() : shell::texts::itemCount(countText(count), count)};
  };
  traits.look = [view, state] { return LookedAt{state->selection(), view->source().results()}; };
  traits.keyboard = &view->wall();
  desk.library.addPage(ModeKind::generation, view, traits);
  QObject::connect(view, &GenerationView::changed, &desk.library, &LibraryView::titleChanged);
}

}  // namespace sorvan::views
