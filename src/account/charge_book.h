// All charges of a library as plain values, so that reports on a large one are worked out beside the window.
#pragma once

#include <stop_token>
#include <vector>

#include "account/cost_report.h"
#include "base/task.h"

namespace sorvan::account {

/// Every row that was ever paid for here, newest first, with the names that they need. The items in it are only handed
/// on; nothing reads them off the main thread.
struct ChargeBook {
  std::vector<Charge> charges;
  ChargeNames names;
};

/// Main thread. Copies the rows a thousand at a time, between which the window goes on. Throws Cancelled when stopped and
/// when another workspace was opened meanwhile; the store is not looked at again then.
Task<ChargeBook> gatherCharges(const LibraryStore& store, NameOfModel nameOfModel, std::stop_token stop);

}  // namespace sorvan::account
