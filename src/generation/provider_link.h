// The runner's side of a provider's call.
#pragma once

#include <QUuid>

#include <functional>
#include <memory>
#include <stop_token>

#include "generation/job_queue.h"
#include "generation/provider.h"

namespace sorvan::generation {

/// What a provider gets to speak with the run of this job. `beforeSending` notes what is about to be sent; it runs
/// before each announced POST, and what it throws stops that POST.
std::shared_ptr<ProviderRun> makeProviderLink(JobQueue& queue, const QUuid& job, std::function<void()> beforeSending,
                                              std::stop_token stop);

}  // namespace sorvan::generation
