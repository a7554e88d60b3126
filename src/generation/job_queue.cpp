#include "generation/job_queue.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <deque>
#include <map>

#include "base/invariant.h"
#include "base/task_scope.h"
#include "generation/job_runner.h"

namespace sorvan::generation {

struct JobQueue::State {
  explicit State(LibraryStore& store) : scope([&store](const QString& message) { store.setError(message); }) {}

  struct Waiting {
    QUuid job;
    Completion granted;
  };

  std::map<QUuid, std::stop_source> tasks;
  std::deque<Waiting> waiting;
  std::multimap<QUuid, Completion> endings;
  QSet<QUuid> unseenRequests;
  bool settling = false;
  QSet<QUuid> startable;
  QHash<QUuid, RemoteJobFailed::Billing> remoteFailures;
  std::stop_source submissions;
  bool draining = false;
  TaskScope scope;
};

JobQueue::JobQueue(LibraryStore& store, GenerationPorts ports)
    : m_store(store), m_ports(std::move(ports)), m_state(std::make_unique<State>(store)) {
  m_store.busyChecks.push_back(
      [self = QPointer<JobQueue>(this)] { return self && (self->runningCount() > 0 || self->isSettling()); });
}

JobQueue::~JobQueue() { invariant(m_state->scope.running() == 0, "The queue was drained before it went."); }

bool JobQueue::isRunning(const QUuid& job) const { return m_state->tasks.contains(job); }

std::size_t JobQueue::runningCount() const { return m_state->tasks.size(); }

void JobQueue::allowStart(const QUuid& job) { m_state->startable.insert(job); }

void JobQueue::pump() {
  if (m_state->draining) return;
  grantPlaces();
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
  const auto [first, last] = m_state->endings.equal_range(job);
  for (auto ending = first; ending != last; ++ending) ending->second.finish();
  m_state->endings.erase(first, last);
  Q_EMIT jobFinished(job);
  pump();
}

void JobQueue::forbidStart(const QUuid& job) { m_state->startable.remove(job); }

void JobQueue::grantPlaces() {
  auto next = m_state->waiting.begin();
  while (next != m_state->waiting.end() && runningCount() < runningLimit) {
    if (isRunning(next->job)) {
      ++next;
      continue;
    }
    // The place is taken here and now: what waits resumes a turn of the event loop later.
    m_state->tasks.emplace(next->job, std::stop_source());
    next->granted.finish();
    next = m_state->waiting.erase(next);
  }
}

bool JobQueue::awaitsPlace(const QUuid& job) const {
  return std::ranges::any_of(m_state->waiting, [&](const State::Waiting& one) { return one.job == job; });
}

Task<std::stop_token> JobQueue::takePlace(QUuid job, std::stop_token stop) {
  throwIfStopped(stop);
  invariant(!awaitsPlace(job), "A job waits for one place only.");
  Completion granted;
  m_state->waiting.push_back({job, granted});
  pump();
  {
    const std::stop_callback onStop(stop, [granted] { granted.finish(); });
    co_await granted;
  }
  if (awaitsPlace(job)) {
    std::erase_if(m_state->waiting, [&](const State::Waiting& one) { return one.job == job; });
    throw Cancelled();
  }
  co_return m_state->tasks.at(job).get_token();
}

void JobQueue::leavePlace(const QUuid& job) { endTask(job); }

Task<> JobQueue::whenEnded(QUuid job) {
  if (!isRunning(job)) co_return;
  const Completion ended;
  m_state->endings.emplace(job, ended);
  co_await ended;
}

bool JobQueue::isSettling() const { return m_state->settling; }

void JobQueue::setSettling(bool settling) { m_state->settling = settling; }

void JobQueue::noteUnseen(const QUuid& request) { m_state->unseenRequests.insert(request); }

bool JobQueue::isUnseen(const QUuid& request) const { return m_state->unseenRequests.contains(request); }

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
