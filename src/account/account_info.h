// What the gateway tells of an account, under the names of its wire. Amounts are in microcredits, dates in seconds since
// 1970 unless a field says otherwise.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <QString>
#include <boost/describe.hpp>

#include "account/room.h"
#include "base/json.h"

namespace sorvan::account {

struct AccountCredits {
  std::int64_t included = 0;  ///< from the plan; reset each period
  std::optional<double> included_expires;
  std::int64_t purchased = 0;  ///< from top-ups, which do not expire
  std::int64_t reserved = 0;   ///< held for jobs in progress
  std::optional<std::int64_t> review;  ///< held while a request is checked
  std::int64_t available = 0;
  bool operator==(const AccountCredits&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountCredits, (), (included, included_expires, purchased, reserved, review, available))

/// A plan on offer.
struct AccountPlan {
  QString id;
  QString plan;
  QString title;
  QString currency;
  std::int64_t microcredits = 0;            ///< a period
  std::optional<std::int64_t> price_minor;  ///< in the currency's smallest unit
  bool operator==(const AccountPlan&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountPlan, (), (id, plan, title, currency, microcredits, price_minor))

struct AccountDevice {
  QString id;
  QString name;
  double created = 0;
  double last_seen = 0;
  bool current = false;  ///< this machine
  bool operator==(const AccountDevice&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountDevice, (), (id, name, created, last_seen, current))

struct AccountSpendLimit {
  std::int64_t microcredits = 0;
  std::int64_t spent = 0;
  double until = 0;
  bool operator==(const AccountSpendLimit&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountSpendLimit, (), (microcredits, spent, until))

struct AccountInfo {
  std::optional<QString> email;
  QString plan;
  QString plan_status;
  std::optional<double> period_end;
  bool renews = false;
  std::vector<QString> features;  ///< "byok" lets the user pay with a key of their own
  AccountCredits credits;
  std::vector<AccountPlan> plans;
  std::vector<AccountDevice> devices;
  std::optional<AccountSpendLimit> spend_limit;

  bool hasFeature(const QString& feature) const;
  bool operator==(const AccountInfo&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountInfo, (),
                      (email, plan, plan_status, period_end, renews, features, credits, plans, devices, spend_limit))

/// Credits on sale.
struct CreditPack {
  QString id;
  QString title;
  std::int64_t microcredits = 0;
  std::int64_t price_minor = 0;
  QString currency;
  bool operator==(const CreditPack&) const = default;
};
BOOST_DESCRIBE_STRUCT(CreditPack, (), (id, title, microcredits, price_minor, currency))

struct CreditPacks {
  std::vector<CreditPack> packs;
  bool test_mode = false;
};
BOOST_DESCRIBE_STRUCT(CreditPacks, (), (packs, test_mode))

/// The settings key of the last known account.
inline QString accountSetting() { return QStringLiteral("accountInfo"); }

/// The code of a sign-in link, opened or pasted. Throws SorvanError "This is not a Sorvan sign-in link."
QString signInCode(const QString& link);

/// "500 credits added", by whole credits; nothing for less than one.
std::optional<QString> arrivalText(std::int64_t microcredits);

}  // namespace sorvan::account

namespace sorvan::base {
template <>
struct JsonDefaulted<account::AccountInfo> {
  static constexpr std::array<std::string_view, 6> keys{"plan", "plan_status", "renews", "features", "plans", "devices"};
};
template <>
struct JsonDefaulted<account::CreditPacks> {
  static constexpr std::array<std::string_view, 1> keys{"test_mode"};
};
}  // namespace sorvan::base
