// One job from waiting to an outcome, in an order in which nothing that was paid for can be lost.
#pragma once

#include <QUuid>

#include <stop_token>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Runs a job. Never throws: every failure ends in the job's own fields. What is on disk at each step is enough for
/// Retry to finish the job without buying it again. Started by the queue only. Main thread; holds no record across a
/// pause.
Task<> runJob(JobQueue& queue, QUuid job, std::stop_token stop);

/// Takes in a provider's update in one go: what could lose money is on disk when it returns. Throws `Cancelled` for a
/// job that is gone or cancelled, after storing what the update brought, and the database's error when it could not be
/// saved.
void applyUpdate(JobQueue& queue, const QUuid& job, const ProviderUpdate& update);

}  // namespace sorvan::generation
