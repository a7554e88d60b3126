#include "generation/settle_cancelled.h"

#include <gtest/gtest.h>

#include "generation/credits_studio.h"

namespace sorvan::generation {
namespace {

using namespace test;
using sorvan::test::runPosted;
using sorvan::test::runUntil;

const QString left = QStringLiteral("left");
const QString askedLeft = QStringLiteral("state left");

void answer(CreditsStudio& studio, const QString& state, const QString& operation = left) {
  studio.gateway->states[operation] = state;
}

TEST(SettlingCancelledJobs, FetchesWhatWasChargedIntoTrash) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("complete"));
  studio.settlePass();
  EXPECT_TRUE(studio.isInTrash(job->id));
  EXPECT_EQ(studio.onDisk(job->id).detail, resultInTrash);
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(SettlingCancelledJobs, TellsThatNothingWasCharged) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("failed"));
  studio.settlePass();
  EXPECT_EQ(studio.onDisk(job->id).detail, cancelledFree);
  EXPECT_EQ(studio.balanceLooks, 1);
}

TEST(SettlingCancelledJobs, LeavesEverythingElseForLater) {
  for (const QString& state : {QStringLiteral("running"), QStringLiteral("queued"), QStringLiteral("uncertain"),
                               QStringLiteral("something new"), QString()}) {
    CreditsStudio studio;
    const JobRef job = studio.leftBehind(cancelledLocally);
    answer(studio, state);
    studio.settlePass();
    EXPECT_EQ(studio.onDisk(job->id).detail, cancelledLocally) << state.toStdString();
    EXPECT_EQ(studio.balanceLooks, 0);
    EXPECT_EQ(studio.gateway->asked, QStringList{askedLeft});
  }
}

TEST(SettlingCancelledJobs, AsksOnlyWhereTheFateIsOpen) {
  const QStringList open{cancelledHeld,
                         cancelledLocally,
                         QStringLiteral("Cancelled locally"),
                         QStringLiteral("Cancellation requested from provider"),
                         QStringLiteral("Stopped locally. Remote cancellation: down"),
                         cancelledCharged,
                         resultNotFetched,
                         QStringLiteral("Interrupted")};
  const QStringList closed{cancelledFree, resultInTrash, QString(),
                           QStringLiteral("Result retained locally · Save Result or Save Raw Result"),
                           QStringLiteral("Not Cancelled locally")};
  for (const QString& detail : open + closed) {
    CreditsStudio studio;
    studio.leftBehind(detail);
    answer(studio, QStringLiteral("running"));
    studio.settlePass();
    EXPECT_EQ(studio.gateway->countOf(askedLeft), open.contains(detail) ? 1 : 0) << detail.toStdString();
  }
}

TEST(SettlingCancelledJobs, AsksForSevenDays) {
  CreditsStudio studio;
  studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("running"));
  studio.clock->advance(std::chrono::seconds(604799));
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(askedLeft), 1);
  studio.clock->advance(std::chrono::seconds(1));
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(askedLeft), 1);
}

TEST(SettlingCancelledJobs, CountsFromTheCreationWithoutAnEnd) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("running"));
  studio.store->context().edit(job).finishedAt.reset();
  studio.store->save(LibraryTables::none);
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(askedLeft), 1);
  studio.store->context().edit(job).createdAt = studio.store->now() - 604800;
  studio.store->save(LibraryTables::none);
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(askedLeft), 1);
}

TEST(SettlingCancelledJobs, LeavesOtherPayersOtherStatesAndJobsWithOutputsAlone) {
  CreditsStudio studio;
  answer(studio, QStringLiteral("complete"));
  answer(studio, QStringLiteral("complete"), QStringLiteral("operation-1"));
  studio.leftBehind(cancelledLocally, left, ProviderID::fal);
  const JobRef failed = studio.leftBehind(cancelledLocally);
  const JobRef landed = studio.finished(promptRequest());
  studio.store->context().edit(failed).status = jobStatus::failed;
  studio.store->context().edit(landed).status = jobStatus::cancelled;
  studio.store->context().edit(landed).detail = cancelledLocally;
  studio.store->save(LibraryTables::none);
  studio.settlePass();
  EXPECT_TRUE(studio.gateway->asked.isEmpty());
}

TEST(SettlingCancelledJobs, SkipsAJobThatCannotBeAskedAndGoesOn) {
  CreditsStudio studio;
  const JobRef unreachable = studio.leftBehind(cancelledHeld, QStringLiteral("unreachable"));
  const JobRef other = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("failed"));
  studio.settlePass();
  EXPECT_EQ(unreachable->detail, cancelledHeld);
  EXPECT_EQ(other->detail, cancelledFree);
  answer(studio, QStringLiteral("failed"), QStringLiteral("unreachable"));
  studio.settlePass();
  EXPECT_EQ(unreachable->detail, cancelledFree);
}

TEST(SettlingCancelledJobs, GoesOneByOneAndOnlyOnceAtATime) {
  CreditsStudio studio;
  studio.leftBehind(cancelledHeld, QStringLiteral("first"));
  studio.clock->advance(std::chrono::seconds(1));
  studio.leftBehind(cancelledHeld, QStringLiteral("second"));
  answer(studio, QStringLiteral("running"), QStringLiteral("first"));
  answer(studio, QStringLiteral("running"), QStringLiteral("second"));
  const Completion held;
  studio.gateway->heldBack = held;
  startSettling(*studio.queue);
  runPosted();
  EXPECT_EQ(studio.gateway->asked, QStringList{QStringLiteral("state first")});
  EXPECT_TRUE(studio.queue->isSettling());
  EXPECT_TRUE(studio.store->isBusy());
  startSettling(*studio.queue);
  runPosted();
  EXPECT_EQ(studio.gateway->asked.size(), 1);
  held.finish();
  runUntil([&] { return !studio.queue->isSettling(); });
  EXPECT_EQ(studio.gateway->asked, (QStringList{QStringLiteral("state first"), QStringLiteral("state second")}));
  EXPECT_FALSE(studio.store->isBusy());
}

TEST(SettlingCancelledJobs, IsNoWorkWithoutCandidates) {
  CreditsStudio studio;
  startSettling(*studio.queue);
  EXPECT_FALSE(studio.queue->isSettling());
  EXPECT_FALSE(studio.store->isBusy());
}

TEST(SettlingCancelledJobs, WaitsForTheEndOfABackup) {
  CreditsStudio studio;
  studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("failed"));
  studio.store->setBackingUp(true);
  studio.settlePass();
  EXPECT_TRUE(studio.gateway->asked.isEmpty());
  studio.store->setBackingUp(false);
  studio.settlePass();
  EXPECT_EQ(studio.gateway->asked.size(), 1);
}

TEST(SettlingCancelledJobs, WritesNothingForAJobThatWasTriedAgainMeanwhile) {
  for (const QString& state : {QStringLiteral("complete"), QStringLiteral("failed")}) {
    CreditsStudio studio;
    const JobRef job = studio.leftBehind(cancelledHeld);
    answer(studio, state);
    studio.gateway->onAsk = [&](const QString&) { retry(*studio.queue, job->id); };
    studio.settlePass();
    studio.settle();
    EXPECT_EQ(job->status, QStringLiteral("complete"));
    EXPECT_EQ(job->detail, QStringLiteral("Saved 1 image locally"));
    EXPECT_FALSE(studio.isInTrash(job->id));
    EXPECT_EQ(studio.balanceLooks, 0);
  }
}

TEST(SettlingCancelledJobs, LeavesAJobAloneThatWentDuringTheQuestion) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("complete"));
  studio.gateway->onAsk = [&](const QString&) {
    studio.store->context().remove(job);
    studio.store->save(LibraryTables::jobs);
  };
  studio.settlePass();
  EXPECT_TRUE(studio.provider->calls.empty());
  EXPECT_FALSE(studio.store->error());
}

TEST(SettlingCancelledJobs, StopsForABackupThatBeginsMeanwhile) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("failed"));
  studio.gateway->onAsk = [&](const QString&) { studio.store->setBackingUp(true); };
  studio.settlePass();
  studio.store->setBackingUp(false);
  EXPECT_EQ(job->detail, cancelledHeld);
  EXPECT_FALSE(studio.store->error());
}

TEST(SettlingCancelledJobs, ShowsASaveThatFails) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledHeld);
  answer(studio, QStringLiteral("failed"));
  studio.sql(
      QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  studio.settlePass();
  EXPECT_TRUE(studio.store->error()->contains(QStringLiteral("disk full")));
  EXPECT_EQ(job->detail, cancelledHeld);
  EXPECT_EQ(studio.balanceLooks, 0);
}

TEST(SettlingCancelledJobs, LooksUpARequestWhoseOperationWasNeverToldAndStopsIt) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(QStringLiteral("Interrupted"), QString());
  studio.gateway->operations[*job->request()->creditRequestID] = {QStringLiteral("found"), QStringLiteral("running")};
  studio.gateway->cancelReply = QStringLiteral("running");
  studio.settlePass();
  EXPECT_EQ(studio.gateway->asked, (QStringList{QStringLiteral("look up"), QStringLiteral("cancel found")}));
  EXPECT_EQ(studio.onDisk(job->id).providerRequestID, QStringLiteral("found"));
  EXPECT_EQ(studio.onDisk(job->id).detail, cancelledHeld);
  answer(studio, QStringLiteral("failed"), QStringLiteral("found"));
  studio.settlePass();
  EXPECT_EQ(studio.onDisk(job->id).detail, cancelledFree);
}

TEST(SettlingCancelledJobs, SettlesWhatItLookedUpByItsState) {
  struct Case {
    QString found;
    std::optional<QString> cancelReply;
    QString state;
    QString detail;
    bool isCancelled;
  };
  const QString complete = QStringLiteral("complete");
  const QString failed = QStringLiteral("failed");
  const QString running = QStringLiteral("running");
  const std::vector<Case> cases{{complete, {}, {}, resultInTrash, false},
                                {failed, {}, {}, cancelledFree, false},
                                {QStringLiteral("uncertain"), {}, {}, cancelledLocally, false},
                                {running, failed, {}, cancelledFree, true},
                                {running, complete, {}, resultInTrash, true},
                                {running, QString(), failed, cancelledFree, true},
                                {running, QString(), {}, cancelledHeld, true},
                                {running, {}, {}, cancelledLocally, true}};
  for (const Case& one : cases) {
    CreditsStudio studio;
    const JobRef job = studio.leftBehind(cancelledLocally, QString());
    studio.provider->operations[*job->request()->creditRequestID] = QStringLiteral("found");
    studio.gateway->operations[*job->request()->creditRequestID] = {QStringLiteral("found"), one.found};
    studio.gateway->cancelReply = one.cancelReply;
    if (!one.state.isEmpty()) answer(studio, one.state, QStringLiteral("found"));
    studio.settlePass();
    EXPECT_EQ(studio.onDisk(job->id).detail, one.detail) << one.found.toStdString();
    EXPECT_EQ(studio.onDisk(job->id).providerRequestID, QStringLiteral("found"));
    EXPECT_EQ(studio.gateway->countOf(QStringLiteral("cancel found")), one.isCancelled ? 1 : 0);
  }
}

TEST(SettlingCancelledJobs, AsksOnceASessionForARequestThatTheGatewayNeverSaw) {
  CreditsStudio studio;
  const QUuid id = studio.leftBehind(cancelledLocally, QString())->id;
  studio.gateway->lookUpFails = true;
  studio.settlePass();
  studio.gateway->lookUpFails = false;
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(QStringLiteral("look up")), 2);
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(QStringLiteral("look up")), 2);
  EXPECT_EQ(studio.onDisk(id).detail, cancelledLocally);
  studio.startAgain();
  studio.settlePass();
  EXPECT_EQ(studio.gateway->countOf(QStringLiteral("look up")), 3);
}

TEST(SettlingCancelledJobs, NotesNoOperationForAJobThatWasTriedAgainDuringTheLookUp) {
  CreditsStudio studio;
  const JobRef job = studio.leftBehind(cancelledLocally, QString());
  studio.provider->operations[*job->request()->creditRequestID] = QStringLiteral("told");
  studio.gateway->operations[*job->request()->creditRequestID] = {QStringLiteral("found"), QStringLiteral("running")};
  studio.gateway->onAsk = [&](const QString&) { retry(*studio.queue, job->id); };
  studio.settlePass();
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.onDisk(job->id).providerRequestID, QStringLiteral("told"));
  EXPECT_EQ(studio.gateway->asked, QStringList{QStringLiteral("look up")});
}

TEST(SettlingCancelledJobs, FollowsASubmissionWhoseAnswerWasLost) {
  CreditsStudio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  CreditsStudio after(studio, Studio::AfterCrashOf::now);
  GenerationJob& job = after.store->context().edit(after.job(id));
  job.status = jobStatus::cancelled;
  after.store->save(LibraryTables::none);
  after.gateway->operations[*after.job(id)->request()->creditRequestID] = {QStringLiteral("operation-1"),
                                                                           QStringLiteral("complete")};
  after.provider->script = Script();
  after.provider->script.post = Script::Post::operation;
  after.settlePass();
  EXPECT_TRUE(after.isInTrash(id));
  EXPECT_EQ(after.provider->posts, 1);
}

}  // namespace
}  // namespace sorvan::generation
