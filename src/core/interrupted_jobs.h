// What an earlier run left behind, turned into an honest state.
#pragma once

#include "core/library_store.h"

namespace sorvan::core {

/// Marks every job that the last exit cut off as "failed", "Interrupted", with a message that tells what Retry will do.
/// Nothing is started and nothing is saved: the answer is the jobs that were changed. A job whose paid submission left
/// and was never answered says so instead.
std::vector<JobRef> markInterruptedJobs(LibraryStore& store);

/// Removes what only a crash between a landing's save and its clean-up leaves: the charge notes and the recovery
/// folders of jobs that are complete and have their outputs. Needs the loaded ledger. Failures are ignored, the next
/// opening tries again.
void cleanUpAfterLandedJobs(LibraryStore& store);

/// Gives generations from before recipes were stored the request of their job, where it still decodes. Does not save.
void backfillRecipes(LibraryStore& store);

}  // namespace sorvan::core
