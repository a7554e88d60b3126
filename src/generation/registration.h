// From retained bytes to library items: all of a job's outputs land together, or nothing does.
#pragma once

#include <memory>
#include <stop_token>
#include <vector>

#include "generation/job_queue.h"
#include "generation/run_facts.h"

namespace sorvan::generation {

/// Writes the outputs' files, then their records and the job's completion in one save, and cleans up what only told of
/// an unfinished job. Throws SorvanError or Cancelled with no record changed and none of its files left; the retained
/// result stays. Outputs are absolute files in the recovery folder.
Task<> registerOutputs(JobQueue& queue, std::shared_ptr<const RunFacts> run, std::vector<GeneratedOutput> outputs,
                       std::shared_ptr<RunTrace> trace, std::stop_token stop);

/// Adds the cost of an output to a generation's parameters, or takes it out when there is none, and sets its estimated
/// cost. A generation whose parameters are no JSON object stays as it was.
void recordCost(Generation& generation, const std::optional<GenerationCost>& cost);

}  // namespace sorvan::generation
