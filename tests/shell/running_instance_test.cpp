#include "shell/running_instance.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QSignalSpy>
#include <future>

#include "support/run_task.h"
#include "support/temporary_folder.h"

namespace sorvan::shell {
namespace {

// A second start happens in another process; here another thread stands for it, with a socket of its own.
std::future<bool> secondStart(const QString& folder, const QString& link) {
  return std::async(std::launch::async, [folder, link] { return RunningInstance(folder).callRunningOne(link); });
}

bool answer(std::future<bool>& second) {
  test::runUntil([&] { return second.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
  return second.get();
}

TEST(RunningInstance, OnlyOneBecomesTheRunningOne) {
  test::TemporaryFolder folder;
  RunningInstance first(folder.path());
  RunningInstance second(folder.path());
  EXPECT_TRUE(first.become());
  EXPECT_FALSE(second.become());
}

TEST(RunningInstance, TheNextOneMayRunWhenTheFirstHasEnded) {
  test::TemporaryFolder folder;
  {
    RunningInstance first(folder.path());
    ASSERT_TRUE(first.become());
  }
  EXPECT_TRUE(RunningInstance(folder.path()).become());
}

TEST(RunningInstance, ASecondStartCallsTheFirst) {
  test::TemporaryFolder folder;
  RunningInstance first(folder.path());
  ASSERT_TRUE(first.become());
  QSignalSpy called(&first, &RunningInstance::called);
  auto second = secondStart(folder.path(), QString());
  EXPECT_TRUE(answer(second));
  ASSERT_EQ(called.count(), 1);
  EXPECT_EQ(called.front().front().toString(), QString());
}

TEST(RunningInstance, HandsALinkOver) {
  test::TemporaryFolder folder;
  RunningInstance first(folder.path());
  ASSERT_TRUE(first.become());
  QSignalSpy called(&first, &RunningInstance::called);
  auto second = secondStart(folder.path(), QStringLiteral("sorvan://auth?code=1"));
  EXPECT_TRUE(answer(second));
  ASSERT_EQ(called.count(), 1);
  EXPECT_EQ(called.front().front().toString(), QStringLiteral("sorvan://auth?code=1"));
}

TEST(RunningInstance, NobodyAnswersWhereNobodyRuns) {
  test::TemporaryFolder folder;
  EXPECT_FALSE(RunningInstance(folder.path()).callRunningOne(QString()));
}

TEST(RunningInstance, WorksInAFolderWhosePathIsTooLongForASocket) {
  test::TemporaryFolder folder;
  const QString deep = folder / QString(120, QLatin1Char('d'));
  ASSERT_TRUE(QDir().mkpath(deep));
  RunningInstance first(deep);
  ASSERT_TRUE(first.become());
  QSignalSpy called(&first, &RunningInstance::called);
  auto second = secondStart(deep, QString());
  EXPECT_TRUE(answer(second));
  EXPECT_EQ(called.count(), 1);
}

}  // namespace
}  // namespace sorvan::shell
