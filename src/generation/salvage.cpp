#include "generation/salvage.h"

#include <QScopeGuard>

#include "generation/job_runner.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// 1. Whether there is anything to fetch. The job's task is looked after by whoever asks.
bool isToBeFetched(const LibraryStore& store, const QUuid& id) {
  const JobRef job = store.hasWorkspace() ? store.job(id) : nullptr;
  return job && job->status == jobStatus::cancelled && store.generationsOf(id).empty() && !store.isBackingUp();
}

/// 3. The job waits again, on disk. Answers whether that could be saved.
bool beginFetching(JobQueue& queue, const QUuid& id) {
  LibraryStore& store = queue.store();
  // Should anything fail from here on, nothing but Retry starts this job.
  queue.forbidStart(id);
  GenerationJob& job = store.context().edit(store.job(id));
  job.status = jobStatus::queued;
  job.detail = texts::fetchingResult();
  try {
    store.save(LibraryTables::none);
    return true;
  } catch (...) {
    store.failOperation(std::current_exception());
    return false;
  }
}

/// 5. The result is in Trash, and the user is told.
void tellLanded(JobQueue& queue, const QUuid& id) {
  LibraryStore& store = queue.store();
  for (const AssetRef& asset : store.outputs(id))
    if (!asset->isTrashed()) store.context().edit(asset).deletedAt = store.now();
  store.context().edit(store.job(id)).detail = texts::salvaged();
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.failOperation(std::current_exception());
    return;
  }
  store.setNotice(texts::salvagedNotice());
  Q_EMIT queue.creditsChanged();
}

/// 6. The job is cancelled as before. Memory keeps that when the disk does not take it: a job that seemed to run would
/// never end.
void tellNotFetched(LibraryStore& store, const QUuid& id) {
  const JobRef record = store.job(id);
  GenerationJob& job = store.context().edit(record);
  job.status = jobStatus::cancelled;
  job.finishedAt = store.now();
  job.detail = texts::notFetched();
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.keepUnsaved(record);
    store.failOperation(std::current_exception());
  }
}

}  // namespace

Task<> salvage(JobQueue& queue, QUuid id, std::stop_token stop) {
  LibraryStore& store = queue.store();
  if (!isToBeFetched(store, id) || queue.awaitsPlace(id) || store.salvaging.contains(id)) co_return;
  const std::uint64_t opening = store.opening();
  const std::stop_token stopRun = co_await queue.takePlace(id, stop);
  const auto leave = qScopeGuard([&] {
    // 7. The job's end is told before it counts as visible again.
    queue.leavePlace(id);
    if (store.salvaging.remove(id)) store.noteChange();
  });
  // 1. Again: a pause may have changed everything.
  if (store.opening() != opening || !isToBeFetched(store, id)) co_return;
  // 2.
  store.salvaging.insert(id);
  if (!beginFetching(queue, id)) co_return;
  // 4. The run itself.
  co_await runJob(queue, id, stopRun);
  const JobRef job = store.job(id);
  if (!job) co_return;
  if (job->status == jobStatus::complete)
    tellLanded(queue, id);
  else
    tellNotFetched(store, id);
}

}  // namespace sorvan::generation
