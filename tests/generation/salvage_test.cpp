#include "generation/salvage.h"

#include <gtest/gtest.h>

#include "generation/credits_studio.h"

namespace sorvan::generation {
namespace {

using namespace test;
using sorvan::test::runPosted;
using sorvan::test::runTask;
using sorvan::test::runUntil;

const QString locally = QStringLiteral("Cancelled locally; remote processing may still be billed.");
const QString failingUpdates = QStringLiteral(
    "CREATE TRIGGER full BEFORE UPDATE ON GenerationJob WHEN %1 BEGIN SELECT RAISE(ABORT, 'disk full'); END");

void salvageNow(CreditsStudio& studio, const QUuid& id) { runTask(salvage(*studio.queue, id, {})); }

TEST(Salvage, LandsTheResultInTrashAndTells) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  salvageNow(studio, job->id);
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.onDisk(job->id).detail, resultInTrash);
  EXPECT_EQ(studio.store->notice(),
            QStringLiteral("A job you cancelled had already finished, so its credits were spent. The result is in "
                           "Trash: restore it from there if you want it."));
  EXPECT_EQ(studio.provider->posts, 0);
  EXPECT_EQ(studio.balanceLooks, 1);
  EXPECT_TRUE(studio.store->salvaging.isEmpty());
  EXPECT_FALSE(studio.queue->isRunning(job->id));
  EXPECT_FALSE(studio.hasRecoveryFolder(job->id));
}

TEST(Salvage, IsNeverSeenInTheGalleryOrAmongRunningJobs) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  bool wasVisible = false;
  bool wasActive = false;
  bool wasBusy = true;
  QObject::connect(studio.store.get(), &LibraryStore::revisionChanged, [&] {
    for (const AssetRow& row : studio.store->assetRows()) wasVisible = wasVisible || !row.trashed;
    wasActive = wasActive || !studio.store->activeJobs().empty();
    if (job->isActive()) wasBusy = wasBusy && studio.store->isBusy();
  });
  QStringList details;
  studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("post") || event == QStringLiteral("poll")) details << studio.onDisk(job->id).detail;
    EXPECT_TRUE(studio.store->salvaging.contains(job->id));
  };
  salvageNow(studio, job->id);
  EXPECT_FALSE(wasVisible);
  EXPECT_FALSE(wasActive);
  EXPECT_TRUE(wasBusy);
  EXPECT_TRUE(studio.isInTrash(job->id));
}

TEST(Salvage, TellsThatItFetches) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  QString first;
  QObject::connect(studio.store.get(), &LibraryStore::revisionChanged, [&] {
    if (first.isEmpty()) first = job->status + u' ' + job->detail;
  });
  salvageNow(studio, job->id);
  EXPECT_EQ(first, QStringLiteral("queued The model had finished: fetching the result…"));
}

TEST(Salvage, DoesNothingUnlessTheJobIsCancelledAndEmpty) {
  CreditsStudio studio;
  studio.provider->script.holdPoll = false;
  const JobRef complete = studio.finished(promptRequest());
  const JobRef failed = studio.leftBehind(locally);
  studio.store->context().edit(failed).status = jobStatus::failed;
  studio.store->save(LibraryTables::none);
  const auto calls = studio.provider->calls.size();
  salvageNow(studio, complete->id);
  salvageNow(studio, failed->id);
  salvageNow(studio, newUuid());
  EXPECT_EQ(studio.provider->calls.size(), calls);
  EXPECT_FALSE(studio.isInTrash(complete->id));
  EXPECT_EQ(failed->status, QStringLiteral("failed"));
}

TEST(Salvage, DoesNothingDuringABackup) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.store->setBackingUp(true);
  salvageNow(studio, job->id);
  studio.store->setBackingUp(false);
  EXPECT_TRUE(studio.provider->calls.empty());
  EXPECT_EQ(job->detail, locally);
}

TEST(Salvage, WaitsForAPlaceInItsOrderAndGoesBeforeQueuedJobs) {
  CreditsStudio studio;
  const JobRef first = studio.leftBehind(locally);
  const JobRef second = studio.leftBehind(locally);
  studio.provider->script.holdPoll = true;
  studio.runningJob(QStringLiteral("running 1"));
  studio.runningJob(QStringLiteral("running 2"));
  studio.enqueue(promptRequest(QStringLiteral("queued")));
  studio.queue->spawn(salvage(*studio.queue, first->id, studio.queue->stopToken()));
  studio.queue->spawn(salvage(*studio.queue, second->id, studio.queue->stopToken()));
  runPosted();
  EXPECT_EQ(studio.provider->calls.size(), 2U);
  EXPECT_EQ(studio.queue->runningCount(), 2U);
  EXPECT_EQ(first->detail, locally);
  studio.clock->passSleeps();
  studio.clock->advance(std::chrono::seconds(3));
  studio.settle();
  std::vector<std::optional<QUuid>> order;
  for (const ProviderCall& call : studio.provider->calls) order.push_back(call.request.creditRequestID);
  ASSERT_EQ(order.size(), 5U);
  EXPECT_EQ(order[2], first->request()->creditRequestID);
  EXPECT_EQ(order[3], second->request()->creditRequestID);
  EXPECT_EQ(studio.provider->calls[4].request.prompt, QStringLiteral("queued"));
  EXPECT_LE(studio.provider->mostAtWork, 2);
  EXPECT_TRUE(studio.isInTrash(first->id));
  EXPECT_TRUE(studio.isInTrash(second->id));
}

TEST(Salvage, GivesWayToARetryWhileItWaits) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.provider->script.holdPoll = true;
  studio.runningJob(QStringLiteral("running 1"));
  studio.runningJob(QStringLiteral("running 2"));
  studio.queue->spawn(salvage(*studio.queue, job->id, studio.queue->stopToken()));
  runPosted();
  retry(*studio.queue, job->id);
  EXPECT_EQ(job->status, QStringLiteral("queued"));
  studio.clock->passSleeps();
  studio.clock->advance(std::chrono::seconds(3));
  runUntil([&] { return job->status == jobStatus::complete; });
  studio.settle();
  EXPECT_FALSE(studio.isInTrash(job->id));
  EXPECT_EQ(studio.outputsOf(job->id).size(), 1U);
  EXPECT_EQ(studio.provider->calls.size(), 3U);
}

TEST(Salvage, WaitsUntilTheCancelledTaskHasEnded) {
  CreditsStudio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  cancel(*studio.queue, id);
  studio.provider->script.holdPoll = false;
  studio.queue->spawn(salvage(*studio.queue, id, studio.queue->stopToken()));
  runPosted();
  EXPECT_EQ(studio.provider->calls.size(), 1U);
  studio.clock->advance(std::chrono::seconds(6));
  studio.awaitDetail(id, resultInTrash);
  EXPECT_TRUE(studio.isInTrash(id));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Salvage, AskedForTwiceFetchesOnce) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.queue->spawn(salvage(*studio.queue, job->id, studio.queue->stopToken()));
  studio.queue->spawn(salvage(*studio.queue, job->id, studio.queue->stopToken()));
  studio.awaitDetail(job->id, resultInTrash);
  EXPECT_EQ(studio.provider->calls.size(), 1U);
}

TEST(Salvage, ThatCannotFetchCancelsTheJobAgain) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  studio.clock->advance(std::chrono::seconds(100));
  salvageNow(studio, job->id);
  const GenerationJob row = studio.onDisk(job->id);
  EXPECT_EQ(row.status, QStringLiteral("cancelled"));
  EXPECT_EQ(row.detail, resultNotFetched);
  EXPECT_EQ(row.finishedAt, studio.store->now());
  EXPECT_TRUE(studio.store->salvaging.isEmpty());
  EXPECT_FALSE(studio.store->notice());
  studio.queue->pump();
  studio.settle();
  EXPECT_EQ(studio.provider->calls.size(), 1U);
  studio.provider->script.failsAfterHandle = nullptr;
  studio.gateway->states[QStringLiteral("left")] = QStringLiteral("complete");
  studio.settlePass();
  EXPECT_TRUE(studio.isInTrash(job->id));
}

TEST(Salvage, LandsARetainedResultWithoutTheProvider) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  ResultRecovery::save({Script::pictureOutput()}, studio.store->files(), job->id);
  salvageNow(studio, job->id);
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_TRUE(studio.provider->calls.empty());
}

TEST(Salvage, NeitherCoversAProjectNorLaysASoundUnderItsClip) {
  CreditsStudio studio;
  int laid = 0;
  studio.adjustPorts = [&, gateway = studio.gateway](GenerationPorts& ports) {
    gateway->plugInto(ports);
    ports.layUnder = [&](LayUnderWork, std::stop_token) -> Task<QString> {
      ++laid;
      co_return QString();
    };
  };
  studio.startAgain();
  const ProjectRef project = studio.addProject(QStringLiteral("Kites"));
  const JobRef job = studio.leftBehind(locally);
  GenerationRequest request = *job->request();
  request.layUnder = newUuid();
  GenerationJob& edited = studio.store->context().edit(job);
  edited.projectID = project->id;
  edited.requestData = encodeRequest(request);
  studio.store->save(LibraryTables::none);
  salvageNow(studio, job->id);
  runPosted();
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_FALSE(project->coverAssetID);
  EXPECT_EQ(laid, 0);
}

TEST(Salvage, CannotBeCancelledOrRetriedOnItsWay) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.provider->onEvent = [&](const QString& event) {
    if (event != QStringLiteral("poll")) return;
    cancel(*studio.queue, job->id);
    retry(*studio.queue, job->id);
  };
  salvageNow(studio, job->id);
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_FALSE(studio.store->error());
  EXPECT_TRUE(studio.gateway->asked.isEmpty());
}

TEST(Salvage, CutOffByACrashIsLandedByRetryInTheGallery) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.provider->script.holdPoll = true;
  studio.queue->spawn(salvage(*studio.queue, job->id, studio.queue->stopToken()));
  studio.awaitEvent(QStringLiteral("poll"));
  CreditsStudio after(studio, Studio::AfterCrashOf::now);
  EXPECT_EQ(after.job(job->id)->status, QStringLiteral("failed"));
  EXPECT_EQ(after.job(job->id)->detail, QStringLiteral("Interrupted"));
  after.provider->script.holdPoll = false;
  retry(*after.queue, job->id);
  after.settle();
  EXPECT_EQ(after.job(job->id)->status, QStringLiteral("complete"));
  EXPECT_FALSE(after.isInTrash(job->id));
  EXPECT_EQ(after.provider->posts, 0);
}

TEST(Salvage, CutOffBeforeItBeganIsDoneByTheNextPass) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("complete");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("complete");
  const QUuid id = studio.runningJob();
  studio.runningJob(QStringLiteral("another"));
  studio.enqueue(promptRequest(QStringLiteral("third")));
  cancel(*studio.queue, id);
  studio.awaitEvent(QStringLiteral("poll"), 3);
  studio.awaitDetail(id, cancelledCharged);
  ASSERT_TRUE(studio.queue->awaitsPlace(id));
  CreditsStudio after(studio, Studio::AfterCrashOf::now);
  EXPECT_EQ(after.job(id)->detail, cancelledCharged);
  after.provider->script.holdPoll = false;
  after.settlePass();
  EXPECT_TRUE(after.isInTrash(id));
  EXPECT_EQ(after.job(id)->detail, resultInTrash);
}

TEST(Salvage, CutOffByQuittingIsLeftToTheNextSession) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  const QUuid id = job->id;
  studio.provider->script.holdPoll = true;
  studio.queue->spawn(salvage(*studio.queue, id, studio.queue->stopToken()));
  studio.awaitEvent(QStringLiteral("poll"));
  runTask(studio.queue->drain());
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("cancelled"));
  studio.startAgain();
  studio.provider->script.holdPoll = false;
  studio.gateway->states[QStringLiteral("left")] = QStringLiteral("complete");
  studio.settlePass();
  EXPECT_TRUE(studio.isInTrash(id));
}

TEST(Salvage, ThatCannotSaveItsBeginningLeavesTheJobCancelled) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.sql(failingUpdates.arg(QStringLiteral("NEW.status = 'queued'")));
  salvageNow(studio, job->id);
  EXPECT_EQ(job->status, QStringLiteral("cancelled"));
  EXPECT_EQ(job->detail, locally);
  EXPECT_TRUE(studio.store->error()->contains(QStringLiteral("disk full")));
  EXPECT_TRUE(studio.provider->calls.empty());
  EXPECT_FALSE(studio.queue->isRunning(job->id));
  EXPECT_TRUE(studio.store->salvaging.isEmpty());
}

TEST(Salvage, WhoseLastWordsCannotBeSavedStillKeepsTheResultInTrash) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(locally);
  studio.sql(failingUpdates.arg(QStringLiteral("NEW.detail LIKE '%in Trash.'")));
  salvageNow(studio, job->id);
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_EQ(studio.onDisk(job->id).status, QStringLiteral("complete"));
  EXPECT_TRUE(studio.store->error()->contains(QStringLiteral("disk full")));
  EXPECT_FALSE(studio.store->notice());
}

TEST(Salvage, WhoseFailureCannotBeSavedDoesNotSeemToRunForEver) {
  CreditsStudio studio;
  const QUuid id = studio.cancelledWhileRunning();
  studio.settle();
  studio.provider->script.holdPoll = false;
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  studio.sql(failingUpdates.arg(QStringLiteral("NEW.status IN ('failed', 'cancelled')")));
  salvageNow(studio, id);
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  EXPECT_EQ(studio.job(id)->detail, resultNotFetched);
  EXPECT_TRUE(studio.store->hasUnsavedMetadata());
  studio.sql(QStringLiteral("DROP TRIGGER full"));
  studio.store->retryMetadataSave();
  EXPECT_EQ(studio.onDisk(id).detail, resultNotFetched);
  studio.queue->pump();
  EXPECT_EQ(studio.queue->runningCount(), 0U);
}

}  // namespace
}  // namespace sorvan::generation
