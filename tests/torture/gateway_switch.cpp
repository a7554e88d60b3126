#include "torture/gateway_switch.h"

#include "base/sorvan_error.h"
#include "catalogue/credits_ports.h"
#include "catalogue/credits_provider.h"
#include "catalogue/gateway_address.h"

namespace sorvan::torture {

void GatewaySwitch::plugInto(generation::GenerationPorts& ports, std::shared_ptr<platform::HttpTransport> transport,
                             std::shared_ptr<const base::Clock> clock,
                             std::shared_ptr<const catalogue::FalCatalog> catalog, const QString& token) {
  catalogue::CreditsServices services;
  services.transport = transport;
  services.catalog = catalog;
  services.clock = clock;
  services.client = [transport, clock](const QString& given) {
    catalogue::CreditsClient::Access access;
    access.transport = transport;
    access.clock = clock;
    access.gateway = catalogue::defaultGateway();
    access.token = given;
    return catalogue::CreditsClient(access);
  };
  services.account = [] { return std::nullopt; };
  const auto provider = std::make_shared<catalogue::CreditsImageProvider>(services);

  ports.providerResolver = [others = ports.providerResolver, provider](core::ProviderID id) {
    return id == core::ProviderID::credits ? provider : others(id);
  };
  ports.keyReader = [others = ports.keyReader, token](core::ProviderID id) {
    return id == core::ProviderID::credits ? std::optional(token) : others(id);
  };
  ports.billing = [this] { return core::Billing{pays ? core::PayWith::credits : core::PayWith::ownKey, true}; };
  catalogue::plugCredits(ports, [this, token, make = services.client] {
    if (away) throw base::SorvanError(QStringLiteral("The gateway cannot be asked."));
    return make(token);
  });
}

}  // namespace sorvan::torture
