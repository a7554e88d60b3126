// The list prices of fal.ai's models, asked for with the user's own key.
#pragma once

#include <QStringList>

#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "base/clock.h"
#include "base/settings.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/list_price.h"
#include "catalogue/price_source.h"
#include "platform/http.h"

namespace sorvan::catalogue {

/// Prices stand under the settings key "falPrices"; a text of it that does not read counts as none. When each was asked
/// for is kept in memory only, so a model's price is asked for once more after each start, and then once a day.
///
/// Thread: `refresh` and `listedPrice` on that of the settings, everything else on any. The lock is never held across a
/// call to the network or a write.
class FalPricing final : public PriceSource {
 public:
  struct Services {
    std::shared_ptr<HttpTransport> transport;
    std::shared_ptr<const FalCatalog> catalog;
    std::shared_ptr<const Clock> clock;
    std::shared_ptr<Settings> settings;
  };
  explicit FalPricing(Services with);

  /// Brings the prices of these models up to date. Never throws: a price is an extra. What fails leaves the old prices,
  /// and the next call asks again.
  Task<> refresh(QStringList ids, QString key, std::stop_token stop);

  std::optional<ModelPrice> price(const QString& id) const;
  /// US dollars for the whole request, by the price that is known now.
  std::optional<double> estimate(const GenerationRequest& request, const FalModel& model) const;

  Task<std::optional<ListedPrice>> listedPrice(GenerationRequest request, QString key, std::stop_token stop) override;

 private:
  struct State;
  std::shared_ptr<State> state;
};

}  // namespace sorvan::catalogue
