// Asking a service to stop a job that was cancelled here.
#pragma once

#include <QUuid>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Asks the service to stop the remote request of a cancelled job, as soon as its remote identity is known. On the
/// user's own key the answer only changes the job's detail; an operation of the gateway is watched until it has ended,
/// and its result is fetched when it was charged. Returns at once.
void requestRemoteCancel(JobQueue& queue, const QUuid& job);

}  // namespace sorvan::generation
