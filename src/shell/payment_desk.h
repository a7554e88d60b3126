#pragma once

#include "shell/room.h"

#include "catalogue/fal_model.h"
#include "composer/estimates.h"
#include "core/billing.h"
#include "core/request_values.h"
#include "shell/pay_with_display.h"

#include <QObject>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace sorvan::shell {

// Who pays for what the composer submits, and what is known of credits. Whoever holds the account and the price list of
// credits derives from it; the composer asks for nothing else about them. As it stands here the user's own key pays,
// and nothing is known of credits. Main thread.
class PaymentDesk : public QObject {
  Q_OBJECT

 public:
  explicit PaymentDesk(QObject* parent = nullptr) : QObject(parent) {}

  virtual core::Billing billing() const { return {core::PayWith::ownKey, true}; }
  // Whether the user has a choice at all: only then a menu offers it.
  virtual bool offersChoice() const { return false; }
  virtual void payWith(core::PayWith) {}

  virtual bool isSignedIn() const { return false; }
  // Nothing until the account is loaded.
  virtual std::optional<composer::AccountBalance> account() const { return std::nullopt; }
  // Credits for a request; nothing while the price is not known.
  virtual std::optional<std::int64_t> credits(const core::GenerationRequest&, const catalogue::FalModel&) const {
    return std::nullopt;
  }
  // Whether the price of a model is the most that it can cost.
  virtual bool isCeiling(const QString&) const { return false; }
  // Whether credits can pay for a model; true also while that is not known.
  virtual bool isSold(const QString&) const { return true; }
  // Also shows the account.
  virtual void buyCredits() {}
  // What is said of who pays for a request, with the model that it goes to and what that is thought to cost under the own
  // key; null and nothing while several are chosen, or none.
  virtual PayWithDisplay payWithDisplay(const core::GenerationRequest&, const catalogue::FalModel*,
                                        std::optional<double>) const {
    return {};
  }

  // Asks for what these models cost in credits, where that is not known for now; `changed` follows.
  virtual void learnPrices(const QStringList&) {}
  // What a list of models says of a price in credits; nothing while it is not known.
  virtual std::optional<QString> priceLabel(const QString&) const { return std::nullopt; }

 Q_SIGNALS:
  // The choice, the account or a price: estimates are told anew.
  void changed();
};

}  // namespace sorvan::shell
