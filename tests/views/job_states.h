// A job in each state that it can be in.
#pragma once

#include "shell/job_display.h"
#include "shell/views/room.h"

#include <utility>
#include <vector>

namespace sorvan::views {

// Under what the state is called.
std::vector<std::pair<QString, JobDisplay>> sampleJobStates();
// With it, one whose result is in the library, which has no cell of its own.
std::vector<std::pair<QString, JobDisplay>> sampleHistoryStates();

}  // namespace sorvan::views
