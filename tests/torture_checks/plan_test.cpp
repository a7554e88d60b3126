// Which steps are struck, and in which ways.
#include "torture/plan.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include "support_sandbox/sandbox_process.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

Step step(const QString& call, const QString& below, const QString& other = {}) {
  Step step;
  step.call = call;
  step.path = below.isEmpty() ? QString() : u"/library"_s + below;
  step.other = other;
  return step;
}

TEST(TheNameOfAStep, LeavesOutIdsAndTitles) {
  const QString id = u"/.sorvan/recovery/3E861D19-7803-495C-BDDE-AE04B861ABA5/0.part"_s;
  EXPECT_EQ(placeOf(u"write"_s, u"/library"_s + id, u"/library"_s), u"write /.sorvan/recovery/*/0.part"_s);
  EXPECT_EQ(globOf(u"open"_s, u"/library/Inbox/generated/a fine day.png"_s, u"/library"_s), u"open /Inbox/generated/*"_s);
  EXPECT_EQ(globOf(u"fsync"_s, u"/library"_s, u"/library"_s), u"fsync /"_s);
  EXPECT_EQ(globOf(u"send"_s, {}, u"/library"_s), u"send -"_s);
}

TEST(ACount, NumbersTheStepsAtAPlaceAndCountsWhatTheSystemRefused) {
  const std::vector<Step> steps{step(u"mkdir"_s, u"/.sorvan"_s), step(u"refused"_s, u"/.sorvan"_s, u"mkdir"_s),
                                step(u"write"_s, u"/x"_s), step(u"mkdir"_s, u"/.sorvan"_s)};
  const std::vector<Counted> counted = countedSteps(steps, u"/library"_s);
  ASSERT_EQ(counted.size(), 3U);
  EXPECT_EQ(counted[0].turn, 1);
  EXPECT_EQ(counted[1].turn, 1);
  EXPECT_EQ(counted[2].turn, 3);
}

TEST(ACount, KeepsOnlyWhatBothRunsWentThrough) {
  const std::vector<Counted> one = countedSteps({step(u"recv"_s, {}), step(u"recv"_s, {}), step(u"send"_s, {})}, {});
  const std::vector<Counted> other = countedSteps({step(u"recv"_s, {})}, {});
  const std::vector<Counted> common = commonSteps(one, other);
  ASSERT_EQ(common.size(), 1U);
  EXPECT_EQ(common[0].call, u"recv"_s);
}

TEST(AWalk, InEveryWayKillsBeforeInAndAfterWhatCanBeHalved) {
  const Scenario scenario;
  const std::vector<Counted> steps = countedSteps({step(u"write"_s, u"/x"_s), step(u"fsync"_s, u"/x"_s)}, u"/library"_s);
  QStringList orders;
  for (const Planned& planned : killWalk(scenario, steps, {.everyTurn = true, .everyWay = true}, 1))
    orders << planned.fault.shim;
  EXPECT_EQ(orders, (QStringList{u"at before 1 write /x"_s, u"at middle 1 write /x"_s, u"at after 1 write /x"_s,
                                 u"at before 1 fsync /x"_s, u"at after 1 fsync /x"_s}));
}

TEST(AWalk, FallsBackToTheFirstStepOfAKindThatNotEveryRunHas) {
  const Scenario scenario;
  const std::vector<Counted> steps =
      countedSteps({step(u"fsync"_s, u"/.sorvan/library.store-wal"_s), step(u"fsync"_s, u"/.sorvan/library.store-wal"_s)},
                   u"/library"_s);
  const std::vector<Planned> walk = killWalk(scenario, steps, {.everyTurn = true, .everyWay = true}, 1);
  ASSERT_EQ(walk.size(), 4U);
  EXPECT_FALSE(walk[0].mayBeAbsent);
  EXPECT_TRUE(walk[2].mayBeAbsent);
  EXPECT_EQ(walk[2].fault.shim, u"at before 2 fsync /.sorvan/library.store-wal"_s);
  EXPECT_EQ(atFirstTurn(walk[2]).fault.shim, u"at before 1 fsync /.sorvan/library.store-wal"_s);
}

TEST(TheShim, EndsTheProgramAtTheStepThatIsNamed) {
  const QTemporaryDir folder;
  const QString workspace = folder.filePath(u"workspace"_s);
  QDir().mkpath(workspace);
  const sorvan::test::SandboxProcess sandbox;
  QProcess driver;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SORVAN_SERVICE"_s, sandbox.configurationPath());
  environment.insert(u"HOME"_s, folder.path());
  environment.insert(u"LD_PRELOAD"_s, QStringLiteral(SORVAN_FAULTSHIM));
  environment.insert(u"SORVAN_FAULT_ROOT"_s, workspace);
  environment.insert(u"SORVAN_FAULT"_s, u"at before 2 fsync /.sorvan/library.store-wal"_s);
  environment.insert(u"SORVAN_FAULT_JOURNAL"_s, folder.filePath(u"journal"_s));
  driver.setProcessEnvironment(environment);
  driver.start(QStringLiteral(SORVAN_DRIVER),
               {workspace, u"[{\"do\":\"enqueue\",\"model\":\"fal-ai/flux/schnell\",\"prompt\":\"named\"}]"_s});
  ASSERT_TRUE(driver.waitForFinished(30'000));
  EXPECT_EQ(driver.exitStatus(), QProcess::CrashExit);
  const std::vector<Step> steps = readJournal(folder.filePath(u"journal"_s));
  const auto isTheSync = [](const Step& each) {
    return each.call == u"fsync"_s && each.path.endsWith(u"/library.store-wal"_s);
  };
  EXPECT_EQ(std::count_if(steps.begin(), steps.end(), isTheSync), 1);
  const auto struck = struckIn(steps);
  ASSERT_TRUE(struck);
  EXPECT_EQ(placeOf(struck->other, struck->path, workspace), u"fsync /.sorvan/library.store-wal"_s);
}

}  // namespace
}  // namespace sorvan::torture
