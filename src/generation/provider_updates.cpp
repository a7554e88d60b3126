#include "base/planted_bug.h"
#include "generation/job_runner.h"
#include "generation/remote_cancel.h"
#include "generation/result_recovery.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// The note that money was spent on a result that is not in the library yet.
ExtraCharge chargeNote(const JobQueue& queue, const GenerationJob& job, const GenerationRequest& request,
                       const GenerationCost& cost) {
  const auto fact = queue.ports().models->find(request.model);
  ExtraCharge charge;
  charge.id = job.id;
  charge.date = job.createdAt;
  charge.title = texts::chargeTitle();
  charge.detail = request.prompt;
  charge.model = request.model;
  charge.provider = rawValue(request.provider);
  charge.projectID = job.projectID;
  charge.mediaType = rawValue(fact ? fact->output : MediaType::image);
  charge.usd = cost.perImageUSD;
  charge.credits = cost.credits;
  charge.basis = cost.basis;
  charge.note = texts::chargeNote();
  return charge;
}

struct Stored {
  bool anything = false;
  bool newIdentity = false;  ///< what a cancellation had to wait for
};

/// Puts handle and request id into the job's record, without saving.
Stored storeRemoteIdentity(LibraryStore& store, const JobRef& job, const ProviderUpdate& update) {
  Stored stored;
  if (update.requestID && update.requestID != job->providerRequestID) {
    store.context().edit(job).providerRequestID = update.requestID;
    stored.anything = stored.newIdentity = true;
  }
  if (!update.handle) return stored;
  const QByteArray handle = encodeHandle(*update.handle);
  if (job->remoteHandleData == handle) return stored;
  store.context().edit(job).remoteHandleData = handle;
  stored.anything = stored.newIdentity = true;
  return stored;
}

/// Saves what must not be lost; memory keeps it when the disk does not take it.
void saveOrKeep(LibraryStore& store, const JobRef& job) {
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.keepUnsaved(job);
    throw;
  }
}

/// A line of progress is worth a save but no failure.
void saveProgress(LibraryStore& store) {
  try {
    store.save(LibraryTables::none);
  } catch (const SorvanError&) {
    store.rollBack();
  }
}

void forgetSubmissionMarker(const LibraryStore& store, const QUuid& job) {
  try {
    ResultRecovery::removeSubmissionMarker(store.files(), job);
  } catch (const SorvanError&) {
    // The handle is saved, and beside a handle the marker means nothing.
  }
}

}  // namespace

void applyUpdate(JobQueue& queue, const QUuid& id, const ProviderUpdate& update) {
  LibraryStore& store = queue.store();
  // 1. The job; one that was cancelled still stores what was paid for.
  const JobRef job = store.job(id);
  if (!job) throw Cancelled();
  const bool cancelled = job->status == jobStatus::cancelled;
  // 2. The line of progress.
  const bool newDetail = !cancelled && job->detail != update.message;
  if (newDetail) store.context().edit(job).detail = update.message;
  // 3. The charge, in a ledger that writes itself at once.
  const auto request = job->request();
  const bool charged = update.charge && request;
  if (charged && !planted("charge-note-forgotten")) store.record(chargeNote(queue, *job, *request, *update.charge));
  // 4. The remote identifier, and 5. the handle.
  const Stored stored = storeRemoteIdentity(store, job, update);
  if (update.handle && planted("commits-swapped")) forgetSubmissionMarker(store, id);
  // 6. On disk before the provider goes on.
  if (charged || stored.anything)
    saveOrKeep(store, job);
  else if (newDetail)
    saveProgress(store);
  if (update.handle) forgetSubmissionMarker(store, id);
  if (!cancelled) return;
  if (stored.newIdentity) requestRemoteCancel(queue, id);
  throw Cancelled();
}

}  // namespace sorvan::generation
