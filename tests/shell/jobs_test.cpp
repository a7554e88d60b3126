#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/ids.h"
#include "desk.h"
#include "generation/result_recovery.h"

namespace sorvan::shell {
namespace {

struct JobsTest : testing::Test {
  test::Desk desk;
  QUuid fail(const QString& prompt) {
    desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
    desk.generate(prompt);
    desk.settle();
    desk.provider->failure = nullptr;
    return desk.newestJob()->id;
  }
  QUuid loseSubmission() {
    desk.provider->failAfterPost = true;
    desk.provider->failure = std::make_exception_ptr(generation::SubmissionUnknown(QStringLiteral("Lost.")));
    desk.generate(QStringLiteral("a red boat"));
    desk.settle();
    desk.provider->failure = nullptr;
    desk.provider->failAfterPost = false;
    return desk.newestJob()->id;
  }
};

TEST_F(JobsTest, GroupsWhatRunsWhatToLookAtAndTheRestByDay) {
  fail(QStringLiteral("one"));
  desk.generate(QStringLiteral("two"));
  desk.settle();
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("three"));
  ASSERT_EQ(desk.jobs.groups().size(), 3u);
  EXPECT_EQ(desk.jobs.groups()[0].title, QStringLiteral("In progress"));
  EXPECT_EQ(desk.jobs.groups()[1].title, QStringLiteral("To look at"));
  EXPECT_EQ(desk.jobs.groups()[2].title, QStringLiteral("Today"));
  EXPECT_EQ(desk.jobs.activeCount(), 1);
  EXPECT_EQ(desk.jobs.activeText(), QStringLiteral("1 generating"));
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.jobs.activeText(), QString());
}

TEST_F(JobsTest, WhatEndedTodayStandsUnderYesterdayTheNextDay) {
  desk.generate(QStringLiteral("one"));
  desk.settle();
  ASSERT_EQ(desk.jobs.groups().size(), 1u);
  ASSERT_EQ(desk.jobs.groups()[0].title, QStringLiteral("Today"));
  desk.clock->advance(std::chrono::hours(24));
  desk.generate(QStringLiteral("two"));
  desk.settle();
  ASSERT_EQ(desk.jobs.groups().size(), 2u);
  EXPECT_EQ(desk.jobs.groups()[0].title, QStringLiteral("Today"));
  EXPECT_EQ(desk.jobs.groups()[1].title, QStringLiteral("Yesterday"));
}

TEST_F(JobsTest, CancellingAllAsksAndStartsNothingThatWaited) {
  desk.provider->gate.emplace();
  for (int number = 0; number < 5; ++number) desk.generate(QStringLiteral("boat %1").arg(number));
  test::runPosted();
  const std::size_t sent = desk.provider->requests.size();
  ASSERT_GT(desk.jobs.activeCount(), static_cast<int>(sent));
  desk.jobs.cancelAll();
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->title, QStringLiteral("Cancel all 5 generations in progress?"));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_EQ(desk.jobs.activeCount(), 5);
  desk.jobs.cancelAll();
  desk.alerts.answer(desk.alerts.current()->id, 1);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.provider->requests.size(), sent);
  desk.jobs.setSegment(JobSegment::cancelled);
  EXPECT_EQ(desk.jobs.count(), 5);
}

TEST_F(JobsTest, ASelectionIsCancelledAndTheRestGoesOn) {
  desk.provider->gate.emplace();
  QSet<QUuid> chosen;
  for (int number = 0; number < 4; ++number) {
    desk.generate(QStringLiteral("boat %1").arg(number));
    if (number > 1) chosen.insert(desk.newestJob()->id);
  }
  EXPECT_EQ(desk.jobs.activeAmong(chosen), 2);
  desk.jobs.cancelJobs(chosen);
  EXPECT_EQ(desk.jobs.activeAmong(chosen), 0);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.store.assets().size(), 2u);
}

TEST_F(JobsTest, SearchFindsPromptsModelsAndOutcomes) {
  fail(QStringLiteral("A crème boat"));
  desk.generate(QStringLiteral("an owl"));
  desk.settle();
  desk.jobs.setSearch(QStringLiteral("CREME"));
  EXPECT_EQ(desk.jobs.count(), 1);
  desk.jobs.setSearch(QStringLiteral("planted"));
  EXPECT_EQ(desk.jobs.count(), 1);
  desk.jobs.setSearch(QStringLiteral("nowhere"));
  EXPECT_EQ(desk.jobs.count(), 0);
  EXPECT_EQ(desk.jobs.emptyTitle(), QStringLiteral("No generations match"));
  desk.jobs.setSearch({});
  EXPECT_EQ(desk.jobs.count(), 2);
}

TEST_F(JobsTest, DetailsOfSeveralAreCopiedTogether) {
  const QUuid first = fail(QStringLiteral("one")), second = fail(QStringLiteral("two"));
  desk.jobs.copyDetails(QSet<QUuid>{first, second});
  EXPECT_TRUE(desk.copied.contains(base::uuidText(first)));
  EXPECT_TRUE(desk.copied.contains(base::uuidText(second)));
}

TEST_F(JobsTest, SegmentsShowOnlyTheirOwn) {
  fail(QStringLiteral("one"));
  desk.generate(QStringLiteral("two"));
  desk.settle();
  desk.jobs.setSegment(JobSegment::failed);
  ASSERT_EQ(desk.jobs.count(), 1);
  EXPECT_EQ(desk.jobs.rowAt(0).state, JobState::failed);
  desk.jobs.setSegment(JobSegment::complete);
  ASSERT_EQ(desk.jobs.count(), 1);
  EXPECT_EQ(desk.jobs.rowAt(0).action, JobAction::show);
  desk.jobs.setSegment(JobSegment::cancelled);
  EXPECT_EQ(desk.jobs.count(), 0);
}

TEST_F(JobsTest, RetrySetsAFailedJobGoingAgain) {
  const QUuid id = fail(QStringLiteral("one"));
  EXPECT_EQ(desk.jobs.job(id).action, JobAction::retry);
  desk.jobs.perform(id, JobAction::retry);
  desk.settle();
  EXPECT_EQ(desk.jobs.job(id).state, JobState::complete);
  EXPECT_EQ(desk.store.assets().size(), 1u);
}

TEST_F(JobsTest, CancelEndsARunningJob) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  const QUuid id = desk.newestJob()->id;
  desk.jobs.perform(id, JobAction::cancel);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.jobs.job(id).state, JobState::cancelled);
  EXPECT_EQ(desk.jobs.job(id).action, JobAction::retry);
}

TEST_F(JobsTest, ALostSubmissionOffersOnlySubmitAgain) {
  const QUuid id = loseSubmission();
  const JobDisplay job = desk.jobs.job(id);
  EXPECT_EQ(job.action, JobAction::submitAgain);
  EXPECT_EQ(job.actionTitle, QStringLiteral("Submit Again…"));
  EXPECT_FALSE(job.canRetry);
}

TEST_F(JobsTest, RetryOfALostSubmissionNeverReachesTheProvider) {
  const QUuid id = loseSubmission();
  const std::size_t before = desk.provider->requests.size();
  desk.jobs.retry(id);
  desk.settle();
  EXPECT_EQ(desk.provider->requests.size(), before);
}

TEST_F(JobsTest, SubmitAgainAsksAndSendsNothingOnCancel) {
  const QUuid id = loseSubmission();
  const std::size_t before = desk.provider->requests.size();
  desk.jobs.perform(id, JobAction::submitAgain);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->buttons.front().title, QStringLiteral("Cancel"));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  desk.settle();
  EXPECT_EQ(desk.provider->requests.size(), before);
}

TEST_F(JobsTest, SubmitAgainSendsOnceAfterAYes) {
  const QUuid id = loseSubmission();
  const std::size_t before = desk.provider->requests.size();
  desk.jobs.perform(id, JobAction::submitAgain);
  ASSERT_TRUE(desk.alerts.current());
  desk.alerts.answer(desk.alerts.current()->id, 1);
  desk.settle();
  EXPECT_EQ(desk.provider->requests.size(), before + 1);
  EXPECT_EQ(desk.jobs.job(id).state, JobState::complete);
}

TEST_F(JobsTest, ARetainedResultIsSavedWithoutTheProvider) {
  const QUuid id = fail(QStringLiteral("one"));
  generation::GeneratedOutput output;
  output.data = QByteArray::fromBase64(
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");
  output.ext = QStringLiteral("png");
  generation::ResultRecovery::save({output}, desk.store.files(), id);
  const JobDisplay job = desk.jobs.job(id);
  EXPECT_EQ(job.action, JobAction::saveResult);
  EXPECT_TRUE(job.canSaveRawResult);
  const std::size_t before = desk.provider->requests.size();
  desk.jobs.perform(id, JobAction::saveResult);
  desk.settle();
  EXPECT_EQ(desk.jobs.job(id).state, JobState::complete);
  EXPECT_EQ(desk.provider->requests.size(), before);
}

TEST_F(JobsTest, DetailsAreCopiedForSupport) {
  const QUuid id = fail(QStringLiteral("one"));
  desk.jobs.copyDetails(id);
  EXPECT_TRUE(desk.copied.contains(QStringLiteral("Job: ") + base::uuidText(id)));
  EXPECT_TRUE(desk.copied.contains(QStringLiteral("Model: Nano Banana 2")));
  EXPECT_EQ(desk.alerts.toasts().size(), 1u);
}

TEST_F(JobsTest, ShowSelectsTheOutputsInTheGallery) {
  desk.generate(QStringLiteral("one"));
  desk.settle();
  desk.state.setMode({ModeKind::activity});
  desk.jobs.perform(desk.newestJob()->id, JobAction::show);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{desk.store.assets().front()->id});
}

TEST_F(JobsTest, AFinishedJobIsAnnouncedOnlyWhereItsResultIsNotSeen) {
  desk.generate(QStringLiteral("one"));
  desk.settle();
  EXPECT_TRUE(desk.alerts.toasts().empty());
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("two"));
  desk.state.setMode({ModeKind::activity});
  desk.provider->gate->finish();
  desk.settle();
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().text, QStringLiteral("Saved 1 image locally"));
}

TEST_F(JobsTest, ACardAboutAResultLeavesWhereTheResultIsSeen) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  desk.state.setMode({ModeKind::activity});
  desk.provider->gate->finish();
  desk.settle();
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  desk.state.setLocation(favoritesLocation);
  EXPECT_EQ(desk.alerts.toasts().size(), 1u) << "it is not among the favourites";
  desk.state.setLocation(inboxLocation);
  EXPECT_TRUE(desk.alerts.toasts().empty());
}

TEST_F(JobsTest, AResultIsAnnouncedOverTheWallOfAnotherPlaceToo) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  desk.state.setLocation(favoritesLocation);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.alerts.toasts().size(), 1u);
}

}  // namespace
}  // namespace sorvan::shell
