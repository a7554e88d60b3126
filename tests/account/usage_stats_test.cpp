#include "account/usage_stats.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class UsageStatsTest : public testing::Test {
 protected:
  ~UsageStatsTest() override { end(); }
  UsageStats& usage() {
    if (!stats) stats = std::make_unique<UsageStats>(UsageStats::Services{transport, clock, settings, u"1.2"_s, u"34"_s});
    return *stats;
  }
  void end() {
    if (stats) runTask(stats->drain());
    stats.reset();
  }
  void allow() { settings->set(u"usageSharing"_s, true); }
  /// Lets the report of the launch, or of the next day, go.
  void launch() {
    usage().begin();
    test::runPosted();
  }
  void nextDay() {
    clock->advance(std::chrono::hours(24));
    test::runPosted();
  }
  std::vector<HttpRequest> reports() const { return transport->requests(u"v1/t/app"_s); }
  QJsonObject report(std::size_t index) const { return QJsonDocument::fromJson(reports().at(index).body).object(); }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::unique_ptr<UsageStats> stats;
};

TEST_F(UsageStatsTest, IsOffUntilTheUserAllowsIt) {
  EXPECT_FALSE(usage().enabled());
  usage().note(u"job.text-to-image"_s, 1);
  EXPECT_TRUE(usage().counts().isEmpty());
  launch();
  nextDay();
  EXPECT_TRUE(transport->recorded.empty());
  EXPECT_FALSE(settings->contains(u"usageInstall"_s));
}

TEST_F(UsageStatsTest, ReportsCountsAtTheLaunchAndNothingThatTellsWho) {
  allow();
  transport->on("POST", u"v1/t/app"_s).answers(204).repeating();
  usage().note(u"job.text-to-image"_s, 2);
  usage().note(u"job.upscale"_s, 1);
  launch();
  ASSERT_EQ(reports().size(), 1u);
  EXPECT_EQ(report(0).keys(), (QStringList{u"build"_s, u"events"_s, u"install"_s, u"launch"_s, u"report"_s, u"version"_s}));
  EXPECT_EQ(report(0).value(u"events"_s), (QJsonObject{{u"job.text-to-image"_s, 2}, {u"job.upscale"_s, 1}}));
  EXPECT_EQ(report(0).value(u"launch"_s), true);
  EXPECT_EQ(report(0).value(u"report"_s), 1);
  const HttpRequest sent = reports()[0];
  for (const auto& [name, value] : sent.headers) EXPECT_NE(name, "Authorization");
  EXPECT_TRUE(usage().counts().isEmpty());
  EXPECT_TRUE(usage().pendingReport().isEmpty());
  nextDay();
  EXPECT_EQ(reports().size(), 1u);
  usage().note(u"job.upscale"_s, 1);
  nextDay();
  ASSERT_EQ(reports().size(), 2u);
  EXPECT_EQ(report(1).value(u"launch"_s), false);
  EXPECT_EQ(report(1).value(u"report"_s), 2);
  EXPECT_EQ(report(1).value(u"install"_s), report(0).value(u"install"_s));
}

TEST_F(UsageStatsTest, SendsAReportThatWasNotTakenAgainByteForByteAlsoAfterARestart) {
  allow();
  transport->on("POST", u"v1/t/app"_s).answers(500).fails(HttpProblem::TimedOut).answers(200).answers(200);
  usage().note(u"job.upscale"_s, 3);
  launch();
  usage().note(u"job.voice"_s, 1);
  nextDay();
  end();
  EXPECT_EQ(usage().counts(), (QMap<QString, qint64>{{u"job.voice"_s, 1}}));
  launch();
  ASSERT_EQ(reports().size(), 3u);
  EXPECT_EQ(reports()[0].body, reports()[1].body);
  EXPECT_EQ(reports()[0].body, reports()[2].body);
  nextDay();
  ASSERT_EQ(reports().size(), 4u);
  EXPECT_EQ(report(3).value(u"events"_s), (QJsonObject{{u"job.voice"_s, 1}}));
  EXPECT_EQ(report(3).value(u"report"_s), 2);
}

TEST_F(UsageStatsTest, TellsWhenWhatIsSentNextIsAnother) {
  allow();
  transport->on("POST", u"v1/t/app"_s).answers(204).repeating();
  QByteArray shown;
  QObject::connect(&usage(), &UsageStats::changed, [&] { shown = usage().nextReport(); });
  usage().note(u"job.upscale"_s, 3);
  EXPECT_TRUE(shown.contains("\"job.upscale\": 3"));
  launch();
  EXPECT_FALSE(shown.contains("job.upscale"));
  EXPECT_TRUE(shown.contains("\"report\": 2"));
}

TEST_F(UsageStatsTest, ForgetsAReportWhenItIsTurnedOff) {
  allow();
  transport->on("POST", u"v1/t/app"_s).answers(500).answers(200).repeating();
  usage().note(u"job.upscale"_s, 1);
  launch();
  EXPECT_FALSE(usage().pendingReport().isEmpty());
  usage().setEnabled(false);
  EXPECT_TRUE(usage().pendingReport().isEmpty());
  nextDay();
  EXPECT_EQ(reports().size(), 1u);
  EXPECT_EQ(settings->get<bool>(u"usageSharing"_s), false);
  usage().setEnabled(true);
  test::runPosted();
  EXPECT_EQ(reports().size(), 2u);
}

TEST_F(UsageStatsTest, SendsNothingToAGatewayWithoutEncryption) {
  allow();
  settings->set(u"creditsURL"_s, u"http://localhost:9000"_s);
  usage().note(u"job.upscale"_s, 1);
  launch();
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(UsageStatsTest, ReadsTheOlderFormOfItsCountsOnce) {
  allow();
  settings->set(u"usageCounts"_s, QMap<QString, qint64>{{u"job.upscale"_s, 4}});
  EXPECT_EQ(usage().counts().value(u"job.upscale"_s), 4);
  usage().note(u"job.upscale"_s, 1);
  EXPECT_FALSE(settings->contains(u"usageCounts"_s));
  end();
  EXPECT_EQ(usage().counts().value(u"job.upscale"_s), 5);
}

}  // namespace
}  // namespace sorvan::account
