// The account's side of the program, put together: who is signed in, what credits cost, and how they pay.
#pragma once

#include <memory>

#include "account/account_store.h"
#include "account/billing_state.h"
#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "app/room.h"
#include "catalogue/credits_provider.h"
#include "catalogue/fal_catalog.h"
#include "generation/generation_ports.h"

namespace sorvan::app {

/// Main thread. Its parts run tasks that refer to them: await `drain` before it goes.
class CreditsDesk {
 public:
  struct Services {
    std::shared_ptr<HttpTransport> transport = {};
    std::shared_ptr<const Clock> clock = {};
    std::shared_ptr<Settings> settings = {};
    std::shared_ptr<account::KeyCache> keys = {};
    std::shared_ptr<const FalCatalog> catalog = {};
  };
  explicit CreditsDesk(Services with);

  /// Fills what the job queue asks of credits; what else is asked goes on to where it went before.
  void plugInto(GenerationPorts& ports);
  /// Reads the account, and begins what runs beside the work.
  void start();
  Task<> drain();

  account::AccountStore& account() { return account_; }
  account::BillingState& billing() { return billing_; }
  account::UsageStats& usage() { return usage_; }
  account::UpdateNotice& updates() { return updates_; }

 private:
  account::AccountStore account_;
  account::BillingState billing_;
  account::UsageStats usage_;
  account::UpdateNotice updates_;
  std::shared_ptr<catalogue::CreditsImageProvider> provider_;
};

}  // namespace sorvan::app
