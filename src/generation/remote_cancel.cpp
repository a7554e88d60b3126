#include "generation/remote_cancel.h"

#include "generation/cancel_watch.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// One sentence on how the service took it.
Task<QString> askToStop(JobQueue* queue, ProviderID provider, RemoteHandle handle, std::stop_token stop) {
  QString answer = texts::cancellationRequested();
  try {
    const QString key = queue->ports().keyReader(provider).value_or(QString());
    const auto backEnd = queue->ports().providerResolver(provider);
    co_await backEnd->cancelJob(handle, key, stop);
  } catch (const Cancelled&) {
    throw;
  } catch (const RemoteJobAlreadyComplete&) {
    answer = texts::alreadyFinishedRemotely();
  } catch (const std::exception& failure) {
    answer = texts::stoppedLocally(describe(failure));
  }
  co_return answer;
}

Task<> cancelRemotely(JobQueue* queue, QUuid id, ProviderID provider, RemoteHandle handle, std::uint64_t opening,
                      std::stop_token stop) {
  co_await yieldToLoop();
  const QString detail = co_await askToStop(queue, provider, handle, stop);
  LibraryStore& store = queue->store();
  if (store.opening() != opening) co_return;
  const JobRef job = store.job(id);
  if (!job || job->status != jobStatus::cancelled) co_return;
  store.context().edit(job).detail = detail;
  try {
    store.save(LibraryTables::none);
  } catch (const SorvanError&) {
    store.rollBack();
  }
}

}  // namespace

void requestRemoteCancel(JobQueue& queue, const QUuid& id) {
  const LibraryStore& store = queue.store();
  const JobRef job = store.job(id);
  const auto request = job ? job->request() : nullptr;
  if (!request) return;
  if (request->provider == ProviderID::credits) return watchCancelledOperation(queue, id);
  const auto handle = job->remoteHandleData ? decodeHandle(*job->remoteHandleData) : std::nullopt;
  if (!handle || request->provider != ProviderID::fal) return;
  queue.spawn(cancelRemotely(&queue, id, request->provider, *handle, store.opening(), queue.stopToken()));
}

}  // namespace sorvan::generation
