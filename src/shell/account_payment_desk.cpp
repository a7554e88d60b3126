#include "shell/account_payment_desk.h"

#include "account/account_texts.h"
#include "account/paying_with.h"
#include "catalogue/credits_operation.h"
#include "shell/account_page_texts.h"

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

PayWithDisplay AccountPaymentDesk::payWithDisplay(const core::GenerationRequest& request,
                                                  const catalogue::FalModel* model,
                                                  std::optional<double> dollars) const {
  PayWithDisplay display;
  const core::PayWith payer = billing_.billing().payWith;
  display.offered = offersChoice();
  display.ownKeyPays = payer == core::PayWith::ownKey;
  display.keyProblem = whyKeyDoesNotCount().value_or(QString());
  display.account = account::texts::accountEntry();
  if (!display.offered) {
    if (!display.keyProblem.isEmpty()) display.label = texts::keyNotUsed();
    display.help = display.keyProblem;
    return display;
  }
  display.label = account::PayWithMenu::label(payer);
  display.help = account::PayWithMenu::help(payer);
  display.credits = account::texts::creditsEntry();
  display.creditsHelp = account::texts::creditsEntryHelp();
  if (account_.info()) display.creditsBalance = catalogue::creditsCounted(account_.info()->credits.available);
  display.key = account::texts::keyEntry();
  display.keyHelp = account::texts::keyEntryHelp();
  account::PayingWithLine line{std::nullopt, dollars, request.count, &request, model};
  if (model) line.model = model->id;
  display.line = line.text(billing_);
  display.lineHelp = account::PayingWithLine::help(billing_);
  return display;
}

std::optional<QString> AccountPaymentDesk::whyKeyDoesNotCount() const {
  return account::PayWithMenu::whyKeyDoesNotCount(keys_.saved(), account_.signedIn(), billing_.ownKeyAllowed());
}

}  // namespace sorvan::shell
