// From requests to persisted jobs, and from waiting jobs to running ones.
#pragma once

#include <QObject>
#include <QUuid>

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "base/clock.h"
#include "base/instant.h"
#include "base/task.h"
#include "core/library_store.h"
#include "generation/generation_ports.h"

namespace sorvan::generation {

/// The tasks of the jobs that run right now. The queue itself is the store's table of jobs, walked oldest first; this
/// class only starts what waits, at most two at once, and lets them end in order at shutdown. Main thread. It borrows
/// the store, which must outlive it; `drain` ends every task before either goes.
class JobQueue : public QObject {
  Q_OBJECT
 public:
  static constexpr std::size_t runningLimit = 2;

  JobQueue(LibraryStore& store, GenerationPorts ports);
  /// `drain` must have ended before: a task that outlived the queue would work on what is gone.
  ~JobQueue() override;

  LibraryStore& store() const { return m_store; }
  const GenerationPorts& ports() const { return m_ports; }
  const Clock& clock() const { return *m_store.services().clock; }

  /// Whether a task of this job exists, whatever its status says.
  bool isRunning(const QUuid& job) const;
  std::size_t runningCount() const;

  /// Allows a job to start: only what was enqueued or retried since the workspace was opened ever starts.
  void allowStart(const QUuid& job);

  /// Starts waiting jobs, oldest first, as long as fewer than two tasks exist. Tasks begin at the next turn of the
  /// event loop, so nothing runs before this returns.
  void pump();

  /// Forgets `allowStart`: the job runs again only when it is retried.
  void forbidStart(const QUuid& job);

  /// Waits for one of the places of running jobs, ahead of all queued jobs and in the order of asking, and for the end
  /// of the job's own task; then the place is this job's until `leavePlace`. Answers the token by which the work in it
  /// is stopped. Throws Cancelled, without a place, when `stop` comes first.
  Task<std::stop_token> takePlace(QUuid job, std::stop_token stop);
  void leavePlace(const QUuid& job);
  bool awaitsPlace(const QUuid& job) const;

  /// Resumes when the job's present task has ended; at once without one.
  Task<> whenEnded(QUuid job);

  /// Whether a pass over cancelled jobs asks the gateway what became of them.
  bool isSettling() const;
  void setSettling(bool settling);

  /// Remembers for this session that the gateway never saw a request, so that it is not asked again.
  void noteUnseen(const QUuid& request);
  bool isUnseen(const QUuid& request) const;

  /// Asks the job's task to end; its entry stays until it has.
  void requestStop(const QUuid& job);

  /// Whether the last run of this job in this session ended with the service's word that the remote job failed, and
  /// whether it bills nothing for that.
  std::optional<RemoteJobFailed::Billing> remoteFailure(const QUuid& job) const;
  void noteRemoteFailure(const QUuid& job, std::optional<RemoteJobFailed::Billing> failure);

  /// The token of a POST that may be charged: it stops only when the patience of `drain` has ended.
  std::stop_token submissionStop() const;

  /// Stops all tasks and waits until they have ended; a paid submission in flight gets up to `limit` for its answer.
  /// The jobs' fields stay as a sudden end would leave them. No job starts afterwards.
  Task<> drain(std::chrono::milliseconds limit = std::chrono::seconds(10));
  bool isDraining() const;

  /// Runs small tasks that belong to no job, such as asking a service to stop one; reports what they throw.
  void spawn(Task<> task);
  std::stop_token stopToken() const;

 Q_SIGNALS:
  /// A task ended; the job's fields tell how.
  void jobFinished(QUuid job);
  /// A job was set going again; its elapsed time counts from `at`.
  void jobRestarted(QUuid job, sorvan::base::Instant at);
  /// The balance may have changed.
  void creditsChanged();

 private:
  struct State;
  void startTask(const QUuid& job);
  void endTask(const QUuid& job);
  void grantPlaces();
  static Task<> runTask(JobQueue* queue, QUuid job, std::stop_token stop);

  LibraryStore& m_store;
  GenerationPorts m_ports;
  std::unique_ptr<State> m_state;
};

}  // namespace sorvan::generation
