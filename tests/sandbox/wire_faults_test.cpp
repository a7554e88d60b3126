// Every fault of the wire, met by submit, status, result, upload and download: what came back, what it cost, how many
// POSTs there were, and that the call after it is whole again.
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "sandbox/fault_stage.h"

namespace sorvan::test {
namespace {

bool changesThings(const QString& call) { return call == QStringLiteral("submit") || call == QStringLiteral("upload"); }

// A fault after which the call was carried out: charged where it costs, counted once.
void expectCarriedOut(const QString& call, const Met& met) {
  EXPECT_EQ(met.purchases, call == QStringLiteral("submit") ? 1 : 0) << call.toStdString();
  EXPECT_EQ(met.posts, FaultStage::isPost(call) ? 1 : 0) << call.toStdString();
  EXPECT_EQ(met.carriedOut, changesThings(call)) << call.toStdString();
}

// A fault that let nothing happen; `posts` says whether the POST was seen all the same.
void expectNothingHappened(const QString& call, const Met& met, int posts) {
  EXPECT_EQ(met.purchases, 0) << call.toStdString();
  EXPECT_EQ(met.posts, FaultStage::isPost(call) ? posts : 0) << call.toStdString();
  EXPECT_FALSE(met.carriedOut) << call.toStdString();
}

void expectWholeAgain(FaultStage& stage, const QString& call) {
  const Met after = stage.make(call);
  EXPECT_EQ(after.answer.status, 200) << call.toStdString();
  EXPECT_TRUE(after.answer.complete) << call.toStdString();
  expectCarriedOut(call, after);
}

void expectNoConnection(const QString& fault) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, fault);
    EXPECT_FALSE(met.answer.connected) << call.toStdString();
    expectNothingHappened(call, met, 0);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ARefusedConnectionCostsNothingAndCountsNoPost) { expectNoConnection(QStringLiteral("refuse")); }

TEST(SandboxFaults, AProxyThatClosesCostsNothingAndCountsNoPost) { expectNoConnection(QStringLiteral("close")); }

TEST(SandboxFaults, ABrokenHandshakeCostsNothingAndCountsNoPost) { expectNoConnection(QStringLiteral("break-tls")); }

TEST(SandboxFaults, AnUntrustedCertificateCostsNothingAndCountsNoPost) {
  expectNoConnection(QStringLiteral("untrusted"));
}

TEST(SandboxFaults, ACloseBeforeReadingCostsNothingButThePostWasSeen) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("close-before-reading"));
    EXPECT_TRUE(met.answer.raw.isEmpty()) << call.toStdString();
    expectNothingHappened(call, met, 1);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ADropCarriesTheCallOutWithoutAByteOfAnswer) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("drop"));
    EXPECT_TRUE(met.answer.connected) << call.toStdString();
    EXPECT_TRUE(met.answer.raw.isEmpty()) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ACutStatusLineCarriesTheCallOut) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("cut-status-line"));
    EXPECT_EQ(met.answer.raw, "HTTP/1.") << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, AServerErrorComesAfterTheCallWasCarriedOut) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("server-error"));
    EXPECT_EQ(met.answer.status, 500) << call.toStdString();
    EXPECT_TRUE(met.answer.json().contains(QStringLiteral("detail"))) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ABadGatewayAnswersHtmlAfterTheCallWasCarriedOut) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("bad-gateway"));
    EXPECT_EQ(met.answer.status, 502) << call.toStdString();
    EXPECT_EQ(met.answer.header("Content-Type"), "text/html");
    EXPECT_TRUE(met.answer.body.contains("nginx")) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, GarbageIsA200ThatIsNoJsonAfterTheCallWasCarriedOut) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("garbage"));
    EXPECT_EQ(met.answer.status, 200) << call.toStdString();
    EXPECT_FALSE(met.answer.body.isEmpty()) << call.toStdString();
    EXPECT_TRUE(met.answer.json().isEmpty()) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, AnEmptyAnswerIsA200WithoutABody) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("empty"));
    EXPECT_EQ(met.answer.status, 200) << call.toStdString();
    EXPECT_TRUE(met.answer.body.isEmpty()) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ACutBodyUnderItsFullLengthEndsTooSoon) {
  FaultStage stage;
  for (const QString& call : {QStringLiteral("submit"), QStringLiteral("status"), QStringLiteral("result"),
                              QStringLiteral("upload-start"), QStringLiteral("download")}) {
    const Met met = stage.meet(call, QStringLiteral("cut-with-length"));
    EXPECT_TRUE(met.answer.announcedLength) << call.toStdString();
    EXPECT_FALSE(met.answer.complete) << call.toStdString();
    EXPECT_FALSE(met.answer.body.isEmpty()) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ACutBodyWithoutALengthLooksLikeAWholeOne) {
  FaultStage stage;
  const qsizetype wholePicture = stage.make(QStringLiteral("download")).answer.body.size();
  for (const QString& call : {QStringLiteral("submit"), QStringLiteral("status"), QStringLiteral("result"),
                              QStringLiteral("upload-start"), QStringLiteral("download")}) {
    const Met met = stage.meet(call, QStringLiteral("cut-without-length"));
    EXPECT_EQ(met.answer.status, 200) << call.toStdString();
    EXPECT_FALSE(met.answer.announcedLength) << call.toStdString();
    EXPECT_FALSE(met.answer.body.isEmpty()) << call.toStdString();
    if (call == QStringLiteral("download"))
      EXPECT_EQ(met.answer.body.size(), wholePicture / 2);
    else
      EXPECT_TRUE(met.answer.json().isEmpty()) << call.toStdString();
    expectCarriedOut(call, met);
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, SlowBytesArriveWhole) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const Met met = stage.meet(call, QStringLiteral("slow"), {{QStringLiteral("bytesPerSecond"), 20'000}});
    EXPECT_EQ(met.answer.status, 200) << call.toStdString();
    EXPECT_TRUE(met.answer.complete) << call.toStdString();
    expectCarriedOut(call, met);
  }
}

TEST(SandboxFaults, SlowBytesTakeTheTimeThatTheyAreGiven) {
  FaultStage stage;
  const qsizetype bytes = stage.make(QStringLiteral("download")).answer.body.size();
  QElapsedTimer timer;
  timer.start();
  stage.meet(QStringLiteral("download"), QStringLiteral("slow"), {{QStringLiteral("bytesPerSecond"), int(bytes * 2)}});
  EXPECT_GT(timer.elapsed(), 350);
}

TEST(SandboxFaults, AReplyMayStandTwoTimesOnTheWire) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const auto request = stage.request(call);
    const auto purchases = stage.sandbox.ledger().size();
    const int posts = stage.sandbox.posts();
    stage.sandbox.addFault(call, QStringLiteral("twice"));
    const auto socket = stage.client.begin(request.method, request.url, request.body, request.key);
    QByteArray raw;
    while (raw.count("HTTP/1.1 200 OK") < 2 && socket->waitForReadyRead(30'000)) raw += socket->readAll();
    EXPECT_EQ(raw.count("HTTP/1.1 200 OK"), 2) << call.toStdString();
    EXPECT_EQ(stage.sandbox.ledger().size() - purchases, call == QStringLiteral("submit") ? 1 : 0);
    EXPECT_EQ(stage.sandbox.posts() - posts, FaultStage::isPost(call) ? 1 : 0);
  }
}

TEST(SandboxFaults, ARedirectLeadsAwayAndNothingHappens) {
  FaultStage stage;
  for (const QString& call : FaultStage::calls()) {
    const bool paid = call == QStringLiteral("submit");
    for (const int status : paid ? std::vector{301, 302, 303, 307, 308} : std::vector{307}) {
      const Met met = stage.meet(call, QStringLiteral("redirect"), {{QStringLiteral("status"), status}});
      EXPECT_EQ(met.answer.status, status) << call.toStdString();
      EXPECT_EQ(met.answer.header("Location"), "https://elsewhere.example/redirected");
      expectNothingHappened(call, met, 1);
    }
  }
  for (const QJsonObject& call : stage.sandbox.calls())
    EXPECT_NE(call.value(QStringLiteral("host")).toString(), QStringLiteral("elsewhere.example"));
}

const std::vector<std::pair<const char16_t*, int>>& refusals() {
  static const std::vector<std::pair<const char16_t*, int>> all{
      {u"unauthorized", 401}, {u"locked", 403},  {u"not-found", 404},    {u"gone", 404},
      {u"conflict", 409},     {u"invalid", 422}, {u"rate-limited", 429}, {u"unavailable", 503}};
  return all;
}

void expectRefusals(const QStringList& calls) {
  FaultStage stage;
  for (const QString& call : calls) {
    for (const auto& [name, status] : refusals()) {
      const Met met = stage.meet(call, QString::fromUtf16(name));
      EXPECT_EQ(met.answer.status, status) << call.toStdString();
      EXPECT_TRUE(met.answer.json().contains(QStringLiteral("detail"))) << call.toStdString();
      expectNothingHappened(call, met, 1);
    }
    expectWholeAgain(stage, call);
  }
}

TEST(SandboxFaults, ARefusedSubmitCostsNothingAndItsPostWasSeen) { expectRefusals({QStringLiteral("submit")}); }

TEST(SandboxFaults, ARefusedStatusOrResultChangesNothing) {
  expectRefusals({QStringLiteral("status"), QStringLiteral("result")});
}

TEST(SandboxFaults, ARefusedUploadOrDownloadChangesNothing) {
  expectRefusals({QStringLiteral("upload-start"), QStringLiteral("upload"), QStringLiteral("download")});
}

TEST(SandboxFaults, AnyAnswerMayBeScriptedWithOrWithoutItsCharge) {
  FaultStage stage;
  const QJsonObject teapot{{QStringLiteral("status"), 418},
                           {QStringLiteral("body"), QStringLiteral("short and stout")}};
  const Met free = stage.meet(QStringLiteral("submit"), QStringLiteral("answer"), teapot);
  EXPECT_EQ(free.answer.status, 418);
  EXPECT_EQ(free.answer.body, "short and stout");
  EXPECT_EQ(free.purchases, 0);
  QJsonObject charged = teapot;
  charged.insert(QStringLiteral("charged"), true);
  EXPECT_EQ(stage.meet(QStringLiteral("submit"), QStringLiteral("answer"), charged).purchases, 1);
}

TEST(SandboxFaults, AServerErrorMayAlsoComeBeforeTheCharge) {
  FaultStage stage;
  const Met met =
      stage.meet(QStringLiteral("submit"), QStringLiteral("server-error"), {{QStringLiteral("charged"), false}});
  EXPECT_EQ(met.answer.status, 500);
  expectNothingHappened(QStringLiteral("submit"), met, 1);
}

}  // namespace
}  // namespace sorvan::test
