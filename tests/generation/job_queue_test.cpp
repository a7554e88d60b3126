#include "generation/job_queue.h"

#include <gtest/gtest.h>

#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

std::vector<QUuid> enqueueNamed(Studio& studio, const QStringList& prompts) {
  std::vector<GenerationRequest> requests;
  for (const QString& prompt : prompts) requests.push_back(promptRequest(prompt));
  return enqueueRequests(*studio.queue, requests, {});
}

TEST(Queue, RunsTwoAtMostAndTheOldestFirst) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  const auto ids =
      enqueueNamed(studio, {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")});
  studio.awaitEvent(QStringLiteral("poll"), 2);
  sorvan::test::runPosted();
  EXPECT_EQ(studio.job(ids[0])->status, QStringLiteral("generating"));
  EXPECT_EQ(studio.job(ids[1])->status, QStringLiteral("generating"));
  EXPECT_EQ(studio.job(ids[2])->status, QStringLiteral("queued"));
  studio.clock->passSleeps();
  studio.clock->advance(std::chrono::seconds(3));
  studio.settle();
  QStringList order;
  for (const ProviderCall& call : studio.provider->calls) order.append(call.request.prompt);
  EXPECT_EQ(order, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")}));
  EXPECT_EQ(studio.provider->mostAtWork, 2);
  for (const QUuid& id : ids) EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
}

TEST(Queue, RunsNothingInsideTheCallThatEnqueues) {
  Studio studio;
  enqueueNamed(studio, {QStringLiteral("1")});
  EXPECT_EQ(studio.queue->runningCount(), 1U);
  EXPECT_TRUE(studio.provider->calls.empty());
  studio.settle();
  EXPECT_EQ(studio.provider->calls.size(), 1U);
}

TEST(Queue, NeverStartsWhatAnEarlierSessionLeft) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  const auto ids = enqueueNamed(studio, {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
  studio.awaitEvent(QStringLiteral("poll"), 2);
  studio.restart();
  studio.queue->pump();
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 2);
  for (const QUuid& id : ids) {
    EXPECT_EQ(studio.job(id)->status, QStringLiteral("failed"));
    EXPECT_EQ(studio.job(id)->detail, QStringLiteral("Interrupted"));
  }
}

TEST(Queue, AJobQueuedAgainWaitsForItsOldTask) {
  Studio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  cancel(*studio.queue, id);
  EXPECT_TRUE(studio.queue->isRunning(id));
  retry(*studio.queue, id);
  EXPECT_EQ(studio.store->error(), QStringLiteral("This job is still stopping. Retry in a moment."));
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("cancelled"));
  studio.clock->advance(std::chrono::seconds(6));
  studio.settle();
  EXPECT_FALSE(studio.queue->isRunning(id));
}

TEST(Queue, TellsWhenAJobEnds) {
  Studio studio;
  std::vector<QUuid> ended;
  QObject::connect(studio.queue.get(), &JobQueue::jobFinished, [&](const QUuid& id) { ended.push_back(id); });
  const QUuid id = studio.enqueue(promptRequest());
  studio.settle();
  EXPECT_EQ(ended, std::vector<QUuid>{id});
}

TEST(Queue, KeepsTheWorkspaceOpenWhileAJobRuns) {
  Studio studio;
  EXPECT_FALSE(studio.store->isBusy());
  studio.enqueue(promptRequest());
  EXPECT_TRUE(studio.store->isBusy());
  studio.settle();
  EXPECT_FALSE(studio.store->isBusy());
}

TEST(ShuttingDown, LeavesARunningJobAsASuddenEndWould) {
  Studio studio;
  studio.provider->script.holdPoll = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("poll"));
  sorvan::test::runTask(studio.queue->drain());
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("generating"));
  EXPECT_TRUE(studio.onDisk(id).remoteHandleData.has_value());
  EXPECT_FALSE(studio.queue->isRunning(id));
}

TEST(ShuttingDown, GivesAPaidSubmissionItsTimeToAnswer) {
  Studio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  const auto drained = studio.queue->drain(std::chrono::seconds(10));
  sorvan::test::runPosted();
  EXPECT_TRUE(studio.queue->isRunning(id));
  studio.clock->advance(std::chrono::seconds(6));
  sorvan::test::runUntil([&] { return drained.isReady(); });
  EXPECT_TRUE(studio.onDisk(id).remoteHandleData.has_value());
  EXPECT_FALSE(studio.hasMarker(id));
}

TEST(ShuttingDown, EndsAfterItsPatienceAndTheMarkerStays) {
  Studio studio;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  const auto drained = studio.queue->drain(std::chrono::seconds(2));
  sorvan::test::runPosted();
  studio.clock->advance(std::chrono::seconds(3));
  sorvan::test::runUntil([&] { return drained.isReady(); });
  EXPECT_TRUE(studio.hasMarker(id));
  EXPECT_FALSE(studio.onDisk(id).remoteHandleData.has_value());
}

TEST(ShuttingDown, StartsNothingMore) {
  Studio studio;
  sorvan::test::runTask(studio.queue->drain());
  studio.enqueue(promptRequest());
  EXPECT_EQ(studio.queue->runningCount(), 0U);
}

}  // namespace
}  // namespace sorvan::generation
