// Faults of what an answer says: handles, states, results and media that are not as they should be.
#include <gtest/gtest.h>

#include <QImage>

#include "sandbox/fault_stage.h"

namespace sorvan::test {
namespace {

QString stateOf(const WireAnswer& answer) { return answer.json().value(QStringLiteral("status")).toString(); }

TEST(SandboxContentFaults, ASubmitMayAnswerWithoutItsHandleThoughItWasCharged) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("submit"), QStringLiteral("no-handle"));
  EXPECT_EQ(met.answer.status, 200);
  EXPECT_FALSE(met.answer.json().isEmpty());
  for (const char16_t* field : {u"request_id", u"status_url", u"response_url", u"cancel_url"})
    EXPECT_FALSE(met.answer.json().contains(QString::fromUtf16(field)));
  EXPECT_EQ(met.purchases, 1);
  EXPECT_EQ(met.posts, 1);
}

TEST(SandboxContentFaults, ASubmitsAddressesMayLeadElsewhereThoughItsIdIsGood) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("submit"), QStringLiteral("elsewhere"));
  EXPECT_EQ(QUrl(met.answer.json().value(QStringLiteral("status_url")).toString()).host(),
            QStringLiteral("elsewhere.example"));
  const QString id = met.answer.json().value(QStringLiteral("request_id")).toString();
  EXPECT_NE(stage.client.get(queueUrl(QStringLiteral("fal-ai/flux/requests/") + id + QStringLiteral("/status"))).status,
            404);
  EXPECT_EQ(met.purchases, 1);
  EXPECT_EQ(met.posts, 1);
}

TEST(SandboxContentFaults, AKeyThatIsSentElsewhereIsNoted) {
  FaultStage stage;
  stage.client.get(QUrl(QStringLiteral("https://elsewhere.example/fal-ai/flux/requests/x/status")), Client::Key::Good);
  const QJsonObject call = stage.sandbox.calls().last();
  EXPECT_EQ(call.value(QStringLiteral("host")).toString(), QStringLiteral("elsewhere.example"));
  EXPECT_EQ(call.value(QStringLiteral("key")).toString(), QStringLiteral("good"));
}

TEST(SandboxContentFaults, AStatusMayFallBackAndThenBeWhatItIs) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("status"), QStringLiteral("backwards"));
  EXPECT_EQ(met.answer.status, 202);
  EXPECT_EQ(stateOf(met.answer), QStringLiteral("IN_QUEUE"));
  EXPECT_EQ(stateOf(stage.make(QStringLiteral("status")).answer), QStringLiteral("COMPLETED"));
  EXPECT_EQ(met.purchases, 0);
}

TEST(SandboxContentFaults, AStatusMayNameAStateThatNoDocumentNames) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("status"), QStringLiteral("unknown-state"));
  EXPECT_FALSE((QStringList{QStringLiteral("IN_QUEUE"), QStringLiteral("IN_PROGRESS"), QStringLiteral("COMPLETED")})
                   .contains(stateOf(met.answer)));
  EXPECT_FALSE(stateOf(met.answer).isEmpty());
  EXPECT_EQ(met.purchases, 0);
}

TEST(SandboxContentFaults, AStatusMayTellOfAFailedJob) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("status"), QStringLiteral("job-error"));
  EXPECT_EQ(stateOf(met.answer), QStringLiteral("COMPLETED"));
  EXPECT_EQ(met.answer.json().value(QStringLiteral("error_type")).toString(), QStringLiteral("request_timeout"));
  EXPECT_EQ(met.purchases, 0);
}

TEST(SandboxContentFaults, AResultMayBeGoneForAsLongAsTheScriptSays) {
  FaultStage stage;
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(
        stage.meet(QStringLiteral("result"), QStringLiteral("gone"), {{QStringLiteral("times"), -1}}).answer.status,
        404);
  stage.sandbox.clearFaults();
  EXPECT_EQ(stage.make(QStringLiteral("result")).answer.status, 200);
  EXPECT_EQ(stage.sandbox.ledger().size(), 1);
  EXPECT_EQ(stage.sandbox.posts(), 1);
}

TEST(SandboxContentFaults, AResultOnAnotherHostIsServedThere) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("result"), QStringLiteral("elsewhere"));
  const QJsonObject file = met.answer.json().value(QStringLiteral("images")).toArray().first().toObject();
  EXPECT_EQ(QUrl(file.value(QStringLiteral("url")).toString()).host(), QStringLiteral("elsewhere.example"));
  EXPECT_EQ(QImage::fromData(stage.client.download(file), "PNG").size(), QSize(64, 48));
  EXPECT_EQ(met.purchases, 0);
  EXPECT_EQ(met.posts, 0);
}

TEST(SandboxContentFaults, AResultMayBeRefusedByTheModel) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("result"), QStringLiteral("invalid"));
  EXPECT_EQ(met.answer.status, 422);
  const QJsonObject detail = met.answer.json().value(QStringLiteral("detail")).toArray().first().toObject();
  EXPECT_EQ(detail.value(QStringLiteral("type")).toString(), QStringLiteral("content_policy_violation"));
}

TEST(SandboxContentFaults, AnUploadsStartMayAnswerWithoutAPlace) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("upload-start"), QStringLiteral("no-handle"));
  EXPECT_EQ(met.answer.status, 200);
  EXPECT_TRUE(met.answer.json().isEmpty());
  EXPECT_EQ(met.posts, 1);
  EXPECT_EQ(met.purchases, 0);
}

TEST(SandboxContentFaults, ADownloadMayNotBeTheMediaItClaims) {
  FaultStage stage;
  const Met met = stage.meet(QStringLiteral("download"), QStringLiteral("wrong-media"));
  EXPECT_EQ(met.answer.status, 200);
  EXPECT_TRUE(met.answer.complete);
  EXPECT_EQ(met.answer.header("Content-Type"), "image/png");
  EXPECT_TRUE(QImage::fromData(met.answer.body).isNull());
  EXPECT_FALSE(QImage::fromData(stage.make(QStringLiteral("download")).answer.body).isNull());
  EXPECT_EQ(met.purchases, 0);
}

TEST(SandboxContentFaults, ACancelMayFail) {
  FaultStage stage;
  EXPECT_EQ(stage.meet(QStringLiteral("cancel"), QStringLiteral("server-error")).answer.status, 500);
  EXPECT_EQ(stage.make(QStringLiteral("cancel")).answer.status, 400);
}

TEST(SandboxContentFaults, ThePlatformMayFailToo) {
  SandboxProcess sandbox;
  const Client client(sandbox);
  const QUrl models(QStringLiteral("https://api.fal.ai/v1/models"));
  sandbox.addFault(QStringLiteral("models"), QStringLiteral("garbage"));
  EXPECT_TRUE(client.get(models).json().isEmpty());
  EXPECT_FALSE(client.get(models).json().isEmpty());
}

}  // namespace
}  // namespace sorvan::test
