#include "generation/job_runner.h"

#include <QFile>

#include <algorithm>

#include "base/ids.h"
#include "generation/cancel_and_retry.h"
#include "generation/credit_operations.h"
#include "generation/enqueue.h"
#include "generation/provider_link.h"
#include "generation/registration.h"
#include "generation/result_recovery.h"
#include "generation/run_facts.h"
#include "generation/run_failure.h"
#include "generation/texts.h"
#include "platform/temporary_files.h"

namespace sorvan::generation {
namespace {

using Outputs = std::vector<GeneratedOutput>;

void throwUnlessWanted(const JobQueue& queue, const QUuid& job, const std::stop_token& stop) {
  throwIfStopped(stop);
  const JobRef record = queue.store().job(job);
  if (!record || record->status == jobStatus::cancelled) throw Cancelled();
}

/// A job that may have been paid for lands in the Inbox when its project is gone.
void landInInbox(LibraryStore& store, const JobRef& job) {
  store.context().edit(job).projectID.reset();
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.rollBack();
    throw;
  }
}

/// 2. The destination, relative to the workspace.
QString destinationFolder(LibraryStore& store, const JobRef& job, bool mayBePaid) {
  if (!job->projectID) return WorkspaceFiles::mediaFolder(nullptr);
  if (const ProjectRef project = store.project(*job->projectID)) return WorkspaceFiles::mediaFolder(project.get());
  if (!mayBePaid) throw SorvanError(texts::projectUnavailable());
  landInInbox(store, job);
  return WorkspaceFiles::mediaFolder(nullptr);
}

/// 6. The model's name as its provider tells it, or as the catalogue does.
QString labelOf(const JobQueue& queue, const GenerationRequest& request) {
  const auto provider = queue.ports().providerResolver(request.provider);
  for (const ModelOption& option : provider->listModels())
    if (option.id == request.model) return option.name;
  return queue.ports().models->displayName(request.model);
}

/// 2. and 6. What is known at the start.
std::shared_ptr<RunFacts> startingFacts(JobQueue& queue, const QUuid& id, RunTrace& trace) {
  LibraryStore& store = queue.store();
  const JobRef job = store.hasWorkspace() ? store.job(id) : nullptr;
  const auto request = job ? job->request() : nullptr;
  if (!request) throw SorvanError(texts::requestMissing());
  trace.wasInterrupted = job->detail == texts::interrupted();
  const auto run = std::make_shared<RunFacts>(RunFacts{.job = id, .request = *request, .files = store.files()});
  run->saveOriginal = job->saveOriginal;
  run->toTrash = store.salvaging.contains(id);
  if (job->remoteHandleData) run->handle = decodeHandle(*job->remoteHandleData);
  run->operation = operationOf(*job);
  run->sentThroughGateway =
      request->provider == ProviderID::credits && ResultRecovery::hasGatewayTrace(run->files, id);
  const bool mayBePaid =
      mayBeKnownRemotely(*run) || hasRecoverableResult(store, id) || store.extraCharges().contains(id);
  run->mediaFolder = destinationFolder(store, job, mayBePaid);
  run->modelLabel = labelOf(queue, *request);
  run->fact = queue.ports().models->find(request->model);
  if (const auto note = ResultRecovery::loadPatch(run->files, id)) run->route = decodedRoute(*note);
  return run;
}

/// 3. The result that an earlier run retained. One that is damaged or empty is downloaded again through the handle;
/// without a handle nothing is ever submitted over it.
std::optional<Outputs> retainedOutputs(const RunFacts& run) {
  try {
    auto outputs = ResultRecovery::load(run.files, run.job);
    if (!outputs || !outputs->empty()) return outputs;
  } catch (const ForeignRecoveryPath&) {
    throw;
  } catch (const SorvanError&) {
    if (!run.handle) throw;
  }
  if (!run.handle) throw SorvanError(texts::invalidManifest());
  return std::nullopt;
}

/// 4. What pays for the provider's call.
QString paymentKey(const JobQueue& queue, const RunFacts& run) {
  checkPayment(queue, run.request);
  const auto key = queue.ports().keyReader(run.request.provider);
  if (!key) throw SorvanError(texts::noWayToPay());
  return *key;
}

/// 5. The files to send along. A reference that is gone stops only a new submission.
std::vector<ReferenceInput> referenceInputs(const LibraryStore& store, const RunFacts& run) {
  std::vector<ReferenceInput> inputs;
  if (run.saveOriginal) return inputs;
  for (const QUuid& id : run.request.referenceIDs) {
    const AssetRef asset = store.asset(id);
    const bool available = asset && !asset->isTrashed();
    if (!available && !mayBeKnownRemotely(run)) throw SorvanError(texts::referenceUnavailable());
    if (available) inputs.push_back(ReferenceInput{store.fileOf(*asset)});
  }
  return inputs;
}

/// A file for a picture that is only sent, removed when the run ends.
QString sentPicture(const QString& kind, const QUuid& job, RunTrace& trace) {
  trace.sentPictures.emplace_back(kind, QStringLiteral("png"), job);
  return trace.sentPictures.back().path();
}

/// 7. The picture that is sent instead of the first reference when areas are marked.
Task<> prepareMarks(JobQueue& queue, std::shared_ptr<RunFacts> run, std::shared_ptr<RunTrace> trace,
                    std::shared_ptr<ProviderCall> call, std::stop_token stop) {
  if (!hasMarks(run->request) || run->handle || call->references.empty()) co_return;
  MarksWork work;
  work.request = run->request;
  work.original = call->references.front().file;
  work.sizes = run->fact ? run->fact->sizes : QStringList();
  work.pieceFile = sentPicture(QStringLiteral("piece"), run->job, *trace);
  work.markupFile = sentPicture(QStringLiteral("markup"), run->job, *trace);
  const PreparedMarks prepared = co_await onPool([work] { return preparedMarks(work); }, stop);
  call->references.front().file = prepared.file;
  call->request = prepared.request;
  run->preparedRoute = prepared.route;
}

/// What is sent is noted before it is paid for, so that the result lands in the same place. A run that only finds an
/// earlier submission leaves the note of that one as it is.
void noteWhatIsSent(const JobQueue& queue, RunFacts& run) {
  if (!run.preparedRoute) return;
  queue.store().requireWorkspaceInPlace();
  run.route = run.preparedRoute;
  ResultRecovery::savePatch(encodedRoute(*run.route), run.files, run.job);
}

/// 8. The job is running. A failure here comes before any charge.
void markRunning(JobQueue& queue, const QUuid& id, const std::stop_token& stop) {
  LibraryStore& store = queue.store();
  throwUnlessWanted(queue, id, stop);
  const JobRef record = store.job(id);
  GenerationJob& job = store.context().edit(record);
  job.status = jobStatus::generating;
  job.detail = texts::connecting();
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.rollBack();
    throw;
  }
}

/// 12. A line that is worth a save, not a failure of paid work.
void tellDownloaded(JobQueue& queue, const QUuid& id) {
  LibraryStore& store = queue.store();
  const JobRef job = store.job(id);
  if (!job || job->status == jobStatus::cancelled) return;
  store.context().edit(job).detail = texts::resultDownloaded();
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.keepUnsaved(job);
    throw;
  }
}

/// 10. to 12. The provider's outputs, retained before anything else happens to them.
Task<Outputs> fetchedOutputs(JobQueue& queue, std::shared_ptr<const RunFacts> run, std::shared_ptr<ProviderCall> call,
                             std::stop_token stop) {
  // 10. The provider's call.
  const auto provider = queue.ports().providerResolver(run->request.provider);
  const Outputs outputs = co_await provider->generateImage(*call, stop);
  if (outputs.empty()) throw SorvanError(texts::noOutputs());
  // 11. The bytes are secured first; no stop is heeded here.
  queue.store().requireWorkspaceInPlace();
  const WorkspaceFiles files = run->files;
  const QUuid job = run->job;
  const auto retained = co_await onPool([outputs, files, job] {
    ResultRecovery::save(outputs, files, job);
    return ResultRecovery::load(files, job);
  });
  // 12. Told and saved.
  tellDownloaded(queue, job);
  co_return *retained;
}

/// 4., 5., 7., 9. Everything the provider is given.
Task<std::shared_ptr<ProviderCall>> preparedCall(JobQueue& queue, std::shared_ptr<RunFacts> run,
                                                 std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  // A submission whose answer was lost is never repeated here.
  const JobRef job = queue.store().job(run->job);
  if (!job || ResultRecovery::answerIsMissing(run->files, *job)) throw SorvanError(texts::submissionLost());
  const auto call = std::make_shared<ProviderCall>();
  call->request = run->request;
  call->resume = run->handle;
  call->knownRequestID = run->operation;
  // 4. Payment.
  call->key = paymentKey(queue, *run);
  // 5. References.
  call->references = referenceInputs(queue.store(), *run);
  if (!mayBeKnownRemotely(*run)) queue.store().requireRoomForResult();
  // 7. Marks.
  co_await prepareMarks(queue, run, trace, call, stop);
  call->run = makeProviderLink(queue, run->job, [&queue, run] { noteWhatIsSent(queue, *run); }, stop);
  co_return call;
}

Task<> runSteps(JobQueue& queue, QUuid id, std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  // 1. Still wanted?
  throwIfStopped(stop);
  // 2. The request, the workspace and the destination; 6. the model's label.
  const std::shared_ptr<RunFacts> run = startingFacts(queue, id, *trace);
  queue.noteRemoteFailure(id, std::nullopt);
  // 3. A retained result lands without a provider.
  std::optional<Outputs> outputs = retainedOutputs(*run);
  // 4., 5. and 7. Payment, references and marks, for a call of the provider only.
  std::shared_ptr<ProviderCall> call;
  if (!outputs) call = co_await preparedCall(queue, run, trace, stop);
  // 8. Running, on disk.
  markRunning(queue, id, stop);
  // 9. The start.
  run->started = queue.store().now();
  throwIfStopped(stop);
  // 10. to 12. The provider, and its bytes retained.
  if (!outputs) outputs = co_await fetchedOutputs(queue, run, call, stop);
  // 13. Still wanted? What was paid for is safe by now.
  throwUnlessWanted(queue, id, stop);
  // 14. Into the library.
  co_await registerOutputs(queue, run, *outputs, trace, stop);
}

}  // namespace

Task<> runJob(JobQueue& queue, QUuid id, std::stop_token stop) {
  const auto trace = std::make_shared<RunTrace>();
  std::exception_ptr failure;
  try {
    co_await runSteps(queue, id, trace, stop);
  } catch (...) {
    failure = std::current_exception();
  }
  if (failure) recordFailure(queue, id, *trace, failure, stop);
  trace->sentPictures.clear();
  for (const QString& path : std::as_const(trace->temporaryFiles))
    QFile::remove(path);  // not durable: what a crash leaves is swept, or goes with the recovery folder
}

}  // namespace sorvan::generation
