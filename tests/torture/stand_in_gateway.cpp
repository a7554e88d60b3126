#include "torture/stand_in_gateway.h"

#include "base/sorvan_error.h"
#include "catalogue/fal_queue.h"

namespace sorvan::torture {

core::RemoteHandle StandInGateway::handleOf(const core::LibraryStore& store, const QString& operation) const {
  if (away) throw base::SorvanError(QStringLiteral("The gateway cannot be asked."));
  for (const core::JobRef& job : store.jobs()) {
    if (job->providerRequestID != operation || !job->remoteHandleData) continue;
    if (const auto handle = core::decodeHandle(*job->remoteHandleData)) return *handle;
  }
  throw base::SorvanError(QStringLiteral("The gateway knows no such operation."));
}

base::Task<QString> StandInGateway::state(core::RemoteHandle handle, std::stop_token stop) {
  try {
    switch (co_await catalogue::fetchJobState(transport_, handle, key_, stop)) {
      case catalogue::JobState::queued: co_return QStringLiteral("queued");
      case catalogue::JobState::running: co_return QStringLiteral("running");
      case catalogue::JobState::completed: co_return QStringLiteral("complete");
    }
  } catch (const generation::RemoteJobFailed&) {
    // It was stopped, or it came to nothing.
  }
  co_return QStringLiteral("failed");
}

base::Task<QString> StandInGateway::cancelled(core::RemoteHandle handle, std::stop_token stop) {
  co_await catalogue::cancelRemoteJob(transport_, handle, key_, stop);
  co_return QString();
}

void StandInGateway::plugInto(generation::GenerationPorts& ports, const core::LibraryStore& store,
                              std::shared_ptr<platform::HttpTransport> transport, const QString& key) {
  transport_ = std::move(transport);
  key_ = key;
  ports.billing = [this] { return core::Billing{pays ? core::PayWith::credits : core::PayWith::ownKey, true}; };
  ports.creditState = [this, &store](QString operation, std::stop_token stop) {
    return state(handleOf(store, operation), stop);
  };
  ports.cancelCredits = [this, &store](QString operation, std::stop_token stop) {
    return cancelled(handleOf(store, operation), stop);
  };
}

}  // namespace sorvan::torture
