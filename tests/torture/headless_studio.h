// The studio without a window: the real store, queue, runner and provider over the real network, put together as the
// program does it.
#pragma once

#include <memory>

#include "base/clock.h"
#include "core/library_store.h"
#include "core/thumbnail_maintenance.h"
#include "exchange/unfinished_imports.h"
#include "generation/job_queue.h"
#include "platform/http.h"
#include "torture/gateway_switch.h"

namespace sorvan::torture {

// A clock whose waits last at most 20 ms, so that polling does not set the pace of a trial. Its time is the system's.
class HastyClock final : public base::Clock {
 public:
  base::Instant now() const override { return base::SystemClock().now(); }
  base::Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) const override;
};

struct HeadlessStudio {
  // Speaks to the service that SORVAN_SERVICE names; throws SorvanError when it names none.
  HeadlessStudio();
  ~HeadlessStudio();

  std::shared_ptr<platform::HttpTransport> transport;
  GatewaySwitch gateway;
  std::unique_ptr<core::LibraryStore> store;
  std::unique_ptr<core::ThumbnailMaintenance> maintenance;
  std::unique_ptr<exchange::UnfinishedImports> imports;
  std::unique_ptr<generation::JobQueue> queue;
};

}  // namespace sorvan::torture
