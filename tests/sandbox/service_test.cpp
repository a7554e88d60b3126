// How queue, storage and platform answer when nothing is wrong.
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QProcess>

#include "sandbox/client.h"

namespace sorvan::test {
namespace {

const QString painter = QStringLiteral("fal-ai/flux/schnell");
const QJsonObject picture =
    inputWith(QStringLiteral("a sea"), 1, {{QStringLiteral("image_size"), QStringLiteral("square")}});

QString stateOf(const WireAnswer& answer) { return answer.json().value(QStringLiteral("status")).toString(); }

TEST(SandboxQueue, AHandleHoldsOnlyOwnerAndApplicationInItsAddresses) {
  const SandboxProcess sandbox;
  const WireAnswer answer = Client(sandbox).submit(painter, picture);
  EXPECT_EQ(answer.status, 200);
  const QString id = answer.json().value(QStringLiteral("request_id")).toString();
  const QString address = QStringLiteral("https://queue.fal.run/fal-ai/flux/requests/") + id;
  EXPECT_EQ(answer.json().value(QStringLiteral("response_url")).toString(), address);
  EXPECT_EQ(answer.json().value(QStringLiteral("status_url")).toString(), address + QStringLiteral("/status"));
  EXPECT_EQ(answer.json().value(QStringLiteral("cancel_url")).toString(), address + QStringLiteral("/cancel"));
}

TEST(SandboxQueue, AJobWaitsRunsAndCompletes) {
  SandboxProcess sandbox;
  sandbox.setManualPace(true);
  const Client client(sandbox);
  const QJsonObject handle = client.submit(painter, picture).json();
  const WireAnswer queued = client.getJson(handle, u"status_url");
  EXPECT_EQ(queued.status, 202);
  EXPECT_EQ(stateOf(queued), QStringLiteral("IN_QUEUE"));
  EXPECT_EQ(queued.json().value(QStringLiteral("queue_position")).toInt(-1), 0);
  sandbox.step();
  const WireAnswer running = client.getJson(handle, u"status_url");
  EXPECT_EQ(running.status, 202);
  EXPECT_EQ(stateOf(running), QStringLiteral("IN_PROGRESS"));
  const WireAnswer early = client.getJson(handle, u"response_url");
  EXPECT_EQ(early.status, 400);
  EXPECT_EQ(early.json().value(QStringLiteral("detail")).toString(), QStringLiteral("Request is still in progress"));
  sandbox.step();
  WireAnswer completed = client.getJson(handle, u"status_url");
  while (stateOf(completed) == QStringLiteral("IN_PROGRESS")) completed = client.getJson(handle, u"status_url");
  EXPECT_EQ(completed.status, 200);
  EXPECT_EQ(stateOf(completed), QStringLiteral("COMPLETED"));
  EXPECT_TRUE(completed.json().value(QStringLiteral("metrics")).toObject().contains(QStringLiteral("inference_time")));
  EXPECT_EQ(client.getJson(handle, u"response_url").status, 200);
}

TEST(SandboxQueue, AJobWaitsBehindThoseThatCameBefore) {
  SandboxProcess sandbox;
  sandbox.setManualPace(true);
  const Client client(sandbox);
  client.submit(painter, picture);
  const WireAnswer second = client.submit(painter, picture);
  EXPECT_EQ(second.json().value(QStringLiteral("queue_position")).toInt(), 1);
}

TEST(SandboxQueue, LogsComeOnlyWhenTheyAreAskedFor) {
  SandboxProcess sandbox;
  sandbox.setManualPace(true);
  const Client client(sandbox);
  const QJsonObject handle = client.submit(painter, picture).json();
  sandbox.step();
  const QString address = handle.value(QStringLiteral("status_url")).toString();
  EXPECT_TRUE(client.get(QUrl(address)).json().value(QStringLiteral("logs")).isNull());
  const QJsonArray lines =
      client.get(QUrl(address + QStringLiteral("?logs=1"))).json().value(QStringLiteral("logs")).toArray();
  ASSERT_FALSE(lines.isEmpty());
  EXPECT_TRUE(lines.first().toObject().contains(QStringLiteral("message")));
}

TEST(SandboxQueue, TheFullIdAndATrailingSlashAreUnderstood) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString id = client.submit(painter, picture).json().value(QStringLiteral("request_id")).toString();
  EXPECT_NE(client.get(queueUrl(painter + QStringLiteral("/requests/") + id + QStringLiteral("/status/"))).status, 404);
}

TEST(SandboxQueue, AnUnknownRequestIsNotFound) {
  const SandboxProcess sandbox;
  const WireAnswer answer = Client(sandbox).get(queueUrl(QStringLiteral("fal-ai/flux/requests/none/status")));
  EXPECT_EQ(answer.status, 404);
  EXPECT_EQ(stateOf(answer), QStringLiteral("NOT_FOUND"));
}

TEST(SandboxQueue, AnUnknownApplicationCostsNothing) {
  const SandboxProcess sandbox;
  EXPECT_EQ(Client(sandbox).submit(QStringLiteral("acme/nothing"), picture).status, 404);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
  EXPECT_EQ(sandbox.postsTo(QStringLiteral("acme/nothing")), 1);
}

TEST(SandboxQueue, AWrongOrMissingKeyIsRefusedAndCostsNothing) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const auto detail = [&](Client::Key key) {
    const WireAnswer answer = client.submit(painter, picture, key);
    EXPECT_EQ(answer.status, 401);
    return answer.json().value(QStringLiteral("detail")).toString();
  };
  EXPECT_EQ(detail(Client::Key::Wrong), QStringLiteral("No user found for Key ID and Secret"));
  EXPECT_TRUE(detail(Client::Key::Malformed).startsWith(QStringLiteral("Invalid Key Authorization header format.")));
  EXPECT_TRUE(detail(Client::Key::None).contains(QStringLiteral("\"fal-ai/flux\"")));
  EXPECT_TRUE(sandbox.ledger().isEmpty());
  EXPECT_EQ(sandbox.postsTo(painter), 3);
}

TEST(SandboxQueue, AQueuedJobIsCancelledAtOnceARunningOneOnRequestACompletedOneNot) {
  SandboxProcess sandbox;
  sandbox.setManualPace(true);
  const Client client(sandbox);
  const auto cancel = [&](const QJsonObject& handle) {
    return client.send("PUT", QUrl(handle.value(QStringLiteral("cancel_url")).toString()));
  };
  const QJsonObject running = client.submit(painter, picture).json();
  sandbox.step();
  const QJsonObject queued = client.submit(painter, picture).json();
  const WireAnswer ofQueued = cancel(queued);
  EXPECT_EQ(ofQueued.status, 200);
  EXPECT_EQ(stateOf(ofQueued), QStringLiteral("OK"));
  const WireAnswer ofRunning = cancel(running);
  EXPECT_EQ(ofRunning.status, 202);
  EXPECT_EQ(stateOf(ofRunning), QStringLiteral("CANCELLATION_REQUESTED"));
  const WireAnswer again = cancel(queued);
  EXPECT_EQ(again.status, 400);
  EXPECT_EQ(stateOf(again), QStringLiteral("ALREADY_COMPLETED"));
  EXPECT_EQ(client.getJson(queued, u"status_url").json().value(QStringLiteral("error_type")).toString(),
            QStringLiteral("client_cancelled"));
  EXPECT_EQ(client.getJson(queued, u"response_url").status, 499);
}

TEST(SandboxQueue, ABodyThatIsNoJsonIsQueuedAndFailsItsResult) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QJsonObject handle = client.send("POST", queueUrl(painter), "{broken").json();
  while (stateOf(client.getJson(handle, u"status_url")) != QStringLiteral("COMPLETED")) {
  }
  EXPECT_EQ(client.getJson(handle, u"response_url").status, 422);
}

TEST(SandboxLedger, APurchaseNamesRunHandleEndpointAmountAndBody) {
  SandboxProcess sandbox;
  sandbox.setRun(QStringLiteral("trial 7"));
  const WireAnswer answer = Client(sandbox).submit(painter, picture);
  const QList<QJsonObject> ledger = sandbox.ledger();
  ASSERT_EQ(ledger.size(), 1);
  const QJsonObject line = ledger.first();
  EXPECT_EQ(line.value(QStringLiteral("run")).toString(), QStringLiteral("trial 7"));
  EXPECT_EQ(line.value(QStringLiteral("handle")), answer.json().value(QStringLiteral("request_id")));
  EXPECT_EQ(line.value(QStringLiteral("endpoint")).toString(), painter);
  EXPECT_DOUBLE_EQ(line.value(QStringLiteral("amount")).toDouble(), 0.04);
  const QByteArray body = QJsonDocument(picture).toJson(QJsonDocument::Compact);
  EXPECT_EQ(line.value(QStringLiteral("sha256")).toString().toLatin1(),
            QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex());
  EXPECT_EQ(sandbox.ledgerOfRun(QStringLiteral("trial 7")).size(), 1);
  EXPECT_TRUE(sandbox.ledgerOfRun(QStringLiteral("another")).isEmpty());
}

TEST(SandboxLedger, PurchasesCountsKeyAndUnfinishedJobsOutliveAKill) {
  SandboxProcess sandbox;
  sandbox.setManualPace(true);
  const QString key = sandbox.key();
  const QJsonObject handle = Client(sandbox).submit(painter, picture).json();
  sandbox.step();
  sandbox.killAndRestart();
  EXPECT_EQ(sandbox.key(), key);
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(sandbox.postsTo(painter), 1);
  const Client client(sandbox);
  while (stateOf(client.getJson(handle, u"status_url")) != QStringLiteral("COMPLETED")) {
  }
  const WireAnswer result = client.getJson(handle, u"response_url");
  EXPECT_FALSE(client.download(result.json().value(QStringLiteral("images")).toArray().first()).isEmpty());
  EXPECT_EQ(sandbox.ledger().size(), 1);
}

TEST(SandboxLedger, TheKeyStandsInNoneOfItsBooks) {
  const SandboxProcess sandbox;
  Client(sandbox).run(painter, picture);
  const QByteArray secret = sandbox.key().section(QLatin1Char(':'), 1).toLatin1();
  for (const char* name : {"ledger.jsonl", "posts.jsonl"}) {
    QFile file(sandbox.stateFolder() + QLatin1Char('/') + QLatin1StringView(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains(secret)) << name;
  }
}

TEST(SandboxStorage, AnUploadIsReadBackByItsAddress) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload("some bytes", "image/png", QStringLiteral("reference.png"));
  EXPECT_TRUE(address.startsWith(QStringLiteral("https://v3b.fal.media/files/")));
  const WireAnswer answer = client.get(QUrl(address), Client::Key::None);
  EXPECT_EQ(answer.body, "some bytes");
  EXPECT_EQ(answer.header("Content-Type"), "image/png");
}

TEST(SandboxStorage, StartingAnUploadNeedsTheKeyAndThePutMustNotShowIt) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QUrl start(QStringLiteral("https://rest.fal.ai/storage/upload/initiate?storage_type=fal-cdn-v3"));
  const QByteArray wish = R"({"content_type":"image/png","file_name":"a.png"})";
  EXPECT_EQ(client.send("POST", start, wish, Client::Key::None).status, 401);
  const QUrl place(client.send("POST", start, wish).json().value(QStringLiteral("upload_url")).toString());
  EXPECT_EQ(client.send("PUT", place, "x", Client::Key::Good).status, 400);
  QUrl forged = place;
  forged.setQuery(QStringLiteral("signature=forged"));
  EXPECT_EQ(client.send("PUT", forged, "x", Client::Key::None).status, 403);
  EXPECT_EQ(client.send("PUT", place, "x", Client::Key::None).status, 200);
  EXPECT_EQ(sandbox.postsTo(QStringLiteral("upload-start")), 2);
}

TEST(SandboxPlatform, ModelsAreFoundByIdAndByCategory) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const auto countOf = [&](const QString& query) {
    return client.get(QUrl(QStringLiteral("https://api.fal.ai/v1/models?") + query))
        .json()
        .value(QStringLiteral("models"))
        .toArray()
        .size();
  };
  EXPECT_EQ(countOf(QStringLiteral("endpoint_id=fal-ai/veo3.1")), 1);
  EXPECT_EQ(countOf(QStringLiteral("category=text-to-speech")), 12);
  EXPECT_EQ(countOf(QStringLiteral("endpoint_id=acme/none")), 0);
}

TEST(SandboxPlatform, PricesNeedTheKey) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QUrl url(QStringLiteral("https://api.fal.ai/v1/models/pricing?endpoint_id=fal-ai/flux/schnell,fal-ai/veo3.1"));
  EXPECT_EQ(client.get(url, Client::Key::None).status, 401);
  const QJsonArray prices = client.get(url).json().value(QStringLiteral("prices")).toArray();
  ASSERT_EQ(prices.size(), 2);
  EXPECT_EQ(prices[0].toObject().value(QStringLiteral("unit")).toString(), QStringLiteral("images"));
  EXPECT_GT(prices[1].toObject().value(QStringLiteral("unit_price")).toDouble(), 0);
}

TEST(SandboxProxy, OneCertificateNamesEveryHost) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  for (const char16_t* host : {u"queue.fal.run", u"fal.run", u"rest.fal.ai", u"api.fal.ai", u"fal.ai", u"v3.fal.media",
                               u"v3b.fal.media", u"fal.media", u"elsewhere.example"}) {
    const WireAnswer answer = client.get(QUrl(QStringLiteral("https://%1/nothing/here").arg(QString::fromUtf16(host))));
    EXPECT_TRUE(answer.connected) << QString::fromUtf16(host).toStdString();
    EXPECT_EQ(answer.status, 404) << QString::fromUtf16(host).toStdString();
  }
}

TEST(SandboxProxy, AHostThatIsNotOfTheServiceHasNoTunnel) {
  const SandboxProcess sandbox;
  EXPECT_FALSE(Client(sandbox).get(QUrl(QStringLiteral("https://example.com/"))).connected);
}

TEST(SandboxProgram, HelpSaysHowItStarts) {
  QProcess program;
  program.start(QStringLiteral(SORVAN_SANDBOX), {QStringLiteral("--help")});
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitCode(), 0);
  const QByteArray help = program.readAllStandardOutput();
  for (const char* word : {"--write", "--state", "--faults", "--delay", "ready", "cut-status-line", "/ledger"})
    EXPECT_TRUE(help.contains(word)) << word;
}

TEST(SandboxProgram, WithoutAPlaceForItsConfigurationItSaysWhatIsMissing) {
  QProcess program;
  program.start(QStringLiteral(SORVAN_SANDBOX), QStringList());
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitCode(), 2);
  EXPECT_TRUE(program.readAllStandardError().contains("--write FILE"));
}

}  // namespace
}  // namespace sorvan::test
