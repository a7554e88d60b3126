// The provider of requests that are paid with credits: the gateway buys and holds, and a request is known to it by the
// id that was saved when the request was enqueued.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "catalogue/credits_client.h"
#include "catalogue/fal_catalog.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

/// What the provider works with. None may be empty except where it says so.
struct CreditsServices {
  std::shared_ptr<HttpTransport> transport = {};
  std::shared_ptr<const FalCatalog> catalog = {};
  std::shared_ptr<const Clock> clock = {};
  /// The client for a token. Throws SorvanError when there is no usable gateway.
  std::function<CreditsClient(const QString& token)> client = {};
  /// Who is signed in, by a name that stays when the same account signs in again; nothing when that is not known yet,
  /// and then the gateway is asked.
  std::function<std::optional<QString>()> account = {};
  /// Whether the gateway charges a model by the second. Optional.
  std::function<bool(const QString& model)> isPricedPerSecond = {};
  /// Runs when a hold was made or ended. Optional.
  std::function<void()> creditsChanged = {};
};

/// Keeps no state between calls: what a request has cost and where it stands the gateway knows by its id. A remote handle
/// plays no part. Thread: the main one.
class CreditsImageProvider final : public GenerationProvider {
 public:
  explicit CreditsImageProvider(CreditsServices with) : services(std::move(with)) {}

  std::vector<ModelOption> listModels() const override;
  /// Asks for an earlier submission of the request before it does anything else. Outputs lie as files where the run
  /// names them. Throws SorvanError, GatewayRefusal, HttpError, SubmissionUnknown, RemoteJobFailed or Cancelled; only
  /// after RemoteJobFailed may the request be bought once more, and then under the same id.
  Task<std::vector<GeneratedOutput>> generateImage(ProviderCall call, std::stop_token stop) override;
  /// Operations are cancelled by their own id, so there is nothing that a handle could cancel: throws SorvanError.
  Task<> cancelJob(RemoteHandle handle, QString key, std::stop_token stop) override;

 private:
  CreditsServices services;
};

/// The name of the account that the gateway tells for a client's token. Throws as the client does.
Task<QString> accountName(CreditsClient client, std::stop_token stop);

}  // namespace sorvan::catalogue
