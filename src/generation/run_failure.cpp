#include "generation/run_failure.h"

#include "generation/cancel_and_retry.h"
#include "generation/result_recovery.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

enum class Fate { failed, stopped, submissionUnknown };

/// Tells what was thrown, and notes the service's own word that the remote job is dead.
Fate fateOf(JobQueue& queue, const QUuid& job, const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const Cancelled&) {
    return Fate::stopped;
  } catch (const SubmissionUnknown&) {
    return Fate::submissionUnknown;
  } catch (const RemoteJobFailed& failed) {
    queue.noteRemoteFailure(job, failed.billing());
    return Fate::failed;
  } catch (...) {
    return Fate::failed;
  }
}

/// Whether the remote job can be found again: by its handle or, with credits, by the gateway's id.
bool isKnownRemotely(const GenerationJob& job) {
  if (job.remoteHandleData && decodeHandle(*job.remoteHandleData)) return true;
  const auto request = job.request();
  const bool withCredits = request && request->provider == ProviderID::credits;
  return withCredits && job.providerRequestID && !job.providerRequestID->isEmpty();
}

/// The line that tells the state of the money; nothing leaves the line as it is.
std::optional<QString> moneyState(const JobQueue& queue, const GenerationJob& job, const RunTrace& trace, Fate fate) {
  const LibraryStore& store = queue.store();
  if (hasRecoverableResult(store, job.id)) return texts::resultRetained();
  if (store.extraCharges().contains(job.id)) return texts::paidResultNeedsRecovery();
  if (submissionIsUnknown(store, job.id) || fate == Fate::submissionUnknown) return texts::interrupted();
  if (trace.wasInterrupted && !isKnownRemotely(job)) return texts::interrupted();
  return std::nullopt;
}

}  // namespace

void recordFailure(JobQueue& queue, const QUuid& id, const RunTrace& trace, const std::exception_ptr& failure,
                   const std::stop_token& stop) {
  LibraryStore& store = queue.store();
  const Fate fate = fateOf(queue, id, failure);
  if (queue.isDraining() && fate == Fate::stopped) return;
  const JobRef record = store.job(id);
  if (!record || record->status == jobStatus::complete) return;
  GenerationJob& job = store.context().edit(record);
  // 1. The status.
  const bool userStopped = stop.stop_requested() && !queue.isDraining();
  const bool cancelled = userStopped || fate == Fate::stopped || job.status == jobStatus::cancelled;
  job.status = cancelled ? jobStatus::cancelled : jobStatus::failed;
  // 2. The message; a cancelled job keeps none, unless it may have to be paid for all the same.
  job.errorMessage = cancelled ? std::nullopt : std::optional(describe(failure));
  if (submissionIsUnknown(store, id)) job.errorMessage = texts::submissionLost();
  // 3. The state of the money.
  if (const auto detail = moneyState(queue, job, trace, fate)) job.detail = *detail;
  // 4. The end.
  job.finishedAt = store.now();
  // 5. The save; without it memory stays ahead of the disk.
  try {
    store.save(LibraryTables::none);
  } catch (const SorvanError&) {
    store.keepUnsaved(record);
    store.setError(texts::progressNotSaved());
  }
}

}  // namespace sorvan::generation
