// How the driver pays: with its own key, or with the credits of the simulator's ready account.
#pragma once

#include <memory>

#include "base/clock.h"
#include "catalogue/credits_client.h"
#include "catalogue/fal_catalog.h"
#include "generation/generation_ports.h"
#include "platform/http.h"

namespace sorvan::torture {

struct GatewaySwitch {
  bool pays = false;  // whether credits pay for what is ordered from now on
  bool away = false;  // whether it cannot be asked about operations that were cancelled

  // Fills the ports of credits, the key among them: `token` is the account's. This object must outlive the ports.
  void plugInto(generation::GenerationPorts& ports, std::shared_ptr<platform::HttpTransport> transport,
                std::shared_ptr<const base::Clock> clock, std::shared_ptr<const catalogue::FalCatalog> catalog,
                const QString& token);
};

}  // namespace sorvan::torture
