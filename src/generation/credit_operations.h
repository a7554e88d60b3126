// What the states of a gateway's operation mean for a job that was cancelled here.
#pragma once

#include <QString>
#include <QUuid>

#include <optional>
#include <stop_token>

#include "generation/job_queue.h"

namespace sorvan::generation {

namespace creditsState {
inline bool isComplete(const QString& state) { return state == QStringLiteral("complete"); }
inline bool isFailed(const QString& state) { return state == QStringLiteral("failed"); }
/// Still at work, as far as is known: an empty state is one that nobody has told yet.
inline bool isGoing(const QString& state) {
  return state.isEmpty() || state == QStringLiteral("queued") || state == QStringLiteral("running");
}
}  // namespace creditsState

/// The line that tells a user what the cancelled operation costs.
QString detailOfCancelled(const QString& state);

/// The id of the job's operation; nothing unless credits pay for the job and the gateway has told it.
std::optional<QString> operationOf(const GenerationJob& job);

/// Asks for an operation's state. Nothing when it could not be asked, or when the gateway told none. Throws Cancelled.
Task<std::optional<QString>> askState(JobQueue* queue, QString operation, std::stop_token stop);

/// Asks the gateway to stop an operation and answers its state, empty when nobody told one. Nothing when the gateway
/// could not be asked to stop it. Throws Cancelled.
Task<std::optional<QString>> askToCancel(JobQueue* queue, QString operation, std::stop_token stop);

}  // namespace sorvan::generation
