#include "account/billing_state.h"

#include <algorithm>

#include <QJsonArray>
#include <QPointer>

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

constexpr double knownPriceSeconds = 3600;
constexpr double noPriceSeconds = 300;

QString choiceSetting() { return u"payWith"_s; }
QString nameOf(PayWith payer) { return payer == PayWith::credits ? u"credits"_s : u"ownKey"_s; }

}  // namespace

BillingState::BillingState(Services with, QObject* parent) : QObject(parent), services(std::move(with)) {
  if (services.settings->get<QString>(choiceSetting()) == nameOf(PayWith::credits)) choice = PayWith::credits;
  readAccount();
  connect(services.settings.get(), &Settings::changed, this, [this](const QString& key) {
    if (key == accountSetting()) readAccount();
  });
}

void BillingState::readAccount() {
  const auto account = services.settings->get<AccountInfo>(accountSetting());
  const bool allows = account && account->hasFeature(u"byok"_s);
  if (allows == accountAllows) return;
  accountAllows = allows;
  Q_EMIT choiceChanged();
}

bool BillingState::ownKeyAllowed() const { return services.ownKeyAllowed.value_or(accountAllows); }

void BillingState::pick(PayWith payer) {
  choice = payer;
  Q_EMIT choiceChanged();
  services.settings->set(choiceSetting(), nameOf(payer));
}

Billing BillingState::billing() const {
  return {creditsChosen() ? PayWith::credits : PayWith::ownKey, ownKeyAllowed()};
}

const CreditPrice* BillingState::price(const QString& model) const {
  const auto found = prices.constFind(model);
  return found != prices.constEnd() && *found ? &**found : nullptr;
}

bool BillingState::accepts(const QString& model) const {
  const auto found = prices.constFind(model);
  return found == prices.constEnd() || found->has_value();
}

bool BillingState::isPricedPerSecond(const QString& model) const {
  const CreditPrice* known = price(model);
  return known && known->per == u"second"_s;
}

std::optional<QString> BillingState::label(const QString& model) const {
  const CreditPrice* known = price(model);
  return known ? std::optional(priceLabel(*known)) : std::nullopt;
}

std::optional<std::int64_t> BillingState::estimate(const GenerationRequest& request, const FalModel& model) const {
  const CreditPrice* known = price(model.id);
  return known ? estimatedCredits(*known, request, model) : std::nullopt;
}

bool BillingState::isFresh(const QString& model) const {
  const auto when = asked.constFind(model);
  if (when == asked.constEnd()) return false;
  const double age = services.clock->now() - *when;
  return age >= 0 && age <= (price(model) ? knownPriceSeconds : noPriceSeconds);
}

Task<> BillingState::refresh(QStringList models, std::stop_token stop) {
  QPointer<BillingState> self(this);
  // 1. What is on its way is waited for.
  std::vector<Completion> running;
  QStringList wanted;
  for (const QString& model : models) {
    const auto flight = inFlight.find(model);
    if (flight != inFlight.end()) {
      running.push_back(flight->second);
    } else if (!isFresh(model)) {
      wanted << model;  // 2. What is fresh is left out.
    }
  }
  // 3. The rest, in order.
  wanted.removeDuplicates();
  wanted.sort();
  if (!wanted.isEmpty()) co_await fetch(wanted, stop);
  for (const Completion& other : running) {
    co_await other;
    throwIfStopped(stop);
  }
}

Task<> BillingState::fetch(QStringList models, std::stop_token stop) {
  QPointer<BillingState> self(this);
  const Completion done;
  for (const QString& model : models) {
    asked.insert(model, services.clock->now());
    inFlight.insert_or_assign(model, done);
  }
  std::optional<QJsonObject> listed;
  std::exception_ptr stopped;
  try {
    // 4. and 5. The question.
    const CreditsClient client = services.makeClient();
    const QJsonObject body{{u"models"_s, QJsonArray::fromStringList(models)}};
    const auto reply = co_await client.post<QJsonObject>(u"v1/prices"_s, body, std::nullopt, stop);
    if (reply.value(u"prices"_s).isObject()) listed = reply.value(u"prices"_s).toObject();
  } catch (const Cancelled&) {
    stopped = std::current_exception();
  } catch (const SorvanError&) {
    // A price that cannot be had blocks nothing.
  }
  if (self) {
    for (const QString& model : models) inFlight.erase(model);
    if (listed) {
      take(models, *listed);  // 6.
    } else {
      for (const QString& model : models) asked.remove(model);
    }
  }
  done.finish();
  if (stopped) std::rethrow_exception(stopped);
}

void BillingState::take(const QStringList& models, const QJsonObject& listed) {
  for (const QString& model : models) prices.insert(model, priceFrom(listed.value(model)));
  Q_EMIT pricesChanged();
}

}  // namespace sorvan::account
