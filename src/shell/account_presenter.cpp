#include "shell/account_presenter.h"

#include "account/account_texts.h"
#include "account/paying_with.h"
#include "catalogue/credits_operation.h"
#include "catalogue/gateway_address.h"
#include "shell/account_page_texts.h"
#include "shell/account_payment_desk.h"

namespace sorvan::shell {

namespace {

const QString keyAddress = QStringLiteral("https://fal.ai/dashboard/keys");
const QString ownHost = QStringLiteral("auth");

bool isSignInLink(const QString& link) { return QUrl(link, QUrl::StrictMode).host() == ownHost; }

}  // namespace

AccountPresenter::AccountPresenter(Ports ports, QObject* parent) : QObject(parent), on(std::move(ports)) {
  connect(&on.account, &account::AccountStore::changed, this, [this] {
    if (!on.account.busy()) takeWaitingLink();
    Q_EMIT changed();
  });
  connect(&on.account, &account::AccountStore::checkoutReady, this, &AccountPresenter::openCheckout);
  connect(&on.account, &account::AccountStore::purchaseLanded, this, [this] { purchase_.reset(); });
  connect(&on.billing, &account::BillingState::choiceChanged, this, &AccountPresenter::changed);
  connect(&on.keys, &account::ProviderSettings::changed, this, &AccountPresenter::changed);
}

// ---- What is shown

AccountPageDisplay AccountPresenter::page() const {
  AccountPageDisplay page;
  page.title = texts::accountTitle();
  page.busy = on.account.busy();
  // The last known account counts while the key store has not answered.
  page.signedIn = on.account.signedIn() || on.account.info();
  page.message = problem_.isEmpty() ? on.account.message().value_or(QString()) : problem_;
  page.messageIsError = !problem_.isEmpty() || on.account.messageIsError();
  if (!page.signedIn) {
    page.signIn = signInCard();
    return page;
  }
  page.signOut = texts::signOut();
  page.signedInAs = account::texts::signedInAs(
      on.account.info() ? on.account.info()->email.value_or(QString()) : QString());
  // What stands elsewhere on the page, or has come true.
  const bool isStale = planHasBegun() && page.message == account::texts::checkoutOpened();
  if (isStale || page.message == page.signedInAs) page.message.clear();
  page.purchase = purchase();
  fillCredits(page);
  fillOffers(page);
  return page;
}

SignInDisplay AccountPresenter::signInCard() const {
  SignInDisplay card;
  card.introduction = account::texts::accountIntroduction();
  card.title = account::texts::signInTitle();
  card.noPassword = account::texts::noPassword();
  card.emailField = texts::emailField();
  card.sendLink = account::texts::sendLink();
  card.awaitsLink = on.account.awaitingLink().has_value();
  if (card.awaitsLink) card.checkInbox = account::texts::checkInbox();
  card.linkField = account::texts::pasteLink();
  card.signIn = texts::signIn();
  return card;
}

PurchaseDisplay AccountPresenter::purchase() const {
  PurchaseDisplay shown;
  shown.arrived = on.account.arrived().value_or(QString());
  if (!on.account.watchesPurchase() || planHasBegun()) return shown;
  shown.waiting = texts::waitingForPayment();
  shown.stop = texts::stopWaiting();
  shown.stopHelp = texts::stopWaitingHelp();
  if (!purchase_) return shown;
  shown.openAgain = texts::openCheckoutAgain();
  shown.newCheckout = texts::newCheckout();
  shown.newCheckoutHint = texts::newCheckoutHint();
  return shown;
}

// A plan brings no credits of its own to wait for: it has begun when the account names it.
bool AccountPresenter::planHasBegun() const {
  return purchase_ && purchase_->kind == OfferKind::plan && on.account.info() &&
         hasPlan(*on.account.info(), purchase_->offer);
}

void AccountPresenter::fillCredits(AccountPageDisplay& page) const {
  const auto& account = on.account.info();
  if (!account) {
    page.unreachable = account::texts::creditsUnreachable();
    return;
  }
  page.balance = balanceOf(*account);
  page.spendLimit = spendLimitOf(*account, on.clock->now());
  page.devices = devicesOf(*account, on.clock->now());
  if (account->credits.review.value_or(0) <= 0) return;
  page.reviewBefore = account::texts::underReviewBefore();
  page.supportAddress = account::texts::supportAddress();
  page.reviewAfter = account::texts::underReviewAfter();
}

void AccountPresenter::fillOffers(AccountPageDisplay& page) const {
  page.packs = packOffers(on.account.packs());
  if (on.account.info()) page.plans = planOffers(*on.account.info());
  if (page.packs.empty()) page.noPacks = account::texts::noPacks();
  page.offersNote = account::texts::failedCostsNothing();
  if (page.packs.empty() && page.plans.empty()) return;
  page.offersNote = account::texts::beforeTax() + QLatin1Char(' ') + page.offersNote;
  if (on.account.packsTestMode()) page.offersNote = account::texts::testMode() + page.offersNote;
}

GatewayDisplay AccountPresenter::gateway() const {
  return {texts::advancedTitle(), texts::gatewayField(), on.settings.get(catalogue::gatewaySetting(), QString()),
          catalogue::defaultGateway().toString()};
}

BadgeDisplay AccountPresenter::badge() const {
  if (!on.account.info()) return {};
  const std::int64_t available = on.account.info()->credits.available;
  return {true, available, account::balanceHelp(available)};
}

PayChoicesDisplay AccountPresenter::payChoices() const { return payChoicesOf(on.account, on.billing, on.keys); }

QString AccountPresenter::balanceText(double microcredits) {
  return catalogue::creditsDisplay(static_cast<std::int64_t>(account::shownMicrocredits(microcredits)));
}

QString AccountPresenter::creditsText(double microcredits) {
  return catalogue::creditsCounted(static_cast<std::int64_t>(account::shownMicrocredits(microcredits)));
}

// ---- What is done

void AccountPresenter::beginAction() { problem_.clear(); }

void AccountPresenter::sendLink(const QString& email) {
  if (email.trimmed().isEmpty()) return;
  beginAction();
  on.account.start(email);
}

void AccountPresenter::signIn(const QString& link) {
  // A second press on the same link, or the same mail opened twice, is one wish.
  if (on.account.busy() && linkUnderWay_ == link.trimmed()) return;
  if (on.account.busy()) {
    waitingLink_ = link;
    return;
  }
  beginAction();
  linkUnderWay_ = link.trimmed();
  on.account.complete(link);
}

void AccountPresenter::openLink(const QString& link) {
  if (isSignInLink(link)) {
    signIn(link);
  } else {
    problem_ = account::texts::notASignInLink();
    Q_EMIT changed();
  }
  Q_EMIT accountRequested();
}

void AccountPresenter::takeWaitingLink() {
  linkUnderWay_.reset();
  if (!waitingLink_) return;
  const QString link = *waitingLink_;
  waitingLink_.reset();
  signIn(link);
}

void AccountPresenter::signOut() {
  beginAction();
  purchase_.reset();
  on.account.signOut();
}

void AccountPresenter::signOutDevice(const QString& device) {
  beginAction();
  on.account.revoke(device);
}

void AccountPresenter::buy(OfferKind kind, const QString& offer) {
  if (on.account.busy()) return;
  beginAction();
  purchase_ = Purchase{kind, offer};
  if (kind == OfferKind::pack) return on.account.buyPack(offer);
  on.account.subscribe(offer);
}

void AccountPresenter::openCheckout(const QUrl& page) {
  checkout_ = page;
  open(page);
}

void AccountPresenter::openCheckoutAgain() {
  if (!purchase_ || !checkout_.isValid()) return;
  beginAction();
  open(checkout_);
}

void AccountPresenter::startNewCheckout() {
  if (!purchase_ || on.account.busy()) return;
  on.account.forgetCheckout();
  buy(purchase_->kind, QString(purchase_->offer));
}

void AccountPresenter::stopWaiting() { on.account.stopWatching(); }

void AccountPresenter::forgetArrival() { on.account.forgetArrival(); }

void AccountPresenter::writeToSupport() { open(QUrl(QStringLiteral("mailto:") + account::texts::supportAddress())); }

void AccountPresenter::openKeyPage() { open(QUrl(keyAddress)); }

void AccountPresenter::open(const QUrl& page) {
  if (!on.openPage(page)) problem_ = texts::browserFailed(page.toString(QUrl::FullyEncoded));
  Q_EMIT changed();
}

void AccountPresenter::setGateway(const QString& address) {
  beginAction();
  on.account.setGateway(address);
  if (!on.account.messageIsError()) on.account.refresh();
}

void AccountPresenter::payWithOwnKey(bool ownKey) {
  try {
    on.billing.pick(ownKey ? core::PayWith::ownKey : core::PayWith::credits);
    beginAction();
  } catch (const std::exception& failure) {
    problem_ = describe(failure);
    Q_EMIT changed();
  }
}

void AccountPresenter::refresh() {
  if (!on.account.busy()) on.account.refresh();
}

}  // namespace sorvan::shell
