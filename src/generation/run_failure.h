// How a run that did not finish is written down.
#pragma once

#include <QUuid>

#include <exception>
#include <stop_token>

#include "generation/job_queue.h"
#include "generation/run_facts.h"

namespace sorvan::generation {

/// Writes the failure into the job's fields: what it was, and in which state the money is. When the save fails too, the
/// store keeps the fields in memory and shows what to do. At shutdown a stopped job is left as it is.
void recordFailure(JobQueue& queue, const QUuid& job, const RunTrace& trace, const std::exception_ptr& failure,
                   const std::stop_token& stop);

}  // namespace sorvan::generation
