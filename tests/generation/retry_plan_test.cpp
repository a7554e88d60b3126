#include "generation/retry_plan.h"

#include <functional>

#include <gtest/gtest.h>

namespace sorvan::generation {
namespace {

using Action = RetryPlan::Action;
using CreditKey = RetryPlan::CreditKey;
using Status = RetryFacts::Status;
using Billing = RemoteJobFailed::Billing;

const std::vector<Status> statuses{Status::active, Status::complete, Status::failed, Status::cancelled};
const std::vector<ProviderID> providers{ProviderID::openAI, ProviderID::fal, ProviderID::credits};
const std::vector<ProviderID> payers{ProviderID::fal, ProviderID::credits};
const std::vector<std::optional<Billing>> failures{std::nullopt, Billing::nothing, Billing::perhaps};
const std::vector<RetryChoice> choices{RetryChoice::decide, RetryChoice::stayWithRequest, RetryChoice::newRequest};
const std::vector<RetryConfirmation> confirmations{RetryConfirmation::none, RetryConfirmation::mayBePaidTwice};

void setFlags(RetryFacts& facts, unsigned bits) {
  facts.taskExists = bits & 1;
  facts.hasOutputs = bits & 2;
  facts.interrupted = bits & 4;
  facts.hasRecoveryManifest = bits & 8;
  facts.hasChargeNote = bits & 16;
  facts.hasHandle = bits & 32;
  facts.hasProviderRequestID = bits & 64;
  facts.hasSubmissionMarker = bits & 128;
  facts.requestReadable = !(bits & 256);
}

/// Visits every combination of the facts.
void forAllFacts(const std::function<void(const RetryFacts&, const RetryPlan&)>& visit) {
  RetryFacts facts;
  int visited = 0;
  for (unsigned bits = 0; bits < 512; ++bits) {
    setFlags(facts, bits);
    for (const Status status : statuses) {
      facts.status = status;
      for (const ProviderID provider : providers)
        for (const ProviderID payer : payers)
          for (const auto& failure : failures)
            for (const RetryChoice choice : choices)
              for (const RetryConfirmation confirmation : confirmations) {
                facts.provider = provider;
                facts.payer = payer;
                facts.remoteFailure = failure;
                facts.choice = choice;
                facts.confirmation = confirmation;
                visit(facts, planRetry(facts));
                ++visited;
              }
    }
  }
  ASSERT_EQ(visited, 512 * 4 * 3 * 2 * 3 * 3 * 2);
}

bool mayReachTheProvider(const RetryPlan& plan) { return plan.action == Action::start; }

RetryFacts failedJob(ProviderID provider = ProviderID::fal) {
  RetryFacts facts;
  facts.provider = provider;
  facts.payer = provider;
  return facts;
}

TEST(RetryPlanForEveryState, StartsNothingThatIsAtWorkStoppingOrSaved) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (facts.status == Status::active) {
      ASSERT_EQ(plan.action, Action::nothing);
    } else if (facts.taskExists || facts.hasOutputs || facts.status == Status::complete) {
      ASSERT_EQ(plan.action, Action::refuse);
      ASSERT_FALSE(plan.text.isEmpty());
    }
  });
}

TEST(RetryPlanForEveryState, NeverRepeatsASubmissionWhoseAnswerWasLost) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (facts.hasSubmissionMarker && !facts.hasHandle && !facts.hasRecoveryManifest)
      ASSERT_FALSE(mayReachTheProvider(plan));
  });
}

TEST(RetryPlanForEveryState, ARetainedResultLandsWithoutPaymentAndWithItsRequestUnchanged) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (!facts.hasRecoveryManifest || plan.action != Action::start) return;
    ASSERT_FALSE(plan.checkPayment);
    ASSERT_FALSE(plan.clearHandle);
    ASSERT_FALSE(plan.newProvider);
    ASSERT_EQ(plan.creditKey, CreditKey::keep);
  });
}

TEST(RetryPlanForEveryState, WhatMayBePaidForKeepsItsRemoteRequestPayerAndKey) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    const bool paidPerhaps = facts.interrupted || facts.hasChargeNote || facts.hasHandle ||
                             (facts.provider == ProviderID::credits && facts.hasProviderRequestID);
    if (!paidPerhaps || facts.remoteFailure || plan.action != Action::start) return;
    ASSERT_FALSE(plan.clearHandle);
    ASSERT_FALSE(plan.newProvider);
    ASSERT_EQ(plan.creditKey, CreditKey::keep);
  });
}

TEST(RetryPlanForEveryState, AFailureThatMayBeBilledIsSubmittedAnewOnlyAfterTheUserAgreed) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (facts.confirmation != RetryConfirmation::none || !facts.remoteFailure) return;
    if (*facts.remoteFailure == Billing::nothing && !facts.hasChargeNote) return;
    if (plan.action == Action::start) ASSERT_FALSE(plan.clearHandle || plan.newProvider);
  });
}

TEST(RetryPlanForEveryState, AFreshKeyOnlyComesWithANewPayerOrAnExplicitNewRequest) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (plan.creditKey != CreditKey::renew) return;
    ASSERT_TRUE(plan.newProvider == ProviderID::credits || facts.choice == RetryChoice::newRequest);
  });
}

TEST(RetryPlanForEveryState, ANewPayerIsTheOneChosenAndForgetsTheOldHandle) {
  forAllFacts([](const RetryFacts& facts, const RetryPlan& plan) {
    if (!plan.newProvider) return;
    ASSERT_EQ(plan.action, Action::start);
    ASSERT_EQ(*plan.newProvider, facts.payer);
    ASSERT_TRUE(plan.clearHandle);
    ASSERT_EQ(facts.choice, RetryChoice::decide);
  });
}

TEST(RetryPlanForEveryState, QuestionsAndRefusalsChangeNothing) {
  forAllFacts([](const RetryFacts&, const RetryPlan& plan) {
    if (plan.action == Action::start) return;
    ASSERT_FALSE(plan.newProvider || plan.clearHandle);
    ASSERT_EQ(plan.creditKey, CreditKey::keep);
  });
}

TEST(RetryPlan, ASubmissionThatFailedBeforeAnythingWasSentFollowsTheChosenPayer) {
  RetryFacts facts = failedJob();
  facts.payer = ProviderID::credits;
  const RetryPlan plan = planRetry(facts);
  EXPECT_EQ(plan.action, Action::start);
  EXPECT_EQ(plan.newProvider, ProviderID::credits);
  EXPECT_EQ(plan.creditKey, CreditKey::renew);
  EXPECT_TRUE(plan.checkPayment);
}

TEST(RetryPlan, ChangingToTheOwnKeyDropsTheCreditsKey) {
  RetryFacts facts = failedJob(ProviderID::credits);
  facts.payer = ProviderID::fal;
  const RetryPlan plan = planRetry(facts);
  EXPECT_EQ(plan.newProvider, ProviderID::fal);
  EXPECT_EQ(plan.creditKey, CreditKey::drop);
}

TEST(RetryPlan, AnInterruptedJobKeepsItsPayerAndCreditsKeyWhateverIsChosenNow) {
  RetryFacts facts = failedJob(ProviderID::credits);
  facts.payer = ProviderID::fal;
  facts.interrupted = true;
  const RetryPlan plan = planRetry(facts);
  EXPECT_EQ(plan.action, Action::start);
  EXPECT_FALSE(plan.newProvider);
  EXPECT_EQ(plan.creditKey, CreditKey::keep);
  EXPECT_FALSE(plan.clearHandle);
}

TEST(RetryPlan, AStoredHandleReconnectsAlsoAfterThePayerChanged) {
  RetryFacts facts = failedJob();
  facts.hasHandle = true;
  facts.payer = ProviderID::credits;
  EXPECT_FALSE(planRetry(facts).clearHandle);
  EXPECT_FALSE(planRetry(facts).newProvider);
}

TEST(RetryPlan, ADeadRemoteJobThatBillsNothingIsSubmittedAnew) {
  RetryFacts facts = failedJob();
  facts.hasHandle = true;
  facts.remoteFailure = Billing::nothing;
  const RetryPlan plan = planRetry(facts);
  EXPECT_EQ(plan.action, Action::start);
  EXPECT_TRUE(plan.clearHandle);
}

TEST(RetryPlan, ADeadRemoteJobThatMayBeBilledAsksFirst) {
  RetryFacts facts = failedJob();
  facts.hasHandle = true;
  facts.remoteFailure = Billing::perhaps;
  const RetryPlan question = planRetry(facts);
  EXPECT_EQ(question.action, Action::ask);
  EXPECT_EQ(question.text, QStringLiteral("fal.ai may have charged for the failed request. Generate again?"));
  facts.confirmation = RetryConfirmation::mayBePaidTwice;
  EXPECT_EQ(planRetry(facts).action, Action::start);
  EXPECT_TRUE(planRetry(facts).clearHandle);
}

TEST(RetryPlan, ADeadCreditsOperationIsSubmittedAnewWithTheSameKey) {
  RetryFacts facts = failedJob(ProviderID::credits);
  facts.hasProviderRequestID = true;
  facts.remoteFailure = Billing::nothing;
  const RetryPlan plan = planRetry(facts);
  EXPECT_TRUE(plan.clearHandle);
  EXPECT_EQ(plan.creditKey, CreditKey::keep);
}

TEST(RetryPlan, AnExplicitNewRequestStillLandsARetainedResult) {
  RetryFacts facts = failedJob();
  facts.hasRecoveryManifest = true;
  facts.hasHandle = true;
  facts.choice = RetryChoice::newRequest;
  EXPECT_FALSE(planRetry(facts).clearHandle);
}

TEST(RetryPlan, AnExplicitNewRequestOfCreditsThatNeverStartedGetsAFreshKey) {
  RetryFacts facts = failedJob(ProviderID::credits);
  facts.choice = RetryChoice::newRequest;
  EXPECT_EQ(planRetry(facts).creditKey, CreditKey::renew);
}

TEST(RetryPlan, TheRefusalsAreTheSettledSentences) {
  RetryFacts stopping = failedJob();
  stopping.taskExists = true;
  EXPECT_EQ(planRetry(stopping).text, QStringLiteral("This job is still stopping. Retry in a moment."));
  RetryFacts saved = failedJob();
  saved.status = Status::complete;
  EXPECT_EQ(planRetry(saved).text,
            QStringLiteral("This job already saved outputs. Create a new generation to run it again."));
  RetryFacts lost = failedJob();
  lost.hasSubmissionMarker = true;
  EXPECT_EQ(planRetry(lost).text,
            QStringLiteral("The answer to this request was lost. fal.ai may have accepted it and may "
                           "charge for it. Check your fal.ai history before generating again."));
}

}  // namespace
}  // namespace sorvan::generation
