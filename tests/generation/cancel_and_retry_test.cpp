#include "generation/cancel_and_retry.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

std::exception_ptr remoteFailure(RemoteJobFailed::Billing billing) {
  return std::make_exception_ptr(RemoteJobFailed(QStringLiteral("The model failed."), billing));
}

TEST(Cancelling, AWaitingJobEndsItAtOnce) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  cancel(*studio.queue, id);
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("cancelled"));
  EXPECT_EQ(studio.onDisk(id).detail, QStringLiteral("Cancelled locally; remote processing may still be billed."));
  studio.settle();
  EXPECT_TRUE(studio.provider->calls.empty());
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
}

TEST(Cancelling, APollingJobStopsItAndAsksTheService) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("poll"));
  cancel(*studio.queue, id);
  studio.settle();
  ASSERT_EQ(studio.provider->cancelled.size(), 1U);
  EXPECT_EQ(studio.provider->cancelled[0], ScriptedProvider::handleNamed(QStringLiteral("remote-1")));
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  EXPECT_FALSE(studio.job(id)->errorMessage);
  EXPECT_EQ(studio.onDisk(id).detail, QStringLiteral("Cancellation requested from provider"));
}

TEST(Cancelling, TellsWhenTheServiceRefusesOrHadFinished) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  studio.provider->cancelFails = std::make_exception_ptr(SorvanError(QStringLiteral("Provider error 500.")));
  const QUuid refused = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("poll"));
  cancel(*studio.queue, refused);
  studio.settle();
  EXPECT_EQ(studio.job(refused)->detail, QStringLiteral("Stopped locally. Remote cancellation: Provider error 500."));
  studio.provider->cancelFails = std::make_exception_ptr(RemoteJobAlreadyComplete(QStringLiteral("done")));
  const QUuid finished = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("poll"), 2);
  cancel(*studio.queue, finished);
  studio.settle();
  EXPECT_EQ(studio.job(finished)->detail,
            QStringLiteral(
                "Stopped locally. The job had already finished; Retry fetches its result without a new purchase."));
}

TEST(Cancelling, DuringTheSubmissionKeepsItsHandleAndAsksTheService) {
  Studio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  cancel(*studio.queue, id);
  sorvan::test::runPosted();
  EXPECT_TRUE(studio.queue->isRunning(id));
  studio.clock->advance(std::chrono::seconds(6));
  studio.settle();
  const GenerationJob row = studio.onDisk(id);
  EXPECT_EQ(row.status, QStringLiteral("cancelled"));
  EXPECT_TRUE(row.remoteHandleData.has_value());
  EXPECT_EQ(row.providerRequestID, QStringLiteral("remote-1"));
  EXPECT_FALSE(studio.hasMarker(id));
  EXPECT_FALSE(studio.provider->events.contains(QStringLiteral("poll")));
  ASSERT_EQ(studio.provider->cancelled.size(), 1U);
  studio.provider->script.holdPost = false;
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Cancelling, DuringASubmissionWhoseAnswerIsLostStillWarns) {
  Studio studio;
  studio.provider->script.holdPost = true;
  studio.provider->script.post = Script::Post::unknown;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  cancel(*studio.queue, id);
  studio.clock->advance(std::chrono::seconds(6));
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  EXPECT_EQ(studio.job(id)->detail, QStringLiteral("Interrupted"));
  EXPECT_TRUE(studio.job(id)->errorMessage->startsWith(QStringLiteral("The answer to this request was lost.")));
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Cancelling, WhenTheResultIsPaidStoresTheChargeAndRetryFetchesIt) {
  Studio studio;
  GenerationCost cost;
  cost.perImageUSD = 0.5;
  studio.provider->script.charge = cost;
  QUuid id;
  studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("poll") && studio.provider->calls.size() == 1) {
      GenerationJob& job = studio.store->context().edit(studio.job(id));
      job.status = jobStatus::cancelled;
      studio.store->save(LibraryTables::none);
    }
  };
  id = studio.enqueue(promptRequest());
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  EXPECT_EQ(studio.store->extraCharges().entries().size(), 1U);
  EXPECT_EQ(studio.job(id)->detail,
            QStringLiteral("Paid result · download needs recovery; Retry does not buy another generation"));
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Cancelling, DuringTheDownloadRetainsWhatWasPaidFor) {
  Studio studio;
  QUuid id;
  studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("download") && studio.provider->calls.size() == 1) cancel(*studio.queue, id);
  };
  id = studio.enqueue(promptRequest());
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  EXPECT_TRUE(hasRecoverableResult(*studio.store, id));
  EXPECT_TRUE(studio.mediaFiles().isEmpty());
  studio.provider->calls.clear();
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_TRUE(studio.provider->calls.empty());
}

TEST(Cancelling, LeavesAJobAloneThatHasEnded) {
  Studio studio;
  const JobRef job = studio.finished(promptRequest());
  cancel(*studio.queue, job->id);
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(job->detail, QStringLiteral("Saved 1 image locally"));
}

TEST(Cancelling, ThatCannotBeSavedIsShown) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("poll"));
  studio.sql(
      QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  cancel(*studio.queue, id);
  ASSERT_TRUE(studio.store->error());
  EXPECT_TRUE(studio.store->error()->contains(QStringLiteral("disk full")));
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("generating"));
  studio.settle();
  studio.sql(QStringLiteral("DROP TRIGGER full"));
}

TEST(Retrying, AJobWithOutputsIsRefused) {
  Studio studio;
  const JobRef job = studio.finished(promptRequest());
  retry(*studio.queue, job->id);
  EXPECT_EQ(studio.store->error(),
            QStringLiteral("This job already saved outputs. Create a new generation to run it again."));
  EXPECT_EQ(job->status, QStringLiteral("complete"));
}

TEST(Retrying, ACompleteJobWhoseOutputsArePurgedIsRefusedToo) {
  Studio studio;
  const JobRef job = studio.finished(promptRequest());
  studio.store->context().remove(studio.store->generationsOf(job->id).front());
  studio.store->save(LibraryTables::all);
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_TRUE(studio.store->error());
}

TEST(Retrying, WithoutPaymentLeavesTheJobAsItWas) {
  Studio studio;
  studio.provider->script.post = Script::Post::notSent;
  const JobRef job = studio.finished(promptRequest());
  const GenerationJob before = studio.onDisk(job->id);
  studio.key.reset();
  retry(*studio.queue, job->id);
  EXPECT_EQ(studio.store->error(),
            QStringLiteral("Add your fal.ai key under Settings → fal.ai Key, or switch Pay With to Sorvan Credits."));
  EXPECT_TRUE(sameFields(studio.onDisk(job->id), before));
  EXPECT_EQ(job->status, QStringLiteral("failed"));
}

TEST(Retrying, AfterAPlainFailureFollowsTheNewPayerWithANewKey) {
  Studio studio;
  studio.provider->script.post = Script::Post::notSent;
  const JobRef job = studio.finished(promptRequest());
  studio.provider->script.post = Script::Post::accepted;
  studio.billing.payWith = PayWith::credits;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->calls.back().request.provider, ProviderID::credits);
  EXPECT_TRUE(studio.provider->calls.back().request.creditRequestID);
}

TEST(Retrying, ADeadRemoteJobThatBilledNothingSubmitsAnew) {
  Studio studio;
  studio.provider->script.failsAfterHandle = remoteFailure(RemoteJobFailed::Billing::nothing);
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->errorMessage, QStringLiteral("The model failed."));
  studio.provider->script.failsAfterHandle = nullptr;
  EXPECT_FALSE(retry(*studio.queue, job->id));
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 2);
  EXPECT_EQ(job->providerRequestID, QStringLiteral("remote-2"));
}

TEST(Retrying, ADeadRemoteJobThatMayBeBilledAsksFirst) {
  Studio studio;
  studio.provider->script.failsAfterHandle = remoteFailure(RemoteJobFailed::Billing::perhaps);
  const JobRef job = studio.finished(promptRequest());
  studio.provider->script.failsAfterHandle = nullptr;
  EXPECT_EQ(retry(*studio.queue, job->id),
            QStringLiteral("fal.ai may have charged for the failed request. Generate again?"));
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_FALSE(retry(*studio.queue, job->id, RetryChoice::decide, RetryConfirmation::mayBePaidTwice));
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 2);
}

TEST(Retrying, ADeadRemoteJobAfterARestartLooksAgainForFree) {
  Studio studio;
  studio.provider->script.failsAfterHandle = remoteFailure(RemoteJobFailed::Billing::nothing);
  const QUuid id = studio.finished(promptRequest())->id;
  studio.restart();
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_TRUE(studio.provider->calls.back().resume);
}

TEST(Retrying, RestartsTheElapsedTime) {
  Studio studio;
  studio.provider->script.post = Script::Post::notSent;
  const JobRef job = studio.finished(promptRequest());
  std::vector<QUuid> restarted;
  QObject::connect(studio.queue.get(), &JobQueue::jobRestarted,
                   [&](const QUuid& id, Instant) { restarted.push_back(id); });
  retry(*studio.queue, job->id);
  EXPECT_EQ(restarted, std::vector<QUuid>{job->id});
  studio.settle();
}

TEST(Retrying, AFailedSaveLeavesTheJobAndWhatOthersKeptInMemory) {
  Studio studio;
  studio.provider->script.post = Script::Post::notSent;
  const JobRef job = studio.finished(promptRequest());
  studio.sql(
      QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_TRUE(studio.store->error()->contains(QStringLiteral("disk full")));
  EXPECT_EQ(studio.provider->posts, 1);
  studio.sql(QStringLiteral("DROP TRIGGER full"));
}

TEST(FailureDetails, ListWhatSupportNeeds) {
  Studio studio;
  studio.adjustPorts = [](GenerationPorts& ports) {
    ports.version = QStringLiteral("1.2");
    ports.build = QStringLiteral("34");
  };
  studio.restart();
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(
      failureDetails(*studio.queue, job->id),
      QStringLiteral("Too slow.\nWaiting for fal.ai\nModel: named fal-ai/flux/schnell\nRequest: remote-1\nJob: ") +
          uuidText(job->id) + QStringLiteral("\nState: failed\nSorvan 1.2 (34)"));
  ResultRecovery::save({Script::pictureOutput()}, studio.store->files(), job->id);
  EXPECT_TRUE(failureDetails(*studio.queue, job->id).contains(QStringLiteral("State: failed, result saved locally\n")));
}

TEST(FailureDetails, OfAJobThatCannotBeReadSayUnknown) {
  Studio studio;
  GenerationJob row({}, promptRequest(), studio.store->now());
  row.requestData = "garbage";
  row.detail.clear();
  const JobRef job = studio.store->context().insert(row);
  studio.store->save(LibraryTables::jobs);
  EXPECT_EQ(failureDetails(*studio.queue, job->id), QStringLiteral("Model: unknown\nRequest: not recorded\nJob: ") +
                                                        uuidText(job->id) +
                                                        QStringLiteral("\nState: queued\nSorvan development"));
}

}  // namespace
}  // namespace sorvan::generation
