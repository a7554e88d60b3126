#include "account/update_notice.h"

#include <gtest/gtest.h>

#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class UpdateNoticeTest : public testing::Test {
 protected:
  static AppRelease release(qint64 build, const QString& url = u"https://sorvan.example/get"_s) {
    return {u"2.0"_s, build, url, std::nullopt};
  }
  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  UpdateNotice notice{{transport, settings, 10}};
};

TEST_F(UpdateNoticeTest, TellsOfANewerBuildOnly) {
  notice.consider(release(9));
  notice.consider(release(10));
  EXPECT_FALSE(notice.available());
  notice.consider(release(11));
  ASSERT_TRUE(notice.available());
  EXPECT_EQ(notice.available()->build, 11);
}

TEST_F(UpdateNoticeTest, PutsABuildOffForGoodAndTellsOfTheNextOne) {
  notice.consider(release(11));
  notice.dismiss();
  EXPECT_FALSE(notice.available());
  EXPECT_EQ(settings->get<qint64>(u"updateDismissedBuild"_s), 11);
  notice.consider(release(11));
  EXPECT_FALSE(notice.available());
  notice.consider(release(12));
  EXPECT_TRUE(notice.available());
}

TEST_F(UpdateNoticeTest, OffersNoDownloadWithoutEncryption) {
  for (const auto& url : {u"http://sorvan.example/get"_s, u"file:///tmp/x"_s, u"javascript:alert(1)"_s, u""_s})
    notice.consider(release(11, url));
  EXPECT_FALSE(notice.available());
}

TEST_F(UpdateNoticeTest, AsksTheGatewayAndBearsEveryAnswer) {
  transport->on("GET", u"v1/app"_s)
      .answers(500)
      .answers(200, "garbage")
      .answers(200, R"({"version":"2.0","build":"11","url":"https://sorvan.example"})")
      .fails(HttpProblem::TimedOut)
      .answers(200, R"({"version":"2.0","build":11,"url":"https://sorvan.example/get"})");
  for (int asked = 0; asked < 5; ++asked) {
    EXPECT_FALSE(notice.available());
    notice.check();
    runTask(notice.whenIdle());
  }
  EXPECT_TRUE(notice.available());
}

TEST_F(UpdateNoticeTest, TellsOfABuildThatWasPutOffWhenTheUserAsks) {
  notice.consider(release(11));
  notice.dismiss();
  transport->on("GET", u"v1/app"_s)
      .answers(200, R"({"version":"2.0","build":11,"url":"https://sorvan.example/get"})")
      .repeating();
  notice.check();
  runTask(notice.whenIdle());
  EXPECT_TRUE(notice.wasAnswered());
  EXPECT_FALSE(notice.available());
  notice.checkAgain();
  runTask(notice.whenIdle());
  EXPECT_TRUE(notice.available());
}

TEST_F(UpdateNoticeTest, AsksNothingOfAGatewayWithoutEncryptionAndInDevelopment) {
  settings->set(u"creditsURL"_s, u"http://localhost:9000"_s);
  notice.check();
  runTask(notice.whenIdle());
  settings->remove(u"creditsURL"_s);
  UpdateNotice inDevelopment{{transport, settings, 0}};
  inDevelopment.check();
  runTask(inDevelopment.whenIdle());
  EXPECT_TRUE(transport->recorded.empty());
}

}  // namespace
}  // namespace sorvan::account
