// What the gateway charges for a model, and what a request will come to: pure functions.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include <QJsonObject>
#include <QString>

#include "account/room.h"
#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::account {

/// An option that adds to the rate, or one that takes off it when it is off.
struct PriceExtra {
  QString field;
  double rate = 0;  ///< credits
  bool onByDefault = false;
  bool operator==(const PriceExtra&) const = default;
};

struct CreditPrice {
  std::int64_t credits = 0;  ///< the flat price, rounded up
  QString per;               ///< "image", "second", "megapixel", "character", "byte"
  double rate = 0;           ///< credits for one unit
  std::optional<QString> field;  ///< the option that picks a rate
  std::map<QString, double> rates;  ///< by the option's value in lower case
  bool upTo = false;                ///< the price is a ceiling
  std::optional<double> largeFactor;
  std::optional<QString> largeWhen;
  std::vector<PriceExtra> extras;
  std::optional<double> perImage;  ///< credits for each input picture
  bool operator==(const CreditPrice&) const = default;
};

/// The price that one entry of the gateway's list tells; nothing for one that does not read, or that names an amount
/// which is no price: negative, endless, or beyond what an account could hold.
std::optional<CreditPrice> priceFrom(const QJsonValue& listed);

/// The credits that a request will cost; nothing where that is not known before it runs.
std::optional<std::int64_t> estimatedCredits(const CreditPrice& price, const GenerationRequest& request,
                                             const FalModel& model);

/// The rate for the value of the option that picks one.
double rateFor(const CreditPrice& price, const GenerationRequest& request, const FalModel& model);
/// What the extras of a request add to its rate.
double adjustmentFor(const CreditPrice& price, const GenerationRequest& request, const FalModel& model);
/// Whether a size counts as large.
bool isLarge(const CreditPrice& price, const QString& size);
/// The price in a list of models: "from 4 credits", "up to 12 credits / s".
QString priceLabel(const CreditPrice& price);

}  // namespace sorvan::account
