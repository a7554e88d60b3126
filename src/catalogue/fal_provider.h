// The provider of requests that are paid with the user's own key: the remote queue of fal.ai.
#pragma once

#include <memory>
#include <vector>

#include "base/clock.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/price_source.h"
#include "generation/provider.h"
#include "platform/http.h"

namespace sorvan::catalogue {

/// What the provider works with. None may be null except `prices`: without it no cost is noted.
struct FalServices {
  std::shared_ptr<HttpTransport> transport;
  std::shared_ptr<const FalCatalog> catalog;
  std::shared_ptr<const Clock> clock;
  std::shared_ptr<PriceSource> prices;
};

/// Keeps no state between calls: all of a request stands in its job and in the handle that `update` stores. A call goes
/// on safely when the provider itself is destroyed. Thread: the main one.
class FalProvider final : public GenerationProvider {
 public:
  explicit FalProvider(FalServices with) : services(std::move(with)) {}

  std::vector<ModelOption> listModels() const override;
  /// Outputs lie as files where the run names them; throws SorvanError, HttpError, SubmissionUnknown, RemoteJobFailed
  /// or Cancelled. A handle that was stored stays good after all of them but RemoteJobFailed.
  Task<std::vector<GeneratedOutput>> generateImage(ProviderCall call, std::stop_token stop) override;
  Task<> cancelJob(RemoteHandle handle, QString key, std::stop_token stop) override;

 private:
  FalServices services;
};

}  // namespace sorvan::catalogue
