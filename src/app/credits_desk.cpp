#include "app/credits_desk.h"

#include "catalogue/credits_ports.h"
#include "catalogue/gateway_address.h"

#ifndef SORVAN_BUILD
#define SORVAN_BUILD 0
#endif

namespace sorvan::app {

namespace {

CreditsServices providerServices(const CreditsDesk::Services& with, account::AccountStore& account,
                                 account::BillingState& billing) {
  CreditsServices services;
  services.transport = with.transport;
  services.catalog = with.catalog;
  services.clock = with.clock;
  services.client = [with](const QString& token) {
    CreditsClient::Access access;
    access.transport = with.transport;
    access.clock = with.clock;
    access.gateway = gatewayOf(*with.settings);
    access.token = token;
    return CreditsClient(access);
  };
  services.account = [&account] { return account.accountName(); };
  services.isPricedPerSecond = [&billing](const QString& model) { return billing.isPricedPerSecond(model); };
  services.creditsChanged = [&account] { account.creditsChanged(); };
  return services;
}

account::AccountStore::Services accountServices(const CreditsDesk::Services& with) {
  account::AccountStore::Services services;
  services.transport = with.transport;
  services.clock = with.clock;
  services.settings = with.settings;
  services.keys = with.keys;
  return services;
}

account::BillingState::Services billingServices(const CreditsDesk::Services& with, account::AccountStore& account) {
  account::BillingState::Services services;
  services.settings = with.settings;
  services.clock = with.clock;
  services.makeClient = [&account] { return account.client(account::AccountStore::Needs::token); };
  return services;
}

QString buildText() { return SORVAN_BUILD > 0 ? QString::number(SORVAN_BUILD) : QStringLiteral("development"); }

}  // namespace

CreditsDesk::CreditsDesk(Services with)
    : account_(accountServices(with)),
      billing_(billingServices(with, account_)),
      usage_({with.transport, with.clock, with.settings, QStringLiteral(SORVAN_VERSION), buildText()}),
      updates_({with.transport, with.settings, SORVAN_BUILD}),
      provider_(std::make_shared<CreditsImageProvider>(providerServices(with, account_, billing_))) {}

void CreditsDesk::plugInto(GenerationPorts& ports) {
  ports.providerResolver = [others = ports.providerResolver, provider = provider_](ProviderID id) {
    return id == ProviderID::credits ? provider : others(id);
  };
  // A token that the key store refused pays too, for as long as the program runs.
  ports.keyReader = [this, others = ports.keyReader](ProviderID id) {
    return id == ProviderID::credits && account_.signedIn() ? account_.presentToken() : others(id);
  };
  plugCredits(ports, [this] { return account_.client(account::AccountStore::Needs::token); });
  ports.noteUsage = [this](const QString& key, int count) { usage_.note(key, count); };
}

void CreditsDesk::start() {
  account_.refresh();
  usage_.begin();
  updates_.check();
}

Task<> CreditsDesk::drain() {
  co_await account_.drain();
  co_await usage_.drain();
  co_await updates_.drain();
}

}  // namespace sorvan::app
