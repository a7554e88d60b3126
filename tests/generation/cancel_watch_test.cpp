#include "generation/cancel_watch.h"

#include <gtest/gtest.h>

#include "generation/credits_studio.h"

namespace sorvan::generation {
namespace {

using namespace test;
using sorvan::test::runPosted;
using sorvan::test::runUntil;

const QString asked = QStringLiteral("state operation-1");
const QString failDetails =
    QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'disk full'); END");

TEST(CancelWatch, TellsThatTheCreditsAreHeldWhileTheModelRuns) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledHeld);
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("cancelled"));
  EXPECT_EQ(studio.balanceLooks, 1);
  EXPECT_EQ(studio.gateway->asked, QStringList{QStringLiteral("cancel operation-1")});
}

TEST(CancelWatch, TellsThatNothingWasChargedAndLooksNoMore) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("failed");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledFree);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledFree);
  EXPECT_EQ(studio.balanceLooks, 1);
  EXPECT_EQ(studio.clock->sleepers(), 0);
}

TEST(CancelWatch, StopsAfterFortyLooksAndALaterPassTakesTheJobUp) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("running");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  for (int look = 1; look <= 40; ++look) {
    ASSERT_EQ(studio.clock->sleepers(), 1);
    studio.look();
    EXPECT_EQ(studio.gateway->countOf(asked), look);
  }
  EXPECT_EQ(studio.clock->sleepers(), 0);
  studio.look();
  EXPECT_EQ(studio.gateway->countOf(asked), 40);
  EXPECT_EQ(studio.balanceLooks, 1);
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  studio.settlePass();
  EXPECT_EQ(studio.onDisk(id).detail, cancelledFree);
}

TEST(CancelWatch, LooksEveryFifteenSecondsAndNotBefore) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("queued");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.clock->advance(std::chrono::milliseconds(14999));
  runPosted();
  EXPECT_EQ(studio.gateway->countOf(asked), 0);
  studio.clock->advance(std::chrono::milliseconds(1));
  runPosted();
  EXPECT_EQ(studio.gateway->countOf(asked), 1);
}

TEST(CancelWatch, TellsEveryChangeOnce) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("queued");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("running");
  studio.look();
  EXPECT_EQ(studio.balanceLooks, 2);
  studio.look();
  EXPECT_EQ(studio.balanceLooks, 2);
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  studio.look();
  EXPECT_EQ(studio.balanceLooks, 3);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledFree);
  EXPECT_EQ(studio.clock->sleepers(), 0);
}

TEST(CancelWatch, TakesALookThatFailsForNoChange) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.look();
  studio.look();
  EXPECT_EQ(studio.gateway->countOf(asked), 2);
  EXPECT_EQ(studio.job(id)->detail, cancelledHeld);
  EXPECT_EQ(studio.clock->sleepers(), 1);
}

TEST(CancelWatch, EndsWhenTheGatewayCannotBeAskedToStop) {
  CreditsStudio studio;
  const QUuid id = studio.cancelledWhileRunning();
  runUntil([&] { return !studio.gateway->asked.isEmpty(); });
  runPosted();
  EXPECT_EQ(studio.onDisk(id).detail, cancelledLocally);
  EXPECT_EQ(studio.clock->sleepers(), 0);
  EXPECT_EQ(studio.balanceLooks, 0);
}

TEST(CancelWatch, AsksForTheStateAtOnceWhenTheGatewayTellsNone) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QString();
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledFree);
  EXPECT_EQ(studio.gateway->asked, (QStringList{QStringLiteral("cancel operation-1"), asked}));
}

TEST(CancelWatch, KeepsLookingWhenTheStateIsNotKnownAtFirst) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QString();
  const QUuid id = studio.cancelledWhileRunning();
  runUntil([&] { return studio.clock->sleepers() == 1 && studio.gateway->asked.size() == 2; });
  EXPECT_EQ(studio.job(id)->detail, cancelledLocally);
  EXPECT_EQ(studio.balanceLooks, 0);
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  studio.look();
  EXPECT_EQ(studio.onDisk(id).detail, cancelledFree);
}

TEST(CancelWatch, LeavesAStateThatItDoesNotKnowAsHeld) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("uncertain");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("uncertain");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  EXPECT_EQ(studio.clock->sleepers(), 0);
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(asked), 1);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledHeld);
}

TEST(CancelWatch, FetchesTheResultOfAnOperationThatHadFinished) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("complete");
  const QUuid id = studio.runningJob();
  studio.provider->script.holdPoll = false;
  cancel(*studio.queue, id);
  studio.awaitDetail(id, resultInTrash);
  EXPECT_TRUE(studio.isInTrash(id));
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_EQ(studio.balanceLooks, 2);
}

TEST(CancelWatch, FetchesAResultThatComesLate) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("running");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.provider->script.holdPoll = false;
  studio.look();
  studio.look();
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("complete");
  studio.clock->advance(std::chrono::seconds(15));
  studio.awaitDetail(id, resultInTrash);
  EXPECT_TRUE(studio.isInTrash(id));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(CancelWatch, BeginsWhenTheOperationIsToldAfterTheCancellation) {
  CreditsStudio studio;
  studio.provider->script.holdPost = true;
  studio.gateway->cancelReply = QStringLiteral("failed");
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  cancel(*studio.queue, id);
  runPosted();
  EXPECT_TRUE(studio.gateway->asked.isEmpty());
  studio.clock->advance(std::chrono::seconds(6));
  studio.awaitDetail(id, cancelledFree);
  EXPECT_EQ(studio.onDisk(id).providerRequestID, QStringLiteral("operation-1"));
  EXPECT_EQ(studio.gateway->asked, QStringList{QStringLiteral("cancel operation-1")});
}

TEST(CancelWatch, EndsWhenAnotherWorkspaceIsOpened) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("complete");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  const auto left = [&] { return Studio(studio, Studio::AfterCrashOf::now).onDisk(id).detail; };
  openWorkspace(*studio.store, studio.folder / QStringLiteral("another"), Remember::no);
  studio.look();
  EXPECT_EQ(studio.gateway->countOf(asked), 0);
  EXPECT_EQ(studio.clock->sleepers(), 0);
  EXPECT_TRUE(studio.store->jobs().empty());
  EXPECT_EQ(studio.provider->calls.size(), 1U);
  EXPECT_EQ(left(), cancelledHeld);
}

TEST(CancelWatch, WritesNothingWhenTheWorkspaceChangesDuringALook) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.gateway->onAsk = [&](const QString&) {
    openWorkspace(*studio.store, studio.folder / QStringLiteral("another"), Remember::no);
  };
  studio.look();
  EXPECT_EQ(studio.gateway->countOf(asked), 1);
  EXPECT_EQ(studio.balanceLooks, 1);
  EXPECT_FALSE(studio.store->error());
  EXPECT_EQ(Studio(studio, Studio::AfterCrashOf::now).onDisk(id).detail, cancelledHeld);
}

TEST(CancelWatch, EndsWhenTheJobIsTriedAgain) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("failed");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.provider->script.holdPoll = false;
  retry(*studio.queue, id);
  studio.settle();
  studio.look();
  EXPECT_EQ(studio.gateway->countOf(asked), 0);
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.job(id)->detail, QStringLiteral("Saved 1 image locally"));
  EXPECT_FALSE(studio.isInTrash(id));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(CancelWatch, WritesNothingWhenTheJobIsTriedAgainDuringALook) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("complete");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  studio.provider->script.holdPoll = false;
  studio.gateway->onAsk = [&](const QString&) { retry(*studio.queue, id); };
  studio.look();
  runUntil([&] { return studio.job(id)->status == jobStatus::complete; });
  runPosted();
  EXPECT_FALSE(studio.isInTrash(id));
  EXPECT_EQ(studio.outputsOf(id).size(), 1U);
  EXPECT_EQ(studio.balanceLooks, 1);
}

TEST(CancelWatch, OfAJobCancelledTwiceFetchesItsResultOnce) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->states[QStringLiteral("operation-1")] = QStringLiteral("complete");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  retry(*studio.queue, id);
  studio.awaitEvent(QStringLiteral("poll"), 2);
  cancel(*studio.queue, id);
  studio.awaitDetail(id, cancelledHeld);
  studio.provider->script.holdPoll = false;
  studio.clock->advance(std::chrono::seconds(15));
  studio.awaitDetail(id, resultInTrash);
  EXPECT_TRUE(studio.isInTrash(id));
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_EQ(studio.provider->calls.size(), 3U);
}

TEST(CancelWatch, LeavesTheDetailWhenItCannotBeSaved) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.gateway->onAsk = [&](const QString&) { studio.sql(failDetails); };
  const QUuid id = studio.cancelledWhileRunning();
  runUntil([&] { return studio.balanceLooks == 1; });
  EXPECT_EQ(studio.job(id)->detail, cancelledLocally);
  EXPECT_FALSE(studio.store->error());
  studio.sql(QStringLiteral("DROP TRIGGER full"));
}

TEST(CancelWatch, OfAJobThatWasInterruptedBeforeNeverCallsItInterruptedAgain) {
  CreditsStudio studio;
  const QUuid id = studio.runningJob();
  studio.startAgain();
  ASSERT_EQ(studio.job(id)->detail, QStringLiteral("Interrupted"));
  retry(*studio.queue, id);
  studio.awaitEvent(QStringLiteral("poll"), 2);
  cancel(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.onDisk(id).detail, cancelledLocally);
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(CancelWatch, IsNothingForTheUsersOwnKeyNorWithoutAGateway) {
  CreditsStudio studio;
  studio.billing.payWith = PayWith::ownKey;
  studio.provider->script.post = Script::Post::accepted;
  const QUuid own = studio.cancelledWhileRunning();
  studio.settle();
  EXPECT_EQ(studio.job(own)->detail, QStringLiteral("Cancellation requested from provider"));
  EXPECT_TRUE(studio.gateway->asked.isEmpty());
  studio.adjustPorts = {};
  studio.restart();
  studio.billing.payWith = PayWith::credits;
  studio.provider->script.post = Script::Post::operation;
  const QUuid alone = studio.cancelledWhileRunning();
  studio.settle();
  EXPECT_EQ(studio.job(alone)->detail, cancelledLocally);
  EXPECT_EQ(studio.provider->cancelled.size(), 1U);
}

TEST(CancelWatch, EndsWithTheProgram) {
  CreditsStudio studio;
  studio.gateway->cancelReply = QStringLiteral("running");
  const QUuid id = studio.cancelledWhileRunning();
  studio.awaitDetail(id, cancelledHeld);
  sorvan::test::runTask(studio.queue->drain());
  EXPECT_EQ(studio.clock->sleepers(), 0);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledHeld);
}

}  // namespace
}  // namespace sorvan::generation
