// What a user does to a job that did not simply finish.
#pragma once

#include <QString>
#include <QUuid>

#include <optional>

#include "generation/job_queue.h"
#include "generation/retry_plan.h"

namespace sorvan::generation {

/// Sets a job going again: lands a retained result, reconnects to the remote job, or submits. A failure is shown in
/// `store.error` and leaves the job as it was. Answers what is to be asked first, when the request may be paid twice:
/// ask the user, and call again with `confirmed`.
std::optional<QString> retry(JobQueue& queue, const QUuid& job, RetryChoice choice = RetryChoice::decide,
                             RetryConfirmation confirmation = RetryConfirmation::none);

/// As Retry, but keeps the provider's pictures as they came, without confining them to the marked areas.
void saveRawResult(JobQueue& queue, const QUuid& job);

/// Whether the answer to the submission of a job that has ended was lost, so that only Submit Again can send it anew.
bool submissionIsUnknown(const LibraryStore& store, const QUuid& job);

/// The user's explicit word, after a warning that it may be paid twice: forgets the lost submission and submits.
void submitAgain(JobQueue& queue, const QUuid& job);

/// Stops an active job here at once and asks the service to stop it; does nothing to a job that has ended. A failed
/// save is shown in `store.error`.
void cancel(JobQueue& queue, const QUuid& job);

/// Whether a paid result of the job is retained on disk.
bool hasRecoverableResult(const LibraryStore& store, const QUuid& job);

/// The lines that a user sends to support.
QString failureDetails(const JobQueue& queue, const QUuid& job);

}  // namespace sorvan::generation
