// The remote interpreter of commands, spoken to through the gateway and paid with credits.
#pragma once

#include <functional>

#include "catalogue/credits_client.h"
#include "composer/interpreter.h"

namespace sorvan::composer {

/// Main thread. `makeClient` makes a client of the present gateway for who is signed in now; what it throws is told.
/// `payer` names both, and is empty while they are not known.
class GatewayInterpreter final : public CommandInterpreter {
 public:
  explicit GatewayInterpreter(std::function<CreditsClient()> makeClient, std::function<QString()> payer = {})
      : makeClient_(std::move(makeClient)), payer_(std::move(payer)) {}

  Task<Interpretation> interpret(QString text, CommandContext context, QUuid key, std::stop_token stop) override;
  Task<std::optional<Interpretation>> existing(QUuid key, std::stop_token stop) override;
  QString payer() const override { return payer_ ? payer_() : QString(); }

 private:
  CreditsClient clientToSend() const;

  std::function<CreditsClient()> makeClient_;
  std::function<QString()> payer_;
};

}  // namespace sorvan::composer
