#include "shell/expected_price.h"

#include "composer/estimates.h"
#include "shell/model_prices.h"
#include "shell/payment_desk.h"

namespace sorvan::shell {

QString expectedPrice(const core::GenerationRequest& request, const catalogue::FalModel& model,
                      const ModelPrices& prices, const PaymentDesk& payment) {
  composer::EstimateInput input;
  input.request = request;
  input.request.count = 1;
  input.models.push_back({});
  input.models.front().record = model;
  input.billing = {request.creditRequestID ? core::PayWith::credits : core::PayWith::ownKey, true};
  composer::KnownPrices known;
  known.dollars = [&](const core::GenerationRequest& one, const catalogue::FalModel& of) {
    return prices.estimate(one, of);
  };
  known.credits = [&](const core::GenerationRequest& one, const catalogue::FalModel& of) {
    return payment.credits(one, of);
  };
  known.isCeiling = [&](const QString& id) { return payment.isCeiling(id); };
  known.isSold = [&](const QString& id) { return payment.isSold(id); };
  known.forModel = [](const core::GenerationRequest& one, const composer::ComparisonModel&) { return one; };
  const auto line = composer::priceLine(input, known);
  return line ? line->text : QString();
}

}  // namespace sorvan::shell
