#include <gtest/gtest.h>

#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "shell/alerts_presenter.h"
#include "shell/updates_presenter.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::shell {
namespace {
using namespace Qt::Literals::StringLiterals;

struct UpdatesTest : testing::Test {
  ~UpdatesTest() override {
    test::runTask(presenter.drain());
    test::runTask(usage.drain());
    test::runTask(notice.drain());
  }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  account::UsageStats usage{account::UsageStats::Services{transport, clock, settings, u"1.2"_s, u"34"_s}};
  account::UpdateNotice notice{{transport, settings, 34}};
  AlertsPresenter alerts;
  QUrl opened;
  UpdatesPresenter presenter{{usage, notice, alerts, u"1.2"_s, [this](const QUrl& address) { opened = address; }}};

  void release(qint64 build) {
    notice.consider({u"2.1"_s, build, u"https://sorvan.example/get"_s, std::nullopt});
  }
  void untilChecked() {
    test::runUntil([this] { return !presenter.updates().checking; });
  }
};

TEST_F(UpdatesTest, ANewerBuildIsToldUntilItIsPutOff) {
  EXPECT_TRUE(presenter.updates().banner.isEmpty());
  release(35);
  EXPECT_EQ(presenter.updates().banner, u"Sorvan 2.1 is available"_s);
  presenter.download();
  EXPECT_EQ(opened, QUrl(u"https://sorvan.example/get"_s));
  presenter.later();
  EXPECT_TRUE(presenter.updates().banner.isEmpty());
  release(35);
  EXPECT_TRUE(presenter.updates().banner.isEmpty());
}

TEST_F(UpdatesTest, SomebodyWhoAsksLearnsOfABuildThatWasPutOff) {
  release(35);
  presenter.later();
  transport->on("GET", u"v1/app"_s).answers(200, R"({"version":"2.1","build":35,"url":"https://sorvan.example/get"})");
  presenter.check();
  EXPECT_EQ(presenter.updates().state, u"Asking for the newest version…"_s);
  untilChecked();
  EXPECT_EQ(presenter.updates().state, u"Sorvan 2.1 is available"_s);
}

TEST_F(UpdatesTest, ACheckSaysWhatItCameTo) {
  transport->on("GET", u"v1/app"_s)
      .answers(200, R"({"version":"1.2","build":34,"url":"https://sorvan.example/get"})")
      .fails(HttpProblem::TimedOut);
  presenter.check();
  untilChecked();
  EXPECT_EQ(presenter.updates().state, u"You have the newest version."_s);
  presenter.checkAndTell();
  untilChecked();
  ASSERT_TRUE(alerts.current().has_value());
  EXPECT_TRUE(alerts.current()->text.startsWith(u"The newest version isn’t known"_s));
}

TEST_F(UpdatesTest, ABuildInDevelopmentIsNotCompared) {
  account::UpdateNotice unpublished{{transport, settings, 0}};
  UpdatesPresenter developing{{usage, unpublished, alerts, u"development"_s, {}}};
  EXPECT_FALSE(developing.updates().canCheck);
  EXPECT_EQ(developing.updates().state, u"A development build is not compared with published ones."_s);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(UpdatesTest, UsageIsOffAndThenShowsWhatIsSentWordForWord) {
  EXPECT_FALSE(presenter.usage().sharing);
  EXPECT_TRUE(presenter.usage().report.isEmpty());
  EXPECT_EQ(presenter.usage().heading, u"Nothing is counted and nothing is sent."_s);
  presenter.setSharing(true);
  usage.note(u"job.upscale"_s, 3);
  EXPECT_TRUE(presenter.usage().report.contains(u"\"job.upscale\": 3"_s));
  EXPECT_EQ(presenter.usage().heading, u"What the next report says"_s);
  EXPECT_FALSE(settings->contains(u"usageInstall"_s)) << "looking makes no id";
  transport->on("POST", u"v1/t/app"_s).answers(500).repeating();
  usage.begin();
  test::runPosted();
  usage.note(u"job.voice"_s, 1);
  EXPECT_EQ(presenter.usage().heading, u"This report has not arrived yet and goes again as it is"_s);
  EXPECT_TRUE(presenter.usage().report.contains(u"job.upscale"_s));
  EXPECT_FALSE(presenter.usage().report.contains(u"job.voice"_s)) << "new counts wait for the next report";
  presenter.setSharing(false);
  EXPECT_TRUE(presenter.usage().report.isEmpty());
}

}  // namespace
}  // namespace sorvan::shell
