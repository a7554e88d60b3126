#include "shell/jobs_presenter.h"

#include "base/text.h"
#include "core/library_store.h"
#include "generation/cancel_and_retry.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/contact_sheets.h"
#include "shell/history_texts.h"
#include "shell/job_displays.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace sorvan::shell {

namespace {

bool isActive(JobState state) { return state == JobState::queued || state == JobState::running; }

bool belongs(JobState state, JobSegment segment) {
  switch (segment) {
    case JobSegment::all:
      return true;
    case JobSegment::inProgress:
      return isActive(state);
    case JobSegment::failed:
      return state == JobState::failed;
    case JobSegment::cancelled:
      return state == JobState::cancelled || state == JobState::salvaging;
    case JobSegment::complete:
      return state == JobState::complete;
  }
  return false;
}

// 0: in progress, 1: to look at, 2: by day.
std::size_t groupRank(JobState state) {
  if (isActive(state)) return 0;
  return state == JobState::failed ? 1 : 2;
}

// Cancel comes first and has the focus: money is spent only on purpose.
Alert warning(const QString& title, const QString& text, const QString& goOn) {
  return {0,
          AlertTone::warning,
          title,
          text,
          {{texts::cancel, AlertButtonRole::primary, true}, {goOn, AlertButtonRole::plain, false}}};
}

// Whether the results of the job drop into places of the sheet.
bool isOnSheet(const core::LibraryStore& store, const core::GenerationJob& job, const ContactSheetSource& source) {
  const auto request = job.request();
  if (!request || !request->comparisonID) return false;
  if (const auto* batch = std::get_if<ComparisonBatch>(&source)) return batch->comparison == *request->comparisonID;
  const core::ContactSheetRef sheet = sheetFor(store, source);
  return sheet && sheet->comparisonID == request->comparisonID;
}

}  // namespace

JobsPresenter::JobsPresenter(Ports ports, QObject* parent) : QObject(parent), ports_(std::move(ports)) {
  connect(&ports_.store, &core::LibraryStore::revisionChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&ports_.store, &core::LibraryStore::workspaceChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&ports_.displays, &JobDisplays::ticked, this, &JobsPresenter::contentChanged);
  connect(&ports_.queue, &generation::JobQueue::jobFinished, this, &JobsPresenter::announce);
  connect(&ports_.state, &WorkspaceState::modeChanged, this, &JobsPresenter::withdrawSeen);
  connect(&ports_.state, &WorkspaceState::locationChanged, this, &JobsPresenter::withdrawSeen);
  connect(&ports_.alerts, &AlertsPresenter::toastDismissed, this,
          [this](quint64 toast) { std::erase_if(announced_, [&](const auto& known) { return known.first == toast; }); });
  refresh();
}

JobsPresenter::~JobsPresenter() = default;

void JobsPresenter::refresh() {
  refreshSoon_.withdraw();
  std::array<Rank, ranks> ranked;
  int active = 0;
  for (const core::JobRef& job : ports_.store.jobs()) {
    const JobState state = ports_.displays.stateOf(*job);
    if (isActive(state)) ++active;
    if (belongs(state, segment_) && isFound(*job)) ranked.at(groupRank(state)).push_back(job.get());
  }
  setRows(ranked);
  if (active != activeCount_) {
    activeCount_ = active;
    Q_EMIT activeChanged();
  }
}

QString JobsPresenter::groupTitle(std::size_t rank, const core::GenerationJob& job) {
  switch (rank) {
    case 0:
      return texts::segmentInProgress;
    case 1:
      return texts::groupToLookAt;
    default:
      return days_.of(job.createdAt, ports_.store.now()).title;
  }
}

void JobsPresenter::setRows(const std::array<Rank, ranks>& ranked) {
  std::vector<QUuid> rows;
  std::vector<JobGroup> groups;
  for (std::size_t rank = 0; rank < ranks; ++rank) {
    for (const core::GenerationJob* job : ranked.at(rank)) {
      const QString title = groupTitle(rank, *job);
      if (groups.empty() || groups.back().title != title) groups.push_back({title, static_cast<int>(rows.size()), 0});
      ++groups.back().count;
      rows.push_back(job->id);
    }
  }
  const bool sameLayout = rows == rows_ && groups == groups_;
  rows_ = std::move(rows);
  groups_ = std::move(groups);
  if (sameLayout) {
    Q_EMIT contentChanged();
  } else {
    Q_EMIT layoutChanged();
  }
}

void JobsPresenter::setSegment(JobSegment segment) {
  if (segment_ == segment) return;
  segment_ = segment;
  refresh();
}

void JobsPresenter::setSearch(const QString& text) {
  if (search_ == text) return;
  search_ = text;
  foldedSearch_ = foldForSearch(text.trimmed());
  if (foldedSearch_.isEmpty()) folded_.clear();
  refresh();
}

bool JobsPresenter::isFound(const core::GenerationJob& job) {
  if (foldedSearch_.isEmpty()) return true;
  const JobDisplay shown = ports_.displays.words(job);
  const auto holds = [this](const QString& text) { return folded(text).contains(foldedSearch_); };
  return holds(shown.prompt) || holds(shown.modelName) || holds(shown.destination) || holds(shown.detail) ||
         holds(shown.message);
}

// Each key of a search looks through the same texts, most of which belong to many jobs.
const QString& JobsPresenter::folded(const QString& text) {
  auto known = folded_.constFind(text);
  if (known == folded_.constEnd()) known = folded_.insert(text, foldForSearch(text));
  return *known;
}

QString JobsPresenter::segmentTitle(JobSegment segment) {
  switch (segment) {
    case JobSegment::all:
      return texts::segmentAll;
    case JobSegment::inProgress:
      return texts::segmentInProgress;
    case JobSegment::failed:
      return texts::segmentFailed;
    case JobSegment::cancelled:
      return texts::segmentCancelled;
    case JobSegment::complete:
      return texts::segmentComplete;
  }
  return {};
}

int JobsPresenter::count() const { return static_cast<int>(rows_.size()); }
QUuid JobsPresenter::idAt(int index) const { return rows_.at(static_cast<std::size_t>(index)); }
JobDisplay JobsPresenter::rowAt(int index) const { return ports_.displays.display(idAt(index)); }
JobDisplay JobsPresenter::job(QUuid id) const { return ports_.displays.display(id); }

int JobsPresenter::indexOf(QUuid id) const {
  const auto found = std::find(rows_.begin(), rows_.end(), id);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QString JobsPresenter::emptyTitle() const {
  return ports_.store.jobs().empty() ? texts::noGenerations : texts::noMatchingGenerations;
}
int JobsPresenter::activeCount() const { return activeCount_; }
QString JobsPresenter::activeText() const {
  return activeCount_ == 0 ? QString() : texts::generatingCount(activeCount_);
}

void JobsPresenter::cancel(QUuid id) { generation::cancel(ports_.queue, id); }

void JobsPresenter::cancelJobs(const QSet<QUuid>& ids) {
  std::vector<core::JobRef> active;
  for (const core::JobRef& job : ports_.store.jobs())
    if (ids.contains(job->id) && job->isActive()) active.push_back(job);
  std::stable_partition(active.begin(), active.end(),
                        [](const core::JobRef& job) { return job->status == core::jobStatus::queued; });
  for (const core::JobRef& job : active) cancel(job->id);
}

int JobsPresenter::activeAmong(const QSet<QUuid>& ids) const {
  return static_cast<int>(std::ranges::count_if(ports_.store.jobs(), [&ids](const core::JobRef& job) {
    return job->isActive() && ids.contains(job->id);
  }));
}

void JobsPresenter::cancelAll() {
  if (activeCount_ == 0) return;
  Alert question{0,
                 AlertTone::warning,
                 texts::cancelAllTitle(activeCount_),
                 texts::cancelAllText,
                 {{texts::keepRunning, AlertButtonRole::primary, true},
                  {texts::cancelAll, AlertButtonRole::plain, false}}};
  ports_.alerts.ask(std::move(question), [this](int button) {
    if (button != 1) return;
    QSet<QUuid> all;
    for (const core::JobRef& job : ports_.store.jobs()) all.insert(job->id);
    cancelJobs(all);
  });
}

void JobsPresenter::retry(QUuid id) {
  const auto question = generation::retry(ports_.queue, id);
  if (!question) return;
  ports_.alerts.ask(warning(texts::chargedRetryTitle, *question, texts::generate), [this, id](int button) {
    if (button == 1)
      generation::retry(ports_.queue, id, generation::RetryChoice::decide,
                        generation::RetryConfirmation::mayBePaidTwice);
  });
}

// A retained result lands without a provider, so this is Retry under the name that says what it does.
void JobsPresenter::saveResult(QUuid id) { retry(id); }

void JobsPresenter::saveRawResult(QUuid id) {
  if (generation::hasRecoverableResult(ports_.store, id)) generation::saveRawResult(ports_.queue, id);
}

void JobsPresenter::submitAgain(QUuid id) {
  ports_.alerts.ask(warning(texts::submitAgainTitle, texts::submitAgainText, texts::submitAgainButton),
                    [this, id](int button) {
                      if (button == 1) generation::submitAgain(ports_.queue, id);
                    });
}

void JobsPresenter::copyDetails(QUuid id) { copyDetails(QSet<QUuid>{id}); }

void JobsPresenter::copyDetails(const QSet<QUuid>& ids) {
  QStringList details;
  for (const core::JobRef& job : ports_.store.jobs())
    if (ids.contains(job->id)) details << generation::failureDetails(ports_.queue, job->id);
  if (details.isEmpty()) return;
  ports_.copyText(details.join(QStringLiteral("\n\n")));
  ports_.alerts.showToast({0, AlertTone::success, texts::detailsCopied, {}, {}, false});
}

void JobsPresenter::show(QUuid id) {
  QSet<QUuid> outputs;
  for (const core::AssetRef& asset : ports_.store.outputs(id))
    if (!asset->isTrashed()) outputs.insert(asset->id);
  ports_.state.setLocation(allMediaLocation);
  ports_.state.select(outputs);
}

void JobsPresenter::perform(QUuid id, JobAction action) {
  switch (action) {
    case JobAction::none:
      break;
    case JobAction::cancel:
      cancel(id);
      break;
    case JobAction::retry:
      retry(id);
      break;
    case JobAction::saveResult:
      saveResult(id);
      break;
    case JobAction::submitAgain:
      submitAgain(id);
      break;
    case JobAction::show:
      show(id);
      break;
  }
}

// Whether the results appear in the view in front: on the wall of a place that they belong to, or on their sheet.
bool JobsPresenter::isSeen(const core::GenerationJob& job) const {
  const WorkspaceMode& mode = ports_.state.mode();
  if (mode.sheet) return isOnSheet(ports_.store, job, *mode.sheet);
  if (!showsGallery(mode.kind)) return false;
  const QString& location = ports_.state.location();
  if (location == trashLocation || location == favoritesLocation) return false;
  if (location == inboxLocation) return !job.projectID;
  const std::optional<QUuid> project = locationProject(ports_.store, location);
  return !project || job.projectID == project;
}

// Good news shows where it cannot be seen anyway.
void JobsPresenter::announce(const QUuid& id) {
  const core::JobRef job = ports_.store.job(id);
  if (!job || job->status != core::jobStatus::complete || isSeen(*job)) return;
  const JobDisplay display = ports_.displays.display(*job);
  const quint64 toast = ports_.alerts.showToast(
      {0, AlertTone::success, display.detail, display.prompt, texts::show, false}, [this, id] { show(id); });
  announced_.emplace_back(toast, id);
}

// Whoever goes where the results are has no more use for the news of them.
void JobsPresenter::withdrawSeen() {
  std::vector<quint64> leaving;
  for (const auto& [toast, id] : announced_) {
    const core::JobRef job = ports_.store.job(id);
    if (!job || isSeen(*job)) leaving.push_back(toast);
  }
  std::erase_if(announced_, [&](const auto& known) { return std::ranges::find(leaving, known.first) != leaving.end(); });
  for (const quint64 toast : leaving) ports_.alerts.dismissToast(toast);
}

}  // namespace sorvan::shell
