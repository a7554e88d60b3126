// The remote queue: submit once, ask for the state, read the result, cancel.
#pragma once

#include <QJsonObject>

#include <memory>
#include <stop_token>

#include "base/clock.h"
#include "catalogue/provider_http.h"
#include "catalogue/room.h"
#include "core/request_values.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

struct Submission {
  QString endpoint;  ///< model id
  QJsonObject body;
  QString key;
};

/// Sends the one POST that buys, between the announcements that the run asks for, and answers the handle. Cancelling
/// the job never cuts it. Throws ProviderRefusal when the service certainly did not accept it, HttpError's text when it
/// never left, SubmissionUnknown when it may have been accepted.
Task<RemoteHandle> submitOnce(std::shared_ptr<HttpTransport> transport, Submission submission,
                              std::shared_ptr<ProviderRun> run);

/// The handle that an accepting answer holds. An address that is missing or foreign is built from the endpoint and the
/// request id. Throws SorvanError when there is no usable request id.
RemoteHandle handleFrom(const QByteArray& answer, const QString& endpoint);

enum class JobState { queued, running, completed };

/// What the body of a status answer says. Throws as `fetchJobState`.
JobState jobStateFrom(const QByteArray& answer);

/// One question. Throws RemoteJobFailed when the service says that the job failed, SorvanError for an unknown state.
Task<JobState> fetchJobState(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                             std::stop_token stop);

/// The same, riding out up to five failures of the network in a row with growing waits. `rounds` counts the waits.
struct PolledState {
  JobState state = JobState::queued;
  int waits = 0;  ///< rounds used up by waiting out failures
};
Task<PolledState> fetchJobStatePatiently(std::shared_ptr<HttpTransport> transport, std::shared_ptr<const Clock> clock,
                                         RemoteHandle handle, QString key, std::stop_token stop);

struct JobResult {
  QJsonObject body;
  QString billedUnits;  ///< how many units of its price the service billed, as it told; empty when it did not
};

/// The model's own result. Throws RemoteJobFailed when the service answers that there will be none.
Task<JobResult> fetchResult(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                            std::stop_token stop);

/// Asks the service to stop the job. Throws RemoteJobAlreadyComplete when it had finished.
Task<> cancelRemoteJob(std::shared_ptr<HttpTransport> transport, RemoteHandle handle, QString key,
                       std::stop_token stop);

}  // namespace sorvan::catalogue
