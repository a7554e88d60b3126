#include "account/account_store.h"

#include <algorithm>

#include <QScopeGuard>
#include <QSysInfo>

#include "account/account_texts.h"
#include "base/ids.h"
#include "catalogue/gateway_address.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"
#include "generation/provider.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds followPause{100};
constexpr int followRounds = 80;
constexpr std::chrono::seconds watchPause{4};
constexpr int watchRounds = 90;
constexpr int gone = 410;

QString computerName() {
  const QString name = QSysInfo::machineHostName();
  return name.isEmpty() ? u"Mac"_s : name;
}

QString pathPart(const QString& id) { return QString::fromLatin1(QUrl::toPercentEncoding(id)); }

}  // namespace

AccountStore::AccountStore(Services with, QObject* parent)
    : QObject(parent), services(std::move(with)), keyOfPurchase(uuidText(newUuid())) {
  if (services.deviceName.isEmpty()) services.deviceName = computerName();
  account = services.settings->get<AccountInfo>(accountSetting());
}

AccountStore::~AccountStore() = default;

CreditsClient AccountStore::client(Needs what) const {
  const QUrl gateway = gatewayOf(*services.settings);
  if (what == Needs::token && !token) throw SorvanError(catalogue::texts::signInNeeded());
  CreditsClient::Access access;
  access.transport = services.transport;
  access.clock = services.clock;
  access.gateway = gateway;
  if (what == Needs::token) access.token = *token;
  return CreditsClient(access);
}

std::optional<QString> AccountStore::accountName() const {
  if (!signedIn() || !accountIsOfToken || !account || !account->email) return std::nullopt;
  return account->email->toLower();
}

// ---- What the user does

void AccountStore::start(const QString& email) { act(&AccountStore::sendLink, email); }
void AccountStore::complete(const QString& link) { act(&AccountStore::exchange, link); }
void AccountStore::signOut() { act(&AccountStore::leave, QString()); }
void AccountStore::revoke(const QString& device) { act(&AccountStore::revokeDevice, device); }
void AccountStore::buyPack(const QString& pack) { act(&AccountStore::openPack, pack); }
void AccountStore::subscribe(const QString& plan) { act(&AccountStore::openPlan, plan); }

void AccountStore::act(Action action, const QString& argument) {
  if (acting) return;
  acting = true;
  Q_EMIT changed();
  tasks.spawn(acted(action, argument, tasks.token()));
}

Task<> AccountStore::acted(Action action, QString argument, std::stop_token stop) {
  const auto end = qScopeGuard([this] {
    acting = false;
    Q_EMIT changed();
  });
  try {
    co_await (this->*action)(std::move(argument), stop);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception& failure) {
    say(describe(failure), true);
  }
}

Task<> AccountStore::sendLink(QString email, std::stop_token stop) {
  const QString address = email.trimmed();
  const auto reply = co_await client(Needs::nothing)
                         .post<QJsonObject>(u"v1/auth/start"_s, QJsonObject{{u"email"_s, address}}, std::nullopt, stop);
  if (reply.value(u"sent"_s) == QJsonValue(false)) throw SorvanError(catalogue::texts::gatewayRefused());
  linkAddress = address;
  say(texts::linkSent(address), false);
}

/// The code works once. Where the answer was lost, the same key brings the stored one.
Task<QString> AccountStore::tokenFor(QString code, std::stop_token stop) {
  const QJsonObject body{{u"code"_s, code}, {u"device"_s, services.deviceName}};
  const QString key = uuidText(newUuid());
  const CreditsClient gateway = client(Needs::nothing);
  QJsonObject reply;
  bool isLost = false;
  try {
    reply = co_await gateway.post<QJsonObject>(u"v1/auth/exchange"_s, body, key, stop, Stakes::once);
  } catch (const SubmissionUnknown&) {
    isLost = true;
  }
  if (isLost) reply = co_await gateway.post<QJsonObject>(u"v1/auth/exchange"_s, body, key, stop, Stakes::once);
  const QString fresh = reply.value(u"token"_s).toString().trimmed();
  // A token becomes a header of each request: nothing that could end one goes in.
  const bool isPlain = std::all_of(fresh.begin(), fresh.end(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
  if (fresh.isEmpty() || !isPlain) throw SorvanError(catalogue::texts::gatewayRefused());
  co_return fresh;
}

/// A token that cannot be saved serves until the program ends: its code is spent.
Task<> AccountStore::keepToken(QString fresh, std::stop_token stop) {
  QString failure;
  try {
    co_await services.keys->save(fresh, ProviderID::credits, stop);
  } catch (const SorvanError& unsaved) {
    failure = unsaved.message();
  }
  tokenIsUnsaved = !failure.isEmpty();
  adoptToken(fresh);
  if (tokenIsUnsaved) throw SorvanError(failure);
}

Task<> AccountStore::exchange(QString link, std::stop_token stop) {
  // 1. to 3. The code and the device.
  const QString code = signInCode(link);
  // 4. The exchange.
  QString fresh = co_await tokenFor(code, stop);
  // 5. The token, then whose it is.
  QString unsaved;
  try {
    co_await keepToken(std::move(fresh), {});
  } catch (const SorvanError& failure) {
    unsaved = failure.message();
  }
  linkAddress.reset();
  const auto told = co_await client(Needs::token).get<AccountInfo>(u"v1/me"_s, stop);
  store(told);
  // 6. Told.
  if (unsaved.isEmpty()) {
    say(texts::signedInAs(told.email.value_or(QString())), false);
  } else {
    say(unsaved, true);
  }
  refresh();
}

Task<> AccountStore::leave(QString, std::stop_token stop) {
  if (signedIn()) {
    try {
      co_await client(Needs::token)
          .post<QJsonObject>(u"v1/auth/sign-out"_s, QJsonObject(), std::nullopt, stop);
    } catch (const SorvanError&) {
      // Leaving needs no network.
    }
  }
  tokenIsUnsaved = false;
  ++watchNumber;
  adoptToken(std::nullopt);
  forgetAccount();
  line.reset();
  co_await services.keys->save(QString(), ProviderID::credits, {});
  // A refresh that ran meanwhile may have read the old one.
  adoptToken(std::nullopt);
}

Task<> AccountStore::revokeDevice(QString device, std::stop_token stop) {
  co_await client(Needs::token)
      .post<QJsonObject>(u"v1/devices/"_s + pathPart(device) + u"/revoke"_s, QJsonObject(), std::nullopt, stop);
  refresh();
}

Task<> AccountStore::openPack(QString pack, std::stop_token stop) {
  co_await openCheckout({u"v1/checkout"_s, u"pack_id"_s, pack}, stop);
}

Task<> AccountStore::openPlan(QString plan, std::stop_token stop) {
  co_await openCheckout({u"v1/subscribe"_s, u"plan_id"_s, plan}, stop);
}

/// The page, where it is one of the payment provider's. A page that has expired gives way to a new one.
Task<QUrl> AccountStore::checkoutPage(Purchase purchase, std::stop_token stop) {
  const CreditsClient gateway = client(Needs::token);
  const QJsonObject body{{purchase.field, purchase.id}};
  QJsonObject reply;
  bool hasExpired = false;
  try {
    reply = co_await gateway.post<QJsonObject>(purchase.path, body, keyOfPurchase + u':' + purchase.id, stop, Stakes::once);
  } catch (const GatewayRefusal& refusal) {
    if (refusal.status() != gone) throw;
    hasExpired = true;
  }
  if (hasExpired) {
    keyOfPurchase = uuidText(newUuid());
    reply = co_await gateway.post<QJsonObject>(purchase.path, body, keyOfPurchase + u':' + purchase.id, stop, Stakes::once);
  }
  const QUrl page = httpsAddress(reply.value(u"checkout_url"_s).toString());
  if (!isCheckoutAddress(page)) throw SorvanError(texts::invalidCheckout());
  co_return page;
}

Task<> AccountStore::openCheckout(Purchase purchase, std::stop_token stop) {
  // 1. and 2. The client, and what was purchased so far.
  if (!account) store(co_await client(Needs::token).get<AccountInfo>(u"v1/me"_s, stop));
  awaiting = account->credits.purchased;
  // 3. and 4. The page.
  const QUrl page = co_await checkoutPage(std::move(purchase), stop);
  // 5. The watch.
  arrival.reset();
  watching = true;
  tasks.spawn(watch(++watchNumber, tasks.token()));
  say(texts::checkoutOpened(), false);
  Q_EMIT checkoutReady(page);
}

void AccountStore::forgetCheckout() {
  keyOfPurchase = uuidText(newUuid());
  Q_EMIT changed();
}

void AccountStore::stopWatching() {
  if (!watching) return;
  ++watchNumber;
  watching = false;
  if (line == texts::checkoutOpened()) line.reset();
  Q_EMIT changed();
}

void AccountStore::forgetArrival() {
  arrival.reset();
  arrivedAmount = 0;
  Q_EMIT changed();
}

void AccountStore::setGateway(const QString& text) {
  try {
    if (text.trimmed().isEmpty()) {
      services.settings->remove(gatewaySetting());
    } else {
      gatewayAddress(text);
      services.settings->set(gatewaySetting(), text.trimmed());
    }
    accountIsOfToken = false;
    line.reset();
  } catch (const SorvanError& failure) {
    say(failure.message(), true);
  }
  Q_EMIT changed();
}

// ---- What is read

void AccountStore::refresh() {
  if (refreshing) {
    refreshAgain = true;
    return;
  }
  refreshing = true;
  tasks.spawn(refreshed(tasks.token()));
}

Task<> AccountStore::refreshed(std::stop_token stop) {
  const auto end = qScopeGuard([this] { refreshing = false; });
  do {
    refreshAgain = false;
    co_await refreshOnce(stop);
    Q_EMIT changed();
  } while (refreshAgain && !stop.stop_requested());
}

Task<> AccountStore::refreshOnce(std::stop_token stop) {
  // 1. Who is signed in.
  co_await updateSignIn(stop);
  if (!signedIn()) {
    forgetAccount();
    co_return;
  }
  const int changesBefore = changesOfToken;
  // 2. The account. What cannot be read leaves the last one in place.
  try {
    const auto told = co_await client(Needs::token).get<AccountInfo>(u"v1/me"_s, stop);
    if (changesOfToken != changesBefore) co_return;
    landed(told);
    store(told);
  } catch (const SorvanError&) {
    co_return;
  }
  // 3. What is on sale, likewise.
  try {
    const auto sale = co_await client(Needs::token).get<CreditPacks>(u"v1/credit-packs"_s, stop);
    offered = sale.packs;
    testMode = sale.test_mode;
  } catch (const SorvanError&) {
    co_return;
  }
}

Task<> AccountStore::updateSignIn(std::stop_token stop) {
  if (tokenIsUnsaved) co_return;
  co_await services.keys->refresh(ProviderID::credits, stop);
  try {
    adoptToken(services.keys->key(ProviderID::credits));
  } catch (const SorvanError&) {
    // A key store that cannot be read says nothing about who is signed in.
  }
}

void AccountStore::creditsChanged() {
  if (following) return;
  following = true;
  tasks.spawn(follow(tasks.token()));
}

Task<> AccountStore::follow(std::stop_token stop) {
  const auto end = qScopeGuard([this] { following = false; });
  co_await yieldToLoop();
  for (int round = 0; acting && round < followRounds; ++round) co_await services.clock->sleep(followPause, stop);
  if (!acting && !stop.stop_requested()) refresh();
}

Task<> AccountStore::watch(int number, std::stop_token stop) {
  const auto end = qScopeGuard([this, number] {
    if (number == watchNumber) watching = false;
    Q_EMIT changed();
  });
  for (int round = 0; round < watchRounds; ++round) {
    co_await services.clock->sleep(watchPause, stop);
    if (number != watchNumber) co_return;
    try {
      const auto told = co_await client(Needs::token).get<AccountInfo>(u"v1/me"_s, stop);
      if (number != watchNumber) co_return;
      const bool hasLanded = landed(told);
      store(told);
      if (hasLanded) co_return;
    } catch (const SorvanError&) {
      continue;  // the next round asks again
    }
  }
}

void AccountStore::store(const AccountInfo& told) {
  account = told;
  accountIsOfToken = true;
  try {
    services.settings->set(accountSetting(), told);
  } catch (const SorvanError&) {
    // It is read again at the next start.
  }
  Q_EMIT changed();
}

bool AccountStore::landed(const AccountInfo& told) {
  if (!awaiting || told.credits.purchased <= *awaiting) return false;
  ++watchNumber;
  watching = false;
  keyOfPurchase = uuidText(newUuid());
  line.reset();
  arrivedAmount = told.credits.purchased - *awaiting;
  arrival = arrivalText(arrivedAmount);
  awaiting.reset();
  Q_EMIT purchaseLanded();
  return true;
}

void AccountStore::forgetAccount() {
  account.reset();
  offered.clear();
  awaiting.reset();
  arrival.reset();
  arrivedAmount = 0;
  watching = false;
  try {
    services.settings->remove(accountSetting());
  } catch (const SorvanError&) {
    // The next successful write takes it out.
  }
  Q_EMIT changed();
}

void AccountStore::adoptToken(const std::optional<QString>& fresh) {
  if (token == fresh) return;
  token = fresh;
  accountIsOfToken = false;
  ++changesOfToken;
  Q_EMIT changed();
}

void AccountStore::say(const QString& text, bool isError) {
  line = text;
  lineIsError = isError;
  Q_EMIT changed();
}

}  // namespace sorvan::account
