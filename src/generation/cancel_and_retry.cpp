#include "generation/cancel_and_retry.h"

#include "base/ids.h"
#include "generation/enqueue.h"
#include "generation/remote_cancel.h"
#include "generation/result_recovery.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

RetryFacts::Status statusOf(const GenerationJob& job) {
  if (job.isActive()) return RetryFacts::Status::active;
  if (job.status == jobStatus::complete) return RetryFacts::Status::complete;
  return job.status == jobStatus::cancelled ? RetryFacts::Status::cancelled : RetryFacts::Status::failed;
}

bool hasReadableHandle(const GenerationJob& job) {
  return job.remoteHandleData && decodeHandle(*job.remoteHandleData).has_value();
}

RetryFacts retryFacts(const JobQueue& queue, const GenerationJob& job) {
  const LibraryStore& store = queue.store();
  const auto request = job.request();
  RetryFacts facts;
  facts.status = statusOf(job);
  facts.taskExists = queue.isRunning(job.id);
  facts.hasOutputs = !store.generationsOf(job.id).empty();
  facts.interrupted = job.detail == texts::interrupted();
  facts.hasRecoveryManifest = hasRecoverableResult(store, job.id);
  facts.hasChargeNote = store.extraCharges().contains(job.id);
  facts.hasHandle = hasReadableHandle(job);
  facts.hasProviderRequestID = job.providerRequestID && !job.providerRequestID->isEmpty();
  facts.hasSubmissionMarker = ResultRecovery::hasSubmissionMarker(store.files(), job.id);
  facts.requestReadable = request != nullptr;
  if (request) facts.provider = request->provider;
  facts.payer = queue.ports().billing().payWith == PayWith::credits ? ProviderID::credits : ProviderID::fal;
  facts.remoteFailure = queue.remoteFailure(job.id);
  return facts;
}

/// The request as the plan wants it.
GenerationRequest rewritten(GenerationRequest request, const RetryPlan& plan) {
  if (plan.newProvider) request.provider = *plan.newProvider;
  if (plan.creditKey == RetryPlan::CreditKey::renew) request.creditRequestID = newUuid();
  if (plan.creditKey == RetryPlan::CreditKey::drop) request.creditRequestID.reset();
  return request;
}

/// Carries the plan out in one block, without a pause between the first change and the save.
void carryOut(JobQueue& queue, const JobRef& record, const RetryPlan& plan) {
  LibraryStore& store = queue.store();
  const auto stored = record->request();
  const auto request = stored ? std::optional(rewritten(*stored, plan)) : std::nullopt;
  // 7. Payment, before anything changes.
  if (plan.checkPayment && request) checkPayment(queue, *request);
  // 5. and 6. The request and its remote identity.
  GenerationJob& job = store.context().edit(record);
  if (request && *request != *stored) job.requestData = encodeRequest(*request);
  if (plan.clearHandle) {
    job.remoteHandleData.reset();
    job.providerRequestID.reset();
  }
  // 8. Back to the queue.
  job.status = jobStatus::queued;
  job.errorMessage.reset();
  job.finishedAt.reset();
  // 9. Saved, then started.
  store.save(LibraryTables::none);
  queue.noteRemoteFailure(record->id, std::nullopt);
  queue.allowStart(record->id);
  Q_EMIT queue.jobRestarted(record->id, store.now());
  queue.pump();
}

JobRef existingJob(const JobQueue& queue, const QUuid& id) {
  if (!queue.store().hasWorkspace()) return nullptr;
  return queue.store().job(id);
}

void retryJob(JobQueue& queue, const JobRef& job, const RetryFacts& facts, std::optional<QString>& question) {
  const RetryPlan plan = planRetry(facts);
  if (plan.action == RetryPlan::Action::refuse) throw SorvanError(plan.text);
  if (plan.action == RetryPlan::Action::ask) question = plan.text;
  if (plan.action == RetryPlan::Action::start) carryOut(queue, job, plan);
}

}  // namespace

std::optional<QString> retry(JobQueue& queue, const QUuid& id, RetryChoice choice, RetryConfirmation confirmation) {
  const JobRef job = existingJob(queue, id);
  if (!job) return std::nullopt;
  std::optional<QString> question;
  try {
    RetryFacts facts = retryFacts(queue, *job);
    facts.choice = choice;
    facts.confirmation = confirmation;
    retryJob(queue, job, facts, question);
  } catch (...) {
    queue.store().failOperation(std::current_exception());
  }
  return question;
}

void saveRawResult(JobQueue& queue, const QUuid& id) {
  const JobRef job = existingJob(queue, id);
  if (!job || !hasRecoverableResult(queue.store(), id)) return;
  LibraryStore& store = queue.store();
  try {
    RetryFacts facts = retryFacts(queue, *job);
    facts.choice = RetryChoice::stayWithRequest;
    // The mark is set in the same save as the job's new status, so that it never stands alone.
    if (planRetry(facts).action == RetryPlan::Action::start) store.context().edit(job).saveOriginal = true;
    std::optional<QString> question;
    retryJob(queue, job, facts, question);
  } catch (...) {
    store.failOperation(std::current_exception());
  }
}

bool submissionIsUnknown(const LibraryStore& store, const QUuid& id) {
  const JobRef job = store.hasWorkspace() ? store.job(id) : nullptr;
  return job && !job->isActive() && ResultRecovery::answerIsMissing(store.files(), *job);
}

void submitAgain(JobQueue& queue, const QUuid& id) {
  const JobRef job = existingJob(queue, id);
  if (!job || !submissionIsUnknown(queue.store(), id)) return;
  const WorkspaceFiles files = queue.store().files();
  bool markerRemoved = false;
  try {
    RetryFacts facts = retryFacts(queue, *job);
    facts.hasSubmissionMarker = false;
    const RetryPlan plan = planRetry(facts);
    if (plan.action == RetryPlan::Action::start && plan.checkPayment && job->request())
      checkPayment(queue, *job->request());
    if (plan.action == RetryPlan::Action::start) {
      ResultRecovery::removeSubmissionMarker(files, id);
      markerRemoved = true;
    }
    std::optional<QString> question;
    retryJob(queue, job, facts, question);
  } catch (...) {
    const std::exception_ptr failure = std::current_exception();
    // Nothing was sent: the warning must come again the next time.
    if (markerRemoved) ResultRecovery::restoreSubmissionMarker(files, id);
    queue.store().failOperation(failure);
  }
}

void cancel(JobQueue& queue, const QUuid& id) {
  const JobRef record = existingJob(queue, id);
  LibraryStore& store = queue.store();
  // What was cancelled before and is only fetched is left to end.
  if (!record || !record->isActive() || store.salvaging.contains(id)) return;
  // 1. The task, whose entry stays until it has ended.
  queue.requestStop(id);
  // 2. The job's fields.
  GenerationJob& job = store.context().edit(record);
  job.status = jobStatus::cancelled;
  job.finishedAt = store.now();
  job.detail = texts::cancelledLocally();
  // 3. On disk.
  try {
    store.save(LibraryTables::none);
  } catch (...) {
    store.failOperation(std::current_exception());
    return;
  }
  // 4. The service is asked to stop it too.
  requestRemoteCancel(queue, id);
}

bool hasRecoverableResult(const LibraryStore& store, const QUuid& job) {
  return store.hasWorkspace() && ResultRecovery::exists(store.files(), job);
}

QString failureDetails(const JobQueue& queue, const QUuid& id) {
  const JobRef job = existingJob(queue, id);
  if (!job) return QString();
  const auto request = job->request();
  const GenerationPorts& ports = queue.ports();
  QStringList lines;
  if (job->errorMessage && !job->errorMessage->isEmpty()) lines << *job->errorMessage;
  if (!job->detail.isEmpty()) lines << job->detail;
  lines << QStringLiteral("Model: ") +
               (request ? ports.models->displayName(request->model) : QStringLiteral("unknown"));
  lines << QStringLiteral("Request: ") + job->providerRequestID.value_or(QStringLiteral("not recorded"));
  lines << QStringLiteral("Job: ") + uuidText(job->id);
  const bool retained = hasRecoverableResult(queue.store(), id);
  lines << QStringLiteral("State: ") + job->status + (retained ? QStringLiteral(", result saved locally") : QString());
  const QString version = ports.version.isEmpty() ? QStringLiteral("development") : ports.version;
  lines << QStringLiteral("Sorvan ") + version +
               (ports.build.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(ports.build));
  return lines.join(u'\n');
}

}  // namespace sorvan::generation
