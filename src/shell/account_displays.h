// What an account looks like on its page: pure functions from what the gateway told to texts.
#pragma once

#include "account/account_info.h"
#include "base/instant.h"
#include "shell/room.h"

#include <QString>

#include <optional>
#include <vector>

namespace sorvan::shell {

// A part of the balance.
struct BalanceRow {
  QString name;    // “From your plan”
  QString amount;  // “800”
  std::int64_t microcredits = 0;
  bool held = false;  // cannot be spent now
  bool operator==(const BalanceRow&) const = default;
};

struct BalanceDisplay {
  std::int64_t microcredits = 0;  // what can be spent now
  QString plan;                   // “Studio plan · renews 3 December”, or empty
  std::vector<BalanceRow> rows;
  QString foot;
};

enum class OfferKind { pack, plan };

// Credits on sale.
struct OfferDisplay {
  OfferKind kind = OfferKind::pack;
  QString id;
  QString title;       // “500 credits”, or the name of a plan
  QString amount;      // “500”
  QString note;        // of a plan: “1,000 credits each period”
  QString price;       // “$5”; empty where none was told
  QString button;      // empty: it is the user's already
  QString buttonName;  // “Buy 500 credits for $5”
  bool operator==(const OfferDisplay&) const = default;
};

struct DeviceDisplay {
  QString id;
  QString name;      // with “ (this Mac)” behind it
  QString lastSeen;  // “active now”, “2 days ago”
  bool current = false;
  QString buttonName;  // “Sign Out studio-laptop”; empty for the current one
  bool operator==(const DeviceDisplay&) const = default;
};

BalanceDisplay balanceOf(const account::AccountInfo& account);
std::vector<OfferDisplay> packOffers(const std::vector<account::CreditPack>& packs);
std::vector<OfferDisplay> planOffers(const account::AccountInfo& account);
std::vector<DeviceDisplay> devicesOf(const account::AccountInfo& account, Instant now);
// Whether the account has the plan of this offer, and it goes on.
bool hasPlan(const account::AccountInfo& account, const QString& offer);
// Empty without a limit, and when it has lifted.
QString spendLimitOf(const account::AccountInfo& account, Instant now);

// A price in a currency's smallest unit: “$5”, “$4.50”, “€20”, “4.50 CHF”, “¥500”.
QString priceText(std::int64_t minor, const QString& currency);
// “in 9 hours”, “2 days ago”, “just now”.
QString relativeText(Instant moment, Instant now);

}  // namespace sorvan::shell
