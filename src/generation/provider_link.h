// The runner's side of a provider's call.
#pragma once

#include <QUuid>

#include <memory>
#include <stop_token>

#include "generation/job_queue.h"
#include "generation/provider.h"

namespace sorvan::generation {

/// What a provider gets to speak with the run of this job.
std::shared_ptr<ProviderRun> makeProviderLink(JobQueue& queue, const QUuid& job, std::stop_token stop);

}  // namespace sorvan::generation
