#include "composer/gateway_interpreter.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "base/ids.h"
#include "generation/provider.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using sorvan::test::runTask;

class GatewayInterpreterTest : public testing::Test {
 protected:
  GatewayInterpreterTest() { clock->passSleeps(); }

  static QJsonObject operation(const QString& state, const QJsonValue& action = {}) {
    QJsonObject told{{u"id"_s, u"op-1"_s},
                     {u"kind"_s, u"interpret"_s},
                     {u"state"_s, state},
                     {u"reserved"_s, 300'000},
                     {u"charged"_s, state == u"complete"_s ? 300'000 : 0}};
    if (!action.isNull()) told.insert(u"result"_s, QJsonObject{{u"action"_s, action}});
    return told;
  }
  Interpretation interpret() { return runTask(interpreter.interpret(u"find temples"_s, context, key, {})); }

  std::shared_ptr<sorvan::test::ScriptedTransport> transport = std::make_shared<sorvan::test::ScriptedTransport>();
  std::shared_ptr<sorvan::test::FakeClock> clock = std::make_shared<sorvan::test::FakeClock>();
  GatewayInterpreter interpreter{[this] {
    catalogue::CreditsClient::Access access;
    access.transport = transport;
    access.clock = clock;
    access.gateway = QUrl(u"https://gateway.example"_s);
    access.token = u"token"_s;
    return catalogue::CreditsClient(access);
  }};
  CommandContext context{{u"Campaign"_s}, 2, u"Inbox"_s};
  QUuid key = uuidFromText(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
};

const QJsonObject search{{u"action"_s, u"search"_s}, {u"query"_s, u"temples"_s}};

TEST_F(GatewayInterpreterTest, AsksOnceUnderItsKeyAndWaitsForTheEnd) {
  transport->on("POST", u"v1/interpret"_s).answersJson(operation(u"running"_s));
  transport->on("GET", u"v1/operations/op-1"_s).answersJson(operation(u"complete"_s, search));
  const Interpretation answer = interpret();
  ASSERT_TRUE(answer.action);
  EXPECT_EQ(answer.action->query, u"temples"_s);
  EXPECT_EQ(answer.microcredits, 300'000);
  EXPECT_EQ(transport->posts(u"v1/interpret"_s), 1);
  EXPECT_EQ(transport->recorded[0].request.body,
            R"({"context":{"currentProject":"Inbox","projects":["Campaign"],"selectionCount":2},"text":"find temples"})");
}

TEST_F(GatewayInterpreterTest, TellsThePriceOfAnAnswerThatDoesNotRead) {
  for (const QJsonValue& action : {QJsonValue(7), QJsonValue(QJsonObject()), QJsonValue(QJsonObject{{u"action"_s, 4}})}) {
    transport->on("POST", u"v1/interpret"_s).answersJson(operation(u"complete"_s, action));
    const Interpretation answer = interpret();
    EXPECT_FALSE(answer.action);
    EXPECT_EQ(answer.microcredits, 300'000);
  }
}

TEST_F(GatewayInterpreterTest, SaysThatALostAnswerMayHaveBeenPaidFor) {
  transport->on("POST", u"v1/interpret"_s).answers(502);
  EXPECT_THROW(interpret(), generation::SubmissionUnknown);
}

TEST_F(GatewayInterpreterTest, SaysThatARefusedRequestWasNotAccepted) {
  transport->on("POST", u"v1/interpret"_s)
      .answersJson(QJsonObject{{u"error"_s, u"Insufficient Sorvan Credits."_s}}, 402);
  EXPECT_THROW(interpret(), InterpretationNotSent);
}

TEST_F(GatewayInterpreterTest, SaysThatNothingWasSentWhileNobodyIsSignedIn) {
  GatewayInterpreter nobody([]() -> catalogue::CreditsClient { throw SorvanError(u"Sign in."_s); });
  EXPECT_THROW(runTask(nobody.interpret(u"find temples"_s, context, key, {})), InterpretationNotSent);
}

TEST_F(GatewayInterpreterTest, LearnsWhatBecameOfARequestThatWasSentBefore) {
  const auto existing = [&] { return runTask(interpreter.existing(key, {})); };
  transport->on("GET", u"v1/requests/6F9619FF"_s).answers(404);
  EXPECT_FALSE(existing());
  transport->on("GET", u"v1/requests/6F9619FF"_s).answersJson(operation(u"failed"_s)).repeating();
  ASSERT_TRUE(existing()) << "it has arrived";
  EXPECT_EQ(existing()->microcredits, 0);
  transport->on("GET", u"v1/requests/6F9619FF"_s).answersJson(operation(u"complete"_s, search));
  EXPECT_EQ(existing()->microcredits, 300'000);
  transport->on("GET", u"v1/requests/6F9619FF"_s).answers(503);
  EXPECT_THROW(existing(), SorvanError);
}

}  // namespace
}  // namespace sorvan::composer
