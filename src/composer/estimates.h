// What a request would cost, from prices that are known already: pure functions that never call the network.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "composer/intent.h"
#include "composer/selectable_models.h"
#include "core/billing.h"
#include "core/request_values.h"

namespace sorvan::composer {

/// The prices as they are known now. A price that is not known is nothing, never zero.
struct KnownPrices {
  /// US dollars for a request under the user's own key.
  std::function<std::optional<double>(const GenerationRequest&, const FalModel&)> dollars;
  /// Credits for a request.
  std::function<std::optional<std::int64_t>(const GenerationRequest&, const FalModel&)> credits;
  /// Whether the credits of a model are the most that it can cost.
  std::function<bool(const QString& model)> isCeiling;
  /// Whether credits can pay for a model; true also while that is not known.
  std::function<bool(const QString& model)> isSold;
  /// The request told for one of the models.
  std::function<GenerationRequest(const GenerationRequest&, const ComparisonModel&)> forModel;
};

/// What is about to be submitted, and who pays.
struct EstimateInput {
  GenerationRequest request;
  std::optional<std::int64_t> intentCount;  ///< the count of the text, which goes before the request's
  std::vector<SelectableModel> models;
  Billing billing;
};

/// Whether the user's own key pays: chosen, and allowed at all.
bool paysWithOwnKey(const Billing& billing);

/// US dollars under the own key; nothing unless it pays and every model has a price.
std::optional<double> estimatedCost(const EstimateInput& input, const KnownPrices& prices);

struct CreditEstimate {
  std::int64_t credits = 0;
  QStringList unpriced;  ///< names of models without a price, which the sum leaves out
  bool operator==(const CreditEstimate&) const = default;
};
/// Nothing when the own key pays or nothing is chosen.
std::optional<CreditEstimate> creditEstimate(const EstimateInput& input, const KnownPrices& prices);

/// Whether the credits are a maximum that is held until the actual charge is known.
bool heldEstimate(const EstimateInput& input, const KnownPrices& prices);

/// An account's balance in micro-credits; a credit is 1,000,000.
struct AccountBalance {
  std::int64_t available = 0;
  std::int64_t reserved = 0;
};
/// "12.5", or "an unknown number of" while the account is not loaded.
QString balanceText(const std::optional<AccountBalance>& account);

struct Shortfall {
  std::int64_t needed = 0;  ///< credits
  QString balance;          ///< to read
  bool operator==(const Shortfall&) const = default;
};
/// What the account of a signed-in user lacks for the estimate. What is held for running jobs counts as there: it may
/// come back.
std::optional<Shortfall> shortfall(const std::optional<CreditEstimate>& estimate,
                                   const std::optional<AccountBalance>& account);

/// The figure beside the button.
struct PriceLine {
  QString text;
  QString spoken;  ///< for those who do not see the text
  QString tooltip;
  bool operator==(const PriceLine&) const = default;
};
std::optional<PriceLine> priceLine(const EstimateInput& input, const KnownPrices& prices);

}  // namespace sorvan::composer
