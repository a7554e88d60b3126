// What a back end that generates media must offer, and what it is offered while it works.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <boost/describe.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include "base/sorvan_error.h"
#include "base/task.h"
#include "core/records.h"
#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// One model that a provider offers.
struct ModelOption {
  QString id;
  QString name;
  bool supportsReferences = false;
  MediaType mediaType = MediaType::image;
  int maxCount = 1;       ///< outputs per request
  int maxReferences = 0;  ///< 0 or less: no limit of its own
  bool requiresReference = false;
  std::optional<QStringList> ratios;  ///< allowed ratios such as "16:9"; absent means any
  bool needsPrompt = true;
  bool supportsEndFrame = false;
  bool operator==(const ModelOption&) const = default;
};

/// A model together with who runs it: one column of a comparison.
struct ComparisonModel {
  ProviderID provider = ProviderID::fal;
  ModelOption model;
  bool operator==(const ComparisonModel&) const = default;
};

/// A file on this machine that a provider is to send along, absolute path.
struct ReferenceInput {
  QString file;
  bool operator==(const ReferenceInput&) const = default;
};

/// One finished output. The bytes stand either in `data` or in `file`, never in both: large media are streamed to the
/// path that `ProviderRun::partFile` names, so that a clip is never held in memory as a whole.
struct GeneratedOutput {
  QByteArray data;
  QString file;  ///< absolute path inside the job's recovery folder; empty when the bytes are in `data`
  QString ext;   ///< file extension without a point
  std::optional<std::int64_t> seed;
  std::optional<GenerationCost> cost;
  std::optional<QString> label;  ///< the part's name when a sound was split
};

/// One progress event.
struct ProviderUpdate {
  QString message;                       ///< becomes the job's detail
  std::optional<RemoteHandle> handle;    ///< set once the remote job exists
  std::optional<QString> requestID;      ///< the remote identifier
  std::optional<GenerationCost> charge;  ///< the request has been paid for: nothing may lose this fact from here on
};

/// Thrown when a request may have been accepted although no answer says so: it must never be sent again blindly.
class SubmissionUnknown : public SorvanError {
 public:
  using SorvanError::SorvanError;
};

/// Thrown when the service itself says that the remote job failed for good: its handle leads nowhere any more.
class RemoteJobFailed : public SorvanError {
 public:
  enum class Billing { nothing, perhaps };
  RemoteJobFailed(const QString& message, Billing billing) : SorvanError(message), m_billing(billing) {}
  /// Whether the service is known to bill nothing for the failed job.
  Billing billing() const { return m_billing; }

 private:
  Billing m_billing;
};

/// Thrown by `cancelJob` when the service had finished the job already.
class RemoteJobAlreadyComplete : public SorvanError {
 public:
  using SorvanError::SorvanError;
};

/// Through which gateway, for whose account and under which id a request went out: what it takes to tell whether the
/// gateway that is asked now could know it.
struct GatewayTrace {
  QString gateway;  ///< the address
  QString account;
  QString requestID;
  bool operator==(const GatewayTrace&) const = default;
};
BOOST_DESCRIBE_STRUCT(GatewayTrace, (), (gateway, account, requestID))

/// What a run offers to its provider. All calls come on the main thread; the object outlives the provider's call.
///
/// The order that a provider keeps when it submits under the user's own key:
///   1. `co_await run->aboutToSubmit()`: a marker is on the disk; throws when it could not be written, or when the
///      job was cancelled meanwhile, and then nothing may be sent;
///   2. the POST, with `submissionStop()` as its stop token: cancelling the job never cuts it, only the end of the
///      program's patience at shutdown does;
///   3. the answer: `co_await run->update({… handle, requestID …})` when the service accepted, also after a
///      cancellation; `co_await run->notSubmitted()` and then the error when it certainly was not accepted; else
///      throw `SubmissionUnknown` and leave the marker standing.
/// A submission that carries an idempotency key uses `aboutToSubmitThrough` and `notSubmittedThrough` in their place, and
/// the same token: the gateway itself can be asked what became of it.
class ProviderRun {
 public:
  virtual ~ProviderRun() = default;

  /// Stores the update durably before it returns. Throws `Cancelled` when the job was cancelled, gone, and the
  /// database's error when the handle could not be saved; the provider lets that end its call.
  virtual Task<> update(ProviderUpdate update) = 0;

  /// Notes durably that a POST which may be charged is about to leave. See the order above.
  virtual Task<> aboutToSubmit() = 0;

  /// Says that the POST announced by `aboutToSubmit` was certainly not accepted; the marker goes.
  virtual Task<> notSubmitted() = 0;

  /// The way that an earlier submission of this job went out, if one did. Throws SorvanError when it was noted and
  /// cannot be read: then nothing may be sent.
  virtual std::optional<GatewayTrace> sentThrough() const = 0;

  /// Notes durably that a POST is about to leave this way. Throws as `aboutToSubmit`.
  virtual Task<> aboutToSubmitThrough(GatewayTrace trace) = 0;

  /// Says that the POST announced by `aboutToSubmitThrough` was certainly not accepted, and none was before it.
  virtual Task<> notSubmittedThrough() = 0;

  /// The stop token of a POST that may be charged.
  virtual std::stop_token submissionStop() const = 0;

  /// Absolute path where the bytes of output `index` (from 0) are to be streamed. Its folder exists. The file is the
  /// provider's until the call returns; the runner renames it into the retained result.
  virtual QString partFile(int index) = 0;
};

/// Everything one call of a provider needs, by value.
struct ProviderCall {
  GenerationRequest request;
  std::vector<ReferenceInput> references;
  std::optional<QString> key;
  std::optional<RemoteHandle> resume;  ///< attach to this remote job; never submit
  /// The remote identifier that an earlier run was told, if any: the service has seen the request.
  std::optional<QString> knownRequestID = {};
  std::shared_ptr<ProviderRun> run;
};

/// A back end. Its calls are made on the main thread, and it may be asked for several jobs at once.
class GenerationProvider {
 public:
  virtual ~GenerationProvider() = default;

  /// The models on offer. Immediate, no network.
  virtual std::vector<ModelOption> listModels() const = 0;

  /// Generates media of any kind. Without `resume` it submits; with it, it only attaches and polls. It reports the
  /// handle before it polls, and a charge before it downloads. Stopping ends the call promptly with `Cancelled`,
  /// except that a submission under way is finished and its answer reported first.
  virtual Task<std::vector<GeneratedOutput>> generateImage(ProviderCall call, std::stop_token stop) = 0;

  /// Asks the service to stop a remote job. Throws RemoteJobAlreadyComplete when it had finished before.
  virtual Task<> cancelJob(RemoteHandle handle, QString key, std::stop_token stop) = 0;
};

/// Stands for a provider that no longer exists: lists nothing and refuses with a sentence.
class RetiredProvider final : public GenerationProvider {
 public:
  std::vector<ModelOption> listModels() const override;
  Task<std::vector<GeneratedOutput>> generateImage(ProviderCall call, std::stop_token stop) override;
  Task<> cancelJob(RemoteHandle handle, QString key, std::stop_token stop) override;
};

}  // namespace sorvan::generation
