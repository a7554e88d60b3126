#include "shell/job_displays.h"

#include "account/charges.h"
#include "base/clock.h"
#include "core/image_format.h"
#include "core/library_store.h"
#include "generation/cancel_and_retry.h"
#include "generation/job_queue.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/work_on_items.h"

namespace sorvan::shell {

namespace {

constexpr double soundAspectRatio = 1.6;

QString actionTitle(JobAction action) {
  switch (action) {
    case JobAction::none:
      return {};
    case JobAction::cancel:
      return texts::cancel;
    case JobAction::retry:
      return texts::retry;
    case JobAction::saveResult:
      return texts::saveResult;
    case JobAction::submitAgain:
      return texts::submitAgain;
    case JobAction::show:
      return texts::show;
  }
  return {};
}

}  // namespace

JobDisplays::JobDisplays(core::LibraryStore& store, generation::JobQueue& queue, QObject* parent)
    : QObject(parent), store_(store), queue_(queue) {
  connect(&store_, &core::LibraryStore::revisionChanged, this, &JobDisplays::startTicking);
  connect(&queue_, &generation::JobQueue::jobRestarted, this,
          [this](const QUuid& job, Instant at) { restarts_.insert(job, at); });
}

JobDisplays::~JobDisplays() = default;

JobState JobDisplays::stateOf(const core::GenerationJob& job) const {
  if (store_.salvaging.contains(job.id)) return JobState::salvaging;
  if (job.status == core::jobStatus::queued) return JobState::queued;
  if (job.status == core::jobStatus::generating) return JobState::running;
  if (job.status == core::jobStatus::cancelled) return JobState::cancelled;
  return job.status == core::jobStatus::complete ? JobState::complete : JobState::failed;
}

QString JobDisplays::modelName(const QString& model) const {
  return queue_.ports().models ? queue_.ports().models->displayName(model) : model;
}

account::Spend JobDisplays::spend() const { return {queue_.ports().billing().ownKeyAllowed}; }

QHash<QUuid, QString> JobDisplays::workOnItems() const {
  QHash<QUuid, QString> work;
  if (!queue_.ports().models) return work;
  for (const core::JobRef& job : store_.activeJobs()) {
    const auto request = job->request();
    if (!request || stateOf(*job) != JobState::running) continue;
    if (const auto found = workOnItem(*request, store_, *queue_.ports().models)) work.insert(found->first, found->second);
  }
  return work;
}

double JobDisplays::aspectRatio(const core::GenerationJob& job) const {
  const auto request = job.request();
  if (!request) return 1;
  const auto fact = queue_.ports().models ? queue_.ports().models->find(request->model) : std::nullopt;
  if (fact && fact->output == core::MediaType::audio) return soundAspectRatio;
  const core::ImageFormat* format = core::ImageFormat::find(request->size);
  return format ? static_cast<double>(format->width) / format->height : 1;
}

JobDisplay JobDisplays::display(const QUuid& id) const {
  const core::JobRef job = store_.job(id);
  return job ? display(*job) : JobDisplay();
}

JobDisplay JobDisplays::words(const core::GenerationJob& job) const {
  JobDisplay display;
  display.id = job.id;
  display.state = stateOf(job);
  display.detail = display.state == JobState::queued ? texts::waitingToStart : job.detail;
  display.message = display.state == JobState::failed ? job.errorMessage.value_or(QString()) : QString();
  const core::ProjectRef project = job.projectID ? store_.project(*job.projectID) : nullptr;
  display.destination = project ? project->name : texts::inbox;
  if (const auto request = job.request()) {
    display.prompt = request->prompt;
    display.modelName = modelName(request->model);
  }
  return display;
}

JobDisplay JobDisplays::display(const core::GenerationJob& job) const {
  JobDisplay display = words(job);
  display.aspectRatio = aspectRatio(job);
  display.thumbnailPath = referenceThumbnail(job);
  fillTimes(display, job);
  fillOutputs(display, job);
  fillAction(display, job);
  return display;
}

QString JobDisplays::referenceThumbnail(const core::GenerationJob& job) const {
  const auto request = job.request();
  if (!request || request->referenceIDs.empty()) return {};
  const core::AssetRef reference = store_.asset(request->referenceIDs.front());
  return reference ? store_.thumbnailOf(*reference).value_or(QString()) : QString();
}

void JobDisplays::fillTimes(JobDisplay& display, const core::GenerationJob& job) const {
  display.startedText = dayText(job.createdAt, store_.now());
  if (display.state == JobState::queued) return;
  display.elapsedText = clockText(secondsAtWork(job));
}

double JobDisplays::secondsAtWork(const core::GenerationJob& job) const {
  return job.finishedAt.value_or(store_.now()) - startOf(job);
}

void JobDisplays::fillOutputs(JobDisplay& display, const core::GenerationJob& job) const {
  const auto outputs = store_.outputs(job.id);
  display.outputs = static_cast<int>(outputs.size());
  if (!outputs.empty()) display.thumbnailPath = store_.thumbnailOf(*outputs.front()).value_or(QString());
  account::Charge all;
  for (const core::GenerationRef& generation : store_.generationsOf(job.id)) {
    const auto cost = generation->costRecord();
    if (!cost) continue;
    all.cost = all.cost.value_or(0) + cost->perImageUSD;
    if (cost->credits) all.credits = all.credits.value_or(0) + *cost->credits;
  }
  if (all.cost) display.costText = all.costDisplay(spend());
}

void JobDisplays::fillAction(JobDisplay& display, const core::GenerationJob& job) const {
  switch (display.state) {
    case JobState::queued:
    case JobState::running:
      display.action = JobAction::cancel;
      break;
    case JobState::salvaging:
      display.action = JobAction::none;
      break;
    case JobState::complete:
      display.action = display.outputs > 0 ? JobAction::show : JobAction::none;
      break;
    case JobState::failed:
    case JobState::cancelled: {
      const bool retained = generation::hasRecoverableResult(store_, job.id);
      const bool unknown = !retained && generation::submissionIsUnknown(store_, job.id);
      display.canSaveRawResult = retained;
      display.canRetry = !retained && !unknown;
      display.action = retained ? JobAction::saveResult : unknown ? JobAction::submitAgain : JobAction::retry;
      break;
    }
  }
  display.actionTitle = actionTitle(display.action);
}

Instant JobDisplays::startOf(const core::GenerationJob& job) const { return restarts_.value(job.id, job.createdAt); }

void JobDisplays::startTicking() {
  if (ticking_ || store_.activeJobs().empty()) return;
  ticking_ = true;
  tasks_.spawn(tick(tasks_.token()));
}

Task<> JobDisplays::tick(std::stop_token stop) {
  while (true) {
    co_await queue_.clock().sleep(std::chrono::seconds(1), stop);
    throwIfStopped(stop);
    if (store_.activeJobs().empty()) break;
    Q_EMIT ticked();
  }
  ticking_ = false;
}

}  // namespace sorvan::shell
