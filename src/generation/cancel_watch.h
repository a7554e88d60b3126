// The watch over an operation of the gateway that was cancelled here: it may still be charged.
#pragma once

#include <QUuid>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// How often the watch looks before it leaves the job to a later pass over cancelled jobs.
inline constexpr int cancelWatchChecks = 40;

/// Asks the gateway to stop the job's operation and follows it: the job's detail tells what it costs, and the result is
/// fetched into Trash when it was charged. Nothing without an operation id. Ends without a further write when another
/// workspace is opened or the job is tried again. Returns at once.
void watchCancelledOperation(JobQueue& queue, const QUuid& job);

}  // namespace sorvan::generation
