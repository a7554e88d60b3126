// Calls that time out: held before they are read, before they are carried out, before their answer, or in the middle of
// it, until a test lets them go on.
#include <gtest/gtest.h>

#include "sandbox/fault_stage.h"

namespace sorvan::test {
namespace {

const QString submit = QStringLiteral("submit");

QJsonObject at(const char16_t* point) { return {{QStringLiteral("at"), QString::fromUtf16(point)}}; }

// Begins a call under a hold and returns once it is held.
std::unique_ptr<QSslSocket> beginHeld(FaultStage& stage, const FaultStage::Request& request, const QString& call,
                                      const QJsonObject& point) {
  stage.sandbox.addFault(call, QStringLiteral("hold"), point);
  auto socket = stage.client.begin(request.method, request.url, request.body, request.key);
  stage.sandbox.waitForHeld(call);
  return socket;
}

TEST(SandboxHolds, EveryCallIsHeldAfterItWasCarriedOutUntilItIsReleased) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const auto request = stage.request(call);
    const auto purchases = stage.sandbox.ledger().size();
    const int posts = stage.sandbox.posts();
    const auto socket = beginHeld(stage, request, call, at(u"after"));
    EXPECT_EQ(socket->bytesAvailable(), 0);
    EXPECT_EQ(stage.sandbox.ledger().size() - purchases, call == submit ? 1 : 0) << call.toStdString();
    EXPECT_EQ(stage.sandbox.posts() - posts, FaultStage::isPost(call) ? 1 : 0) << call.toStdString();
    EXPECT_EQ(stage.sandbox.release(call), 1);
    EXPECT_EQ(stage.client.finish(*socket).status, 200) << call.toStdString();
    EXPECT_EQ(stage.sandbox.ledger().size() - purchases, call == submit ? 1 : 0) << call.toStdString();
  }
}

TEST(SandboxHolds, EveryCallIsHeldBeforeItIsCarriedOut) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const auto request = stage.request(call);
    const auto purchases = stage.sandbox.ledger().size();
    const auto socket = beginHeld(stage, request, call, at(u"before"));
    EXPECT_EQ(stage.sandbox.ledger().size(), purchases) << call.toStdString();
    EXPECT_EQ(stage.sandbox.release(call), 1);
    EXPECT_EQ(stage.client.finish(*socket).status, 200) << call.toStdString();
    EXPECT_EQ(stage.sandbox.ledger().size() - purchases, call == submit ? 1 : 0) << call.toStdString();
  }
}

TEST(SandboxHolds, EveryCallIsHeldWithItsBodyUnread) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const auto request = stage.request(call);
    const int posts = stage.sandbox.posts();
    const auto socket = beginHeld(stage, request, call, at(u"head"));
    EXPECT_EQ(stage.sandbox.posts(), posts) << call.toStdString();
    EXPECT_EQ(stage.sandbox.release(call), 1);
    EXPECT_EQ(stage.client.finish(*socket).status, 200) << call.toStdString();
    EXPECT_EQ(stage.sandbox.posts() - posts, FaultStage::isPost(call) ? 1 : 0) << call.toStdString();
  }
}

TEST(SandboxHolds, APostWhoseSenderLeavesWithItsBodyUnreadIsSeenButCostsNothing) {
  FaultStage stage;
  const auto purchases = stage.sandbox.ledger().size();
  const int posts = stage.sandbox.posts();
  auto socket = beginHeld(stage, stage.request(submit), submit, at(u"head"));
  socket->abort();
  stage.sandbox.waitUntilNoneHeld(submit);
  EXPECT_EQ(stage.sandbox.posts() - posts, 1);
  EXPECT_EQ(stage.sandbox.ledger().size(), purchases);
}

TEST(SandboxHolds, APostWhoseSenderLeavesBeforeTheAnswerStaysCharged) {
  FaultStage stage;
  const auto purchases = stage.sandbox.ledger().size();
  auto socket = beginHeld(stage, stage.request(submit), submit, at(u"after"));
  socket->abort();
  stage.sandbox.waitUntilNoneHeld(submit);
  EXPECT_EQ(stage.sandbox.ledger().size() - purchases, 1);
}

TEST(SandboxHolds, AStalledAnswerGoesOnWhenItIsReleased) {
  FaultStage stage;
  for (const QString& call : {submit, QStringLiteral("status"), QStringLiteral("result"), QStringLiteral("download")}) {
    const auto request = stage.request(call);
    const auto purchases = stage.sandbox.ledger().size();
    stage.sandbox.addFault(call, QStringLiteral("stall"));
    const auto socket = stage.client.begin(request.method, request.url, request.body, request.key);
    ASSERT_TRUE(socket->waitForReadyRead(30'000));
    stage.sandbox.waitForHeld(call);
    const QByteArray seen = socket->peek(1 << 20);
    EXPECT_TRUE(seen.startsWith("HTTP/1.1 200")) << call.toStdString();
    EXPECT_EQ(stage.sandbox.release(call), 1);
    const WireAnswer answer = stage.client.finish(*socket);
    EXPECT_TRUE(answer.complete) << call.toStdString();
    EXPECT_GT(answer.raw.size(), seen.size()) << call.toStdString();
    EXPECT_EQ(stage.sandbox.ledger().size() - purchases, call == submit ? 1 : 0);
  }
}

TEST(SandboxHolds, WhileOneCallIsHeldTheOthersAreAnswered) {
  FaultStage stage;
  const auto socket = beginHeld(stage, stage.request(submit), submit, at(u"before"));
  for (const QString& call : {QStringLiteral("status"), QStringLiteral("result"), QStringLiteral("download")})
    EXPECT_EQ(stage.make(call).answer.status, 200) << call.toStdString();
  EXPECT_EQ(stage.sandbox.state().value(QStringLiteral("held")).toArray(), QJsonArray{submit});
}

TEST(SandboxHolds, AReleaseOfOneKindLeavesTheOthersHeld) {
  FaultStage stage;
  const auto status = beginHeld(stage, stage.request(QStringLiteral("status")), QStringLiteral("status"), at(u"after"));
  const auto posted = beginHeld(stage, stage.request(submit), submit, at(u"after"));
  EXPECT_EQ(stage.sandbox.release(QStringLiteral("status")), 1);
  EXPECT_EQ(stage.client.finish(*status).status, 200);
  EXPECT_EQ(stage.sandbox.release(), 1);
  EXPECT_EQ(stage.client.finish(*posted).status, 200);
}

}  // namespace
}  // namespace sorvan::test
