// The pass over jobs that were cancelled while credits paid for them: what became of their operations?
#pragma once

#include "generation/job_queue.h"

namespace sorvan::generation {

/// Asks the gateway about each cancelled job of the last seven days whose fate is open, one by one: a result that was
/// charged is fetched into Trash, and a job that cost nothing says so. A request that was cancelled before the gateway
/// told its operation is looked up by its own id, and the operation is asked to stop. What cannot be asked now is left
/// to a later pass. Does nothing during a backup, while an earlier pass goes on, and at shutdown.
Task<> settleCancelled(JobQueue& queue);

/// Starts such a pass in the queue's care; the step that follows the opening of a workspace.
void startSettling(JobQueue& queue);

}  // namespace sorvan::generation
