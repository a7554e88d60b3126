// Who pays, as the signed-in account and the gateway's price list have it.
#pragma once

#include "account/account_store.h"
#include "account/billing_state.h"
#include "account/provider_settings.h"
#include "base/task_scope.h"
#include "shell/payment_desk.h"

#include <optional>

namespace sorvan::shell {

// The two ways to pay, and which of them pays as things stand.
PayChoicesDisplay payChoicesOf(const account::AccountStore& store, const account::BillingState& billing,
                               const account::ProviderSettings& keys);

// Main thread. What it is made of outlives it; await `drain` before it is destroyed.
class AccountPaymentDesk final : public PaymentDesk {
  Q_OBJECT

 public:
  AccountPaymentDesk(account::AccountStore& account, account::BillingState& billing,
                     const account::ProviderSettings& keys, QObject* parent = nullptr);

  core::Billing billing() const override { return billing_.billing(); }
  bool offersChoice() const override { return billing_.ownKeyAllowed(); }
  // A choice that cannot be written down holds until the program ends, and `failed` says so.
  void payWith(core::PayWith payer) override;

  bool isSignedIn() const override { return account_.signedIn(); }
  std::optional<composer::AccountBalance> account() const override;
  std::optional<std::int64_t> credits(const core::GenerationRequest& request,
                                      const catalogue::FalModel& model) const override;
  bool isCeiling(const QString& model) const override;
  bool isSold(const QString& model) const override { return billing_.accepts(model); }
  void buyCredits() override { Q_EMIT buyCreditsRequested(); }
  void learnPrices(const QStringList& models) override;
  std::optional<QString> priceLabel(const QString& model) const override { return billing_.label(model); }

  PayWithDisplay payWithDisplay(const core::GenerationRequest& request, const catalogue::FalModel* model,
                                std::optional<double> dollars) const override;

  Task<> drain() { return tasks_.drain(); }

 Q_SIGNALS:
  // The page where credits are bought is to be shown: Settings, Account.
  void buyCreditsRequested();
  void failed(const QString& text);

 private:
  account::AccountStore& account_;
  account::BillingState& billing_;
  const account::ProviderSettings& keys_;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
