#include "composer/estimates.h"

#include <limits>

#include "composer/interpreter.h"
#include "composer/notice_texts.h"

namespace sorvan::composer {

namespace {

constexpr std::int64_t microcreditsOfCredit = 1'000'000;

GenerationRequest requestOf(const EstimateInput& input, const KnownPrices& prices, const SelectableModel& model) {
  GenerationRequest request = prices.forModel(input.request, model.comparison);
  if (input.intentCount)
    request.count = static_cast<int>(std::clamp<std::int64_t>(*input.intentCount, 1, std::numeric_limits<int>::max()));
  return request;
}

/// A sum that cannot leave the numbers there are.
std::int64_t sum(std::int64_t left, std::int64_t right) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  return right > 0 && left > most - right ? most : left + right;
}

PriceLine creditsLine(const CreditEstimate& estimate, bool isHeld) {
  const QString amount = texts::credits(estimate.credits);
  const QString text = isHeld ? texts::upTo(amount) : amount;
  return {text, text, isHeld ? texts::heldPrice() : texts::creditsPrice()};
}

}  // namespace

bool paysWithOwnKey(const Billing& billing) { return billing.ownKeyAllowed && billing.payWith == PayWith::ownKey; }

std::optional<double> estimatedCost(const EstimateInput& input, const KnownPrices& prices) {
  if (!paysWithOwnKey(input.billing) || input.models.empty()) return std::nullopt;
  double total = 0;
  for (const SelectableModel& model : input.models) {
    const auto cost = prices.dollars(requestOf(input, prices, model), model.record);
    if (!cost) return std::nullopt;
    total += *cost;
  }
  return total;
}

std::optional<CreditEstimate> creditEstimate(const EstimateInput& input, const KnownPrices& prices) {
  if (paysWithOwnKey(input.billing) || input.models.empty()) return std::nullopt;
  CreditEstimate estimate;
  for (const SelectableModel& model : input.models) {
    const auto credits = prices.credits(requestOf(input, prices, model), model.record);
    if (credits) {
      estimate.credits = sum(estimate.credits, *credits);
    } else {
      estimate.unpriced << model.comparison.model.name;
    }
  }
  return estimate;
}

bool heldEstimate(const EstimateInput& input, const KnownPrices& prices) {
  if (paysWithOwnKey(input.billing)) return false;
  return std::any_of(input.models.begin(), input.models.end(),
                     [&](const SelectableModel& model) { return prices.isCeiling(model.record.id); });
}

QString balanceText(const std::optional<AccountBalance>& account) {
  return account ? creditsText(account->available) : texts::unknownBalance();
}

std::optional<Shortfall> shortfall(const std::optional<CreditEstimate>& estimate,
                                   const std::optional<AccountBalance>& account) {
  if (!estimate || !estimate->unpriced.isEmpty() || !account) return std::nullopt;
  const std::int64_t there = sum(account->available, std::max<std::int64_t>(account->reserved, 0));
  // Whole credits on the left: the product on the right could leave the numbers there are.
  const std::int64_t whole = there >= 0 ? there / microcreditsOfCredit : -1;
  if (whole >= estimate->credits) return std::nullopt;
  return Shortfall{estimate->credits, creditsText(account->available)};
}

std::optional<PriceLine> priceLine(const EstimateInput& input, const KnownPrices& prices) {
  if (paysWithOwnKey(input.billing)) {
    const auto cost = estimatedCost(input, prices);
    if (!cost) return std::nullopt;
    return PriceLine{texts::dollars(*cost), texts::dollars(*cost), texts::ownKeyPrice()};
  }
  const auto estimate = creditEstimate(input, prices);
  if (!estimate) return std::nullopt;
  if (estimate->unpriced.isEmpty()) return creditsLine(*estimate, heldEstimate(input, prices));
  if (estimate->credits <= 0) return std::nullopt;
  return PriceLine{texts::creditsAndMore(estimate->credits), texts::creditsOrMore(estimate->credits),
                   texts::unpriced(estimate->unpriced)};
}

}  // namespace sorvan::composer
