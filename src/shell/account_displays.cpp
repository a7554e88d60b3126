#include "shell/account_displays.h"

#include "account/account_texts.h"
#include "catalogue/credits_operation.h"
#include "shell/account_page_texts.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace sorvan::shell {

namespace {

constexpr double kMinute = 60;
constexpr double kHour = 60 * kMinute;
constexpr double kDay = 24 * kHour;

Instant ofUnixTime(double seconds) {
  constexpr double longest = 253'402'300'799;  // the end of the year 9999
  return Instant::fromDateTime(
      QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::clamp(seconds, 0.0, longest) * 1000)));
}

// “3 December”
QString dayOf(double unixTime) {
  return QLocale().toString(ofUnixTime(unixTime).toDateTime().toLocalTime().date(), QStringLiteral("d MMMM"));
}

QString planName(const account::AccountInfo& account) {
  const auto own = std::find_if(account.plans.begin(), account.plans.end(),
                                [&](const account::AccountPlan& plan) { return plan.plan == account.plan; });
  if (own != account.plans.end() && !own->title.isEmpty()) return own->title;
  return account.plan.isEmpty() ? QString() : account.plan.front().toUpper() + account.plan.mid(1);
}

QString planOf(const account::AccountInfo& account) {
  if (!account.period_end || account.plan.isEmpty()) return {};
  const QString name = texts::planLine(planName(account));
  const QString day = dayOf(*account.period_end);
  return account.renews ? texts::renewsOn(name, day) : texts::endsOn(name, day);
}

BalanceRow row(const QString& name, std::int64_t amount, bool held) {
  return {name, catalogue::creditsDisplay(amount), amount, held};
}

QString footOf(const account::AccountCredits& credits) {
  const QString rule = account::texts::planCreditsFirst();
  if (!credits.included_expires || credits.included <= 0) return rule.trimmed();
  return texts::includedResets(dayOf(*credits.included_expires)) + rule;
}

struct Symbol {
  const char16_t* code;
  const char16_t* sign;
  int decimals;
};
constexpr Symbol kSymbols[] = {{u"USD", u"$", 2}, {u"EUR", u"€", 2}, {u"GBP", u"£", 2}, {u"JPY", u"¥", 0}};

}  // namespace

BalanceDisplay balanceOf(const account::AccountInfo& account) {
  const account::AccountCredits& credits = account.credits;
  BalanceDisplay balance;
  balance.microcredits = credits.available;
  balance.plan = planOf(account);
  balance.rows.push_back(row(account::texts::fromPlan(), credits.included, false));
  balance.rows.push_back(row(account::texts::fromTopUps(), credits.purchased, false));
  balance.rows.push_back(row(account::texts::heldForJobs(), credits.reserved, true));
  if (credits.review.value_or(0) > 0) balance.rows.push_back(row(account::texts::heldForReview(), *credits.review, true));
  balance.foot = footOf(credits);
  return balance;
}

std::vector<OfferDisplay> packOffers(const std::vector<account::CreditPack>& packs) {
  std::vector<OfferDisplay> offers;
  for (const account::CreditPack& pack : packs) {
    OfferDisplay offer;
    offer.id = pack.id;
    offer.amount = catalogue::creditsDisplay(pack.microcredits);
    offer.title = pack.title.isEmpty() ? catalogue::creditsCounted(pack.microcredits) : pack.title;
    offer.price = priceText(pack.price_minor, pack.currency);
    offer.button = texts::buy();
    offer.buttonName = texts::buyOffer(offer.title, offer.price);
    offers.push_back(std::move(offer));
  }
  return offers;
}

bool hasPlan(const account::AccountInfo& account, const QString& offer) {
  return account.renews && std::any_of(account.plans.begin(), account.plans.end(), [&](const account::AccountPlan& plan) {
           return plan.id == offer && plan.plan == account.plan;
         });
}

std::vector<OfferDisplay> planOffers(const account::AccountInfo& account) {
  std::vector<OfferDisplay> offers;
  for (const account::AccountPlan& plan : account.plans) {
    OfferDisplay offer;
    offer.kind = OfferKind::plan;
    offer.id = plan.id;
    offer.title = plan.title.isEmpty() ? plan.plan : plan.title;
    offer.amount = catalogue::creditsDisplay(plan.microcredits);
    offer.note = texts::eachPeriod(offer.amount);
    if (plan.price_minor) offer.price = priceText(*plan.price_minor, plan.currency);
    const bool isOwn = hasPlan(account, plan.id);
    if (isOwn) offer.note = texts::currentPlan() + QStringLiteral(" · ") + offer.note;
    offer.button = isOwn ? QString() : texts::subscribe();
    offer.buttonName = isOwn ? QString() : texts::subscribeTo(offer.title, offer.price);
    offers.push_back(std::move(offer));
  }
  return offers;
}

std::vector<DeviceDisplay> devicesOf(const account::AccountInfo& account, Instant now) {
  std::vector<DeviceDisplay> devices;
  for (const account::AccountDevice& known : account.devices) {
    DeviceDisplay device;
    device.id = known.id;
    device.current = known.current;
    const QString name = known.name.isEmpty() ? texts::unnamedDevice() : known.name;
    device.name = known.current ? name + account::texts::thisDevice() : name;
    device.lastSeen = known.current ? texts::activeNow() : relativeText(ofUnixTime(known.last_seen), now);
    if (!known.current) device.buttonName = texts::signOutNamedDevice(name);
    devices.push_back(std::move(device));
  }
  // This one first, then those seen last.
  std::stable_sort(devices.begin(), devices.end(),
                   [](const DeviceDisplay& a, const DeviceDisplay& b) { return a.current && !b.current; });
  return devices;
}

QString spendLimitOf(const account::AccountInfo& account, Instant now) {
  if (!account.spend_limit) return {};
  const Instant until = ofUnixTime(account.spend_limit->until);
  if (until <= now) return {};
  return account::texts::spendLimit(catalogue::creditsDisplay(account.spend_limit->microcredits),
                                    catalogue::creditsDisplay(account.spend_limit->spent), relativeText(until, now));
}

QString priceText(std::int64_t minor, const QString& currency) {
  const QString code = currency.toUpper();
  const auto* known = std::find_if(std::begin(kSymbols), std::end(kSymbols),
                                   [&](const Symbol& symbol) { return code == QStringView(symbol.code); });
  const bool isKnown = known != std::end(kSymbols);
  const int decimals = isKnown ? known->decimals : 2;
  const double amount = static_cast<double>(minor) / std::pow(10, decimals);
  const bool isWhole = std::floor(amount) == amount;
  const QString number = QLocale().toString(amount, 'f', isWhole && isKnown ? 0 : decimals);
  if (isKnown) return QStringView(known->sign).toString() + number;
  return code.isEmpty() ? number : number + QLatin1Char(' ') + code;
}

QString relativeText(Instant moment, Instant now) {
  const double seconds = moment - now;
  const double distance = std::abs(seconds);
  if (distance < kMinute) return seconds > 0 ? texts::inAMoment() : texts::justNow();
  const auto whole = [](double count) { return static_cast<qint64>(std::floor(count)); };
  const QString time = distance < kHour  ? texts::counted(whole(distance / kMinute), texts::minuteUnit())
                       : distance < kDay ? texts::counted(whole(distance / kHour), texts::hourUnit())
                                         : texts::counted(whole(distance / kDay), texts::dayUnit());
  return seconds > 0 ? texts::inTime(time) : texts::timeAgo(time);
}

}  // namespace sorvan::shell
