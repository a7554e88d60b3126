#include "generation/retry_plan.h"

#include "generation/texts.h"

namespace sorvan::generation {
namespace {

using Plan = RetryPlan;

Plan refusal(const QString& text) {
  Plan plan;
  plan.action = Plan::Action::refuse;
  plan.text = text;
  return plan;
}

/// The service said in this session that the remote job failed for good, and nothing of it is retained here.
bool remoteJobIsDead(const RetryFacts& facts) { return facts.remoteFailure && !facts.hasRecoveryManifest; }

/// Whether money may already have been spent on the remote request, so that it must be kept.
bool mustReconnect(const RetryFacts& facts) {
  if (facts.hasRecoveryManifest) return true;
  if (remoteJobIsDead(facts)) return facts.choice == RetryChoice::stayWithRequest;
  if (facts.interrupted || facts.hasChargeNote || facts.hasHandle) return true;
  return facts.provider == ProviderID::credits && facts.hasProviderRequestID;
}

bool isPayer(ProviderID provider) { return provider == ProviderID::fal || provider == ProviderID::credits; }

/// A new submission may follow a failure that was billed only after the user agreed.
bool needsConfirmation(const RetryFacts& facts, bool reconnect) {
  if (reconnect || !remoteJobIsDead(facts) || facts.confirmation == RetryConfirmation::mayBePaidTwice) return false;
  return facts.hasChargeNote || *facts.remoteFailure == RemoteJobFailed::Billing::perhaps;
}

}  // namespace

RetryPlan planRetry(const RetryFacts& facts) {
  // 1. A job at work is left alone.
  if (facts.status == RetryFacts::Status::active) return Plan{};
  // 2. Its task must have ended.
  if (facts.taskExists) return refusal(texts::stillStopping());
  // 3. A job never leaves "complete", and outputs are never made twice.
  if (facts.hasOutputs || facts.status == RetryFacts::Status::complete) return refusal(texts::alreadySaved());
  // A submission whose answer was lost is never repeated by Retry.
  if (facts.hasSubmissionMarker && !facts.hasHandle && !facts.hasRecoveryManifest)
    return refusal(texts::submissionLost());
  // 4. Is money perhaps spent on the remote request?
  const bool reconnect = mustReconnect(facts);
  Plan plan;
  plan.action = Plan::Action::start;
  if (needsConfirmation(facts, reconnect)) {
    plan.action = Plan::Action::ask;
    plan.text = texts::mayBeChargedTwice();
    return plan;
  }
  ProviderID provider = facts.provider;
  bool hasHandle = facts.hasHandle;
  // 5. Otherwise the user's present choice of payment counts.
  const bool follows = !reconnect && facts.choice == RetryChoice::decide && facts.requestReadable;
  if (follows && isPayer(provider) && provider != facts.payer) {
    provider = facts.payer;
    plan.newProvider = provider;
    plan.creditKey = provider == ProviderID::credits ? Plan::CreditKey::renew : Plan::CreditKey::drop;
    plan.clearHandle = true;
    hasHandle = false;
  }
  // 6. Stay with the remote request, or make a new one.
  const bool decides = facts.choice == RetryChoice::decide;
  const bool dead = remoteJobIsDead(facts) && !reconnect;
  const bool stays = reconnect || facts.choice == RetryChoice::stayWithRequest ||
                     (decides && (provider == ProviderID::credits || (hasHandle && !dead)));
  if (!stays || dead) plan.clearHandle = true;
  if (!stays && provider == ProviderID::credits) plan.creditKey = Plan::CreditKey::renew;
  // 7. A retained result needs no payment.
  plan.checkPayment = !facts.hasRecoveryManifest && facts.requestReadable;
  return plan;
}

}  // namespace sorvan::generation
