// Fetching the result of a request that was cancelled here after the model had finished: it was paid for.
#pragma once

#include <QUuid>

#include <stop_token>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Fetches the job's result and lands it in Trash, invisibly: `store.salvaging` holds the job meanwhile. Waits for one
/// of the places of running jobs, ahead of queued jobs. Does nothing for a job that is not cancelled, has outputs, or
/// was tried again meanwhile, during a backup, and when another workspace is open by then. When the result cannot be
/// fetched the job is cancelled again and its detail says so; a save that fails is shown in `store.error`. Throws
/// Cancelled only before anything began.
Task<> salvage(JobQueue& queue, QUuid job, std::stop_token stop);

}  // namespace sorvan::generation
