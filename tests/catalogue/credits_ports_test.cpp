#include "catalogue/credits_ports.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class CreditsPortsTest : public testing::Test {
 protected:
  CreditsPortsTest() {
    plugCredits(ports, [this]() -> CreditsClient {
      if (signedOut) throw SorvanError(u"Sign in first."_s);
      CreditsClient::Access access;
      access.transport = transport;
      access.clock = std::make_shared<test::FakeClock>();
      access.gateway = QUrl(u"https://gateway.example"_s);
      access.token = u"token"_s;
      return CreditsClient(access);
    });
  }
  static QByteArray told(const char* state) {
    return QByteArray(R"({"id":"op-1","kind":"image","reserved":0,"charged":0,"state":")") + state + "\"}";
  }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  GenerationPorts ports;
  bool signedOut = false;
};

TEST_F(CreditsPortsTest, TellsTheStateAfterACancellationOrNothing) {
  transport->on("POST", u"v1/operations/op-1/cancel"_s).answers(200, told("running")).answers(204);
  EXPECT_EQ(runTask(ports.cancelCredits(u"op-1"_s, {})), u"running"_s);
  EXPECT_EQ(runTask(ports.cancelCredits(u"op-1"_s, {})), QString());
}

TEST_F(CreditsPortsTest, TellsThePresentState) {
  transport->on("GET", u"v1/operations/op-1"_s).answers(200, told("uncertain"));
  EXPECT_EQ(runTask(ports.creditState(u"op-1"_s, {})), u"uncertain"_s);
}

TEST_F(CreditsPortsTest, LooksARequestUpByItsOwnId) {
  const QUuid request = uuidFromText(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
  transport->on("GET", u"v1/requests/6F9619FF-8B86-D011-B42D-00C04FC964FF"_s)
      .answers(200, told("complete"))
      .answers(404)
      .answers(500);
  EXPECT_EQ(runTask(ports.existingCredits(request, {}))->id, u"op-1"_s);
  EXPECT_FALSE(runTask(ports.existingCredits(request, {})));
  EXPECT_THROW(runTask(ports.existingCredits(request, {})), SorvanError);
}

TEST_F(CreditsPortsTest, TakesNobodySignedInForNoAnswer) {
  signedOut = true;
  EXPECT_THROW(runTask(ports.creditState(u"op-1"_s, {})), SorvanError);
  EXPECT_THROW(runTask(ports.existingCredits(QUuid::createUuid(), {})), SorvanError);
  EXPECT_TRUE(transport->recorded.empty());
}

}  // namespace
}  // namespace sorvan::catalogue
