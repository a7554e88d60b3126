// Asking a service to stop a job that was cancelled here.
#pragma once

#include <QUuid>

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Asks the service to stop the job's remote request, when it runs on the user's own key and its handle is known. The
/// answer only changes the job's detail. Returns at once.
void requestRemoteCancel(JobQueue& queue, const QUuid& job);

}  // namespace sorvan::generation
