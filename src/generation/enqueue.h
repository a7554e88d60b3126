// Checks before a request is taken, and the one road on which requests become jobs.
#pragma once

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Throws SorvanError with the way out when nothing pays for the request.
void checkPayment(const JobQueue& queue, const GenerationRequest& request);

/// Validates a request, its payment and its references. Throws SorvanError; changes nothing.
void validateForEnqueue(const JobQueue& queue, const GenerationRequest& request);

enum class ReferenceCheck { include, ignore };

/// A composer's check before Generate: as the request would be enqueued now. Throws SorvanError; changes nothing.
void checkReady(const JobQueue& queue, const GenerationRequest& request, ReferenceCheck references);

/// Persists one job for each request, in one save, and starts the queue. Throws before anything changed: a bad request
/// leaves no job of its batch, and a failed save leaves none in memory or on disk. An empty list does nothing.
/// Answers the jobs' ids in the order of the requests.
std::vector<QUuid> enqueueRequests(JobQueue& queue, std::vector<GenerationRequest> requests,
                                   std::optional<QUuid> project, std::optional<QString> sheetTitle = std::nullopt);

/// Enqueues the request once for each model and opens a contact sheet for them. Answers the comparison's id.
QUuid enqueueComparison(JobQueue& queue, const GenerationRequest& request, const std::vector<ComparisonModel>& models,
                        std::optional<QUuid> project);

/// The title of a contact sheet from a prompt: its words, at most 80 characters.
QString contactSheetTitle(const QString& prompt);

}  // namespace sorvan::generation
