#include "shell/account_payment_desk.h"

#include "account/paying_with.h"

namespace sorvan::shell {

AccountPaymentDesk::AccountPaymentDesk(account::AccountStore& account, account::BillingState& billing,
                                       const account::ProviderSettings& keys, QObject* parent)
    : PaymentDesk(parent), account_(account), billing_(billing), keys_(keys) {
  connect(&account_, &account::AccountStore::changed, this, &PaymentDesk::changed);
  connect(&billing_, &account::BillingState::choiceChanged, this, &PaymentDesk::changed);
  connect(&billing_, &account::BillingState::pricesChanged, this, &PaymentDesk::changed);
  connect(&keys_, &account::ProviderSettings::changed, this, &PaymentDesk::changed);
}

void AccountPaymentDesk::payWith(core::PayWith payer) {
  try {
    billing_.pick(payer);
  } catch (const SorvanError& failure) {
    Q_EMIT failed(failure.message());
  }
}

std::optional<composer::AccountBalance> AccountPaymentDesk::account() const {
  if (!account_.signedIn() || !account_.info()) return std::nullopt;
  return composer::AccountBalance{account_.info()->credits.available, account_.info()->credits.reserved};
}

std::optional<std::int64_t> AccountPaymentDesk::credits(const core::GenerationRequest& request,
                                                        const catalogue::FalModel& model) const {
  return billing_.estimate(request, model);
}

bool AccountPaymentDesk::isCeiling(const QString& model) const {
  const account::CreditPrice* price = billing_.price(model);
  return price && price->upTo;
}

void AccountPaymentDesk::learnPrices(const QStringList& models) {
  // Without a token nothing can be asked; whoever wants prices asks again once somebody has signed in.
  if (!account_.signedIn() || models.isEmpty()) return;
  tasks_.spawnLater([this, models, stop = tasks_.token()] { return billing_.refresh(models, stop); });
}

std::optional<QString> AccountPaymentDesk::whyKeyDoesNotCount() const {
  return account::PayWithMenu::whyKeyDoesNotCount(keys_.saved(), account_.signedIn(), billing_.ownKeyAllowed());
}

}  // namespace sorvan::shell
