#include "generation/job_queue.h"

#include <QHash>
#include <QSet>

#include <map>

#include "base/invariant.h"
#include "base/task_scope.h"
#include "generation/job_runner.h"

namespace sorvan::generation {

struct JobQueue::State {
  explicit State(LibraryStore& store) : scope([&store](const QString& message) { store.setError(message); }) {}

  std::map<QUuid, std::stop_source> tasks;
  QSet<QUuid> startable;
  QHash<QUuid, RemoteJobFailed::Billing> remoteFailures;
  std::stop_source submissions;
  bool draining = false;
  TaskScope scope;
};

JobQueue::JobQueue(LibraryStore& store, GenerationPorts ports)
    : m_store(store), m_ports(std::move(ports)), m_state(std::make_unique<State>(store)) {
  m_store.busyChecks.push_back([self = QPointer<JobQueue>(this)] { return self && self->runningCount() > 0; });
}

JobQueue::~JobQueue() { invariant(m_state->scope.running() == 0, "The queue was drained before it went."); }

bool JobQueue::isRunning(const QUuid& job) const { return m_state->tasks.contains(job); }

std::size_t JobQueue::runningCount() const { return m_state->tasks.size(); }

void JobQueue::allowStart(const QUuid& job) { m_state->startable.insert(job); }

void JobQueue::pump() {
  if (m_state->draining) return;
  // The ids first: starting a task never runs its code here, but the table may be sorted anew before it does.
  std::vector<QUuid> waiting;
  for (const JobRef& job : m_store.jobs())
    if (job->status == jobStatus::queued && m_state->startable.contains(job->id)) waiting.push_back(job->id);
  for (auto oldest = waiting.rbegin(); oldest != waiting.rend(); ++oldest) {
    if (isRunning(*oldest)) continue;
    if (runningCount() >= runningLimit) return;
    startTask(*oldest);
  }
}

void JobQueue::startTask(const QUuid& job) {
  std::stop_source source;
  m_state->tasks.emplace(job, source);
  m_state->scope.spawn(runTask(this, job, source.get_token()));
}

Task<> JobQueue::runTask(JobQueue* queue, QUuid job, std::stop_token stop) {
  co_await yieldToLoop();
  const JobRef record = queue->store().job(job);
  if (record && record->status == jobStatus::queued && !stop.stop_requested()) co_await runJob(*queue, job, stop);
  queue->endTask(job);
}

void JobQueue::endTask(const QUuid& job) {
  m_state->tasks.erase(job);
  Q_EMIT jobFinished(job);
  pump();
}

void JobQueue::requestStop(const QUuid& job) {
  const auto task = m_state->tasks.find(job);
  if (task == m_state->tasks.end()) return;
  std::stop_source source = task->second;
  source.request_stop();
}

std::optional<RemoteJobFailed::Billing> JobQueue::remoteFailure(const QUuid& job) const {
  const auto failure = m_state->remoteFailures.constFind(job);
  if (failure == m_state->remoteFailures.constEnd()) return std::nullopt;
  return *failure;
}

void JobQueue::noteRemoteFailure(const QUuid& job, std::optional<RemoteJobFailed::Billing> failure) {
  if (failure)
    m_state->remoteFailures.insert(job, *failure);
  else
    m_state->remoteFailures.remove(job);
}

std::stop_token JobQueue::submissionStop() const { return m_state->submissions.get_token(); }

bool JobQueue::isDraining() const { return m_state->draining; }

namespace {

/// Ends the patience for submissions in flight, unless everything ended before.
Task<> endPatience(const Clock* clock, std::chrono::milliseconds limit, std::stop_source submissions,
                   std::stop_token stop) {
  co_await clock->sleep(limit, stop);
  submissions.request_stop();
}

}  // namespace

Task<> JobQueue::drain(std::chrono::milliseconds limit) {
  m_state->draining = true;
  std::vector<std::stop_source> sources;
  for (const auto& [job, source] : m_state->tasks) sources.push_back(source);
  for (std::stop_source& source : sources) source.request_stop();
  m_state->scope.requestStop();
  TaskScope patience;
  patience.spawn(endPatience(&clock(), limit, m_state->submissions, patience.token()));
  co_await m_state->scope.whenIdle();
  co_await patience.drain();
}

void JobQueue::spawn(Task<> task) { m_state->scope.spawn(std::move(task)); }

std::stop_token JobQueue::stopToken() const { return m_state->scope.token(); }

}  // namespace sorvan::generation
