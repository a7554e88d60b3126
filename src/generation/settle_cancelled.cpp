#include "generation/settle_cancelled.h"

#include <QScopeGuard>

#include "generation/credit_operations.h"
#include "generation/salvage.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

constexpr double sevenDays = 604800;

/// The details that leave open what became of the operation, or whether its result was fetched.
bool leavesFateOpen(const QString& detail) {
  return detail == texts::cancelledHeld() || detail.startsWith(QStringLiteral("Cancelled locally")) ||
         detail == texts::cancellationRequested() || detail.startsWith(QStringLiteral("Stopped locally")) ||
         detail == texts::cancelledCharged() || detail.endsWith(QStringLiteral("Its result could not be fetched.")) ||
         detail == texts::interrupted();
}

/// The id by which the gateway knows a request whose operation it could not tell in time.
std::optional<QUuid> requestToLookUp(const JobQueue& queue, const GenerationJob& job) {
  const auto request = job.request();
  if (!request || request->provider != ProviderID::credits || !request->creditRequestID) return std::nullopt;
  const bool canAsk = static_cast<bool>(queue.ports().existingCredits);
  return canAsk && !queue.isUnseen(*request->creditRequestID) ? request->creditRequestID : std::nullopt;
}

bool isCandidate(const JobQueue& queue, const GenerationJob& job, Instant cutoff) {
  const LibraryStore& store = queue.store();
  if (job.status != jobStatus::cancelled || !leavesFateOpen(job.detail)) return false;
  if (!operationOf(job) && !requestToLookUp(queue, job)) return false;
  if (queue.isRunning(job.id) || queue.awaitsPlace(job.id) || !store.generationsOf(job.id).empty()) return false;
  return job.finishedAt.value_or(job.createdAt) > cutoff;
}

/// The pass as values. Everything is looked up again after each pause.
struct Pass {
  std::uint64_t opening;
  Instant cutoff;
  std::stop_token stop;
};

/// The job, while it is still a candidate of this pass.
JobRef candidate(const JobQueue& queue, const Pass& pass, const QUuid& id) {
  const LibraryStore& store = queue.store();
  if (store.opening() != pass.opening || store.isBackingUp() || pass.stop.stop_requested()) return nullptr;
  const JobRef job = store.job(id);
  return job && isCandidate(queue, *job, pass.cutoff) ? job : nullptr;
}

/// Saves a change of a job; a failure is shown.
bool saved(LibraryStore& store) {
  try {
    store.save(LibraryTables::none);
    return true;
  } catch (...) {
    store.failOperation(std::current_exception());
    return false;
  }
}

void writeDetail(JobQueue& queue, const JobRef& job, const QString& detail) {
  queue.store().context().edit(job).detail = detail;
  if (saved(queue.store())) Q_EMIT queue.creditsChanged();
}

/// Looks a request up whose operation was never told, and notes the operation in the job.
Task<std::optional<CreditsOperationState>> lookedUp(JobQueue* queue, Pass pass, QUuid id, QUuid request) {
  std::optional<CreditsOperationState> found;
  try {
    found = co_await queue->ports().existingCredits(request, pass.stop);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception&) {
    co_return std::nullopt;
  }
  const JobRef job = candidate(*queue, pass, id);
  if (!job) co_return std::nullopt;
  if (!found) queue->noteUnseen(request);
  if (!found || found->id.isEmpty()) co_return std::nullopt;
  queue->store().context().edit(job).providerRequestID = found->id;
  co_return saved(queue->store()) ? found : std::nullopt;
}

/// The state of an operation that was just found: the user had cancelled it, so it is stopped if it goes on.
Task<std::optional<QString>> stateOfFound(JobQueue* queue, Pass pass, QUuid id, CreditsOperationState found) {
  if (!creditsState::isGoing(found.state)) co_return found.state;
  const auto cancelled = co_await askToCancel(queue, found.id, pass.stop);
  if (!cancelled) co_return std::nullopt;
  const QString state = cancelled->isEmpty() ? found.state : *cancelled;
  const JobRef job = candidate(*queue, pass, id);
  // What goes on although it was asked to stop holds its credits; later passes look again.
  if (job && !creditsState::isComplete(state) && !creditsState::isFailed(state))
    writeDetail(*queue, job, detailOfCancelled(state));
  co_return state;
}

/// The state of the job's operation; nothing when it is not known now.
Task<std::optional<QString>> stateOf(JobQueue* queue, Pass pass, QUuid id) {
  const JobRef job = candidate(*queue, pass, id);
  if (!job) co_return std::nullopt;
  if (const auto operation = operationOf(*job)) co_return co_await askState(queue, *operation, pass.stop);
  const auto found = co_await lookedUp(queue, pass, id, *requestToLookUp(*queue, *job));
  if (!found) co_return std::nullopt;
  co_return co_await stateOfFound(queue, pass, id, *found);
}

/// 4. One job.
Task<> settle(JobQueue* queue, Pass pass, QUuid id) {
  const auto state = co_await stateOf(queue, pass, id);
  const JobRef job = candidate(*queue, pass, id);
  if (!job || !state) co_return;
  if (creditsState::isFailed(*state)) writeDetail(*queue, job, texts::cancelledFree());
  if (creditsState::isComplete(*state)) co_await salvage(*queue, id, pass.stop);
}

}  // namespace

Task<> settleCancelled(JobQueue& queue) {
  const LibraryStore& store = queue.store();
  // 1. One pass at a time.
  if (queue.isSettling() || queue.isDraining() || !store.hasWorkspace() || store.isBackingUp()) co_return;
  // 2. and 3. The candidates.
  const Pass pass{store.opening(), store.now() - sevenDays, queue.stopToken()};
  std::vector<QUuid> candidates;
  for (const JobRef& job : store.jobs())
    if (isCandidate(queue, *job, pass.cutoff)) candidates.push_back(job->id);
  if (candidates.empty()) co_return;
  queue.setSettling(true);
  const auto end = qScopeGuard([&] { queue.setSettling(false); });
  // 4. One by one, oldest first.
  co_await yieldToLoop();
  for (auto id = candidates.rbegin(); id != candidates.rend(); ++id) co_await settle(&queue, pass, *id);
}

void startSettling(JobQueue& queue) { queue.spawn(settleCancelled(queue)); }

}  // namespace sorvan::generation
