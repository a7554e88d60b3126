#include "shell/account_payment_desk.h"

#include "account/account_texts.h"
#include "account/paying_with.h"
#include "catalogue/credits_operation.h"
#include "shell/account_page_texts.h"

namespace sorvan::shell {

PayChoicesDisplay payChoicesOf(const account::AccountStore& store, const account::BillingState& billing,
                               const account::ProviderSettings& keys) {
  PayChoicesDisplay choices;
  choices.offered = billing.ownKeyAllowed();
  choices.ownKeyPays = !billing.creditsChosen();
  choices.credits = account::texts::creditsEntry();
  choices.creditsHelp = account::texts::creditsEntryHelp();
  if (store.info()) choices.creditsBalance = catalogue::creditsCounted(store.info()->credits.available);
  choices.key = account::texts::keyEntry();
  choices.keyHelp = account::texts::keyEntryHelp();
  const auto problem = account::PayWithMenu::whyKeyDoesNotCount(keys.saved(), store.signedIn(), choices.offered);
  choices.keyProblem = problem.value_or(QString());
  return choices;
}

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
  PayWithDisplay display{payChoicesOf(account_, billing_, keys_)};
  display.account = account::texts::accountEntry();
  if (!display.offered) {
    if (!display.keyProblem.isEmpty()) display.label = texts::keyNotUsed();
    display.help = display.keyProblem;
    return display;
  }
  const core::PayWith payer = billing_.billing().payWith;
  display.label = account::PayWithMenu::label(payer);
  display.help = account::PayWithMenu::help(payer);
  account::PayingWithLine line{std::nullopt, dollars, request.count, &request, model};
  if (model) line.model = model->id;
  display.line = line.text(billing_);
  display.lineHelp = account::PayingWithLine::help(billing_);
  return display;
}

}  // namespace sorvan::shell
