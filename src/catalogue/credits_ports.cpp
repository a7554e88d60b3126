#include "catalogue/credits_ports.h"

#include "base/ids.h"

namespace sorvan::catalogue {

namespace {

using MakeClient = std::function<CreditsClient()>;

Task<QString> cancelledState(MakeClient makeClient, QString operation, std::stop_token stop) {
  const CreditsClient client = makeClient();
  const auto told = co_await client.cancel(operation, stop);
  co_return told ? told->state : QString();
}

Task<QString> presentState(MakeClient makeClient, QString operation, std::stop_token stop) {
  const CreditsClient client = makeClient();
  const CreditsOperation told = co_await client.operation(operation, stop);
  co_return QString(told.state);
}

Task<std::optional<CreditsOperationState>> foundOperation(MakeClient makeClient, QUuid request, std::stop_token stop) {
  const CreditsClient client = makeClient();
  const auto found = co_await client.existing(uuidText(request), stop);
  if (!found) co_return std::nullopt;
  co_return CreditsOperationState{found->id, found->state};
}

}  // namespace

void plugCredits(GenerationPorts& ports, MakeClient client) {
  ports.cancelCredits = [client](QString operation, std::stop_token stop) {
    return cancelledState(client, std::move(operation), std::move(stop));
  };
  ports.creditState = [client](QString operation, std::stop_token stop) {
    return presentState(client, std::move(operation), std::move(stop));
  };
  ports.existingCredits = [client](QUuid request, std::stop_token stop) {
    return foundOperation(client, request, std::move(stop));
  };
}

}  // namespace sorvan::catalogue
