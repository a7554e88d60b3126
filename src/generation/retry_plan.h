// The decision of Retry as a pure function: what happens to a job's request, handle and payer.
#pragma once

#include <QString>

#include <optional>

#include "core/request_values.h"
#include "generation/provider.h"

namespace sorvan::generation {

/// What the caller asks of Retry: decide by the job's state, stay with the remote request, or make a fresh request.
enum class RetryChoice { decide, stayWithRequest, newRequest };

/// Whether the user has agreed to something that may be paid twice.
enum class RetryConfirmation { none, mayBePaidTwice };

/// Everything the decision depends on.
struct RetryFacts {
  enum class Status { active, complete, failed, cancelled } status = Status::failed;
  bool taskExists = false;
  bool hasOutputs = false;
  bool interrupted = false;  ///< the job's detail is "Interrupted"
  bool hasRecoveryManifest = false;
  bool hasChargeNote = false;
  bool hasHandle = false;  ///< a remote handle is stored and can be read
  bool hasProviderRequestID = false;
  bool hasSubmissionMarker = false;  ///< a POST of an own-key request left and nothing is known of it
  bool requestReadable = true;
  ProviderID provider = ProviderID::fal;
  ProviderID payer = ProviderID::fal;                     ///< what the user pays with at present: fal or credits
  std::optional<RemoteJobFailed::Billing> remoteFailure;  ///< of the last run in this session
  RetryChoice choice = RetryChoice::decide;
  RetryConfirmation confirmation = RetryConfirmation::none;
  bool operator==(const RetryFacts&) const = default;
};

/// What Retry is to do.
struct RetryPlan {
  enum class Action {
    nothing,  ///< the job is at work
    refuse,   ///< show `text`
    ask,      ///< ask `text` first
    start     ///< carry out the changes below and queue the job
  } action = Action::nothing;
  QString text;
  std::optional<ProviderID> newProvider;  ///< rewrite the payer
  bool clearHandle = false;               ///< forget the remote handle and request id
  enum class CreditKey { keep, renew, drop } creditKey = CreditKey::keep;
  bool checkPayment = true;
  bool operator==(const RetryPlan&) const = default;
};

/// Decides. Pure and total.
RetryPlan planRetry(const RetryFacts& facts);

}  // namespace sorvan::generation
