// The script of faults itself: which calls it meets, how often, and what it refuses; and that the counts bite.
#include <gtest/gtest.h>

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <stdexcept>

#include "sandbox/fault_stage.h"

namespace sorvan::test {
namespace {

const QString submit = QStringLiteral("submit");

std::vector<int> statuses(const Client& client, const QString& endpoint, int count) {
  std::vector<int> all;
  for (int i = 0; i < count; ++i) all.push_back(client.submit(endpoint, tinyPicture(i)).status);
  return all;
}

TEST(SandboxScript, AFaultLeavesTheFirstCallsAloneAndThenMeetsSoMany) {
  SandboxProcess sandbox;
  sandbox.addFault(submit, QStringLiteral("server-error"), {{QStringLiteral("skip"), 1}, {QStringLiteral("times"), 2}});
  EXPECT_EQ(statuses(Client(sandbox), painter, 4), (std::vector<int>{200, 500, 500, 200}));
  EXPECT_EQ(sandbox.ledger().size(), 4);
}

TEST(SandboxScript, FaultsAreMetInTheirOrder) {
  SandboxProcess sandbox;
  sandbox.addFault(submit, QStringLiteral("locked"));
  sandbox.addFault(submit, QStringLiteral("rate-limited"));
  EXPECT_EQ(statuses(Client(sandbox), painter, 3), (std::vector<int>{403, 429, 200}));
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(sandbox.postsTo(painter), 3);
}

TEST(SandboxScript, AFaultOfOneEndpointLeavesTheOthersAlone) {
  SandboxProcess sandbox;
  const QString other = QStringLiteral("fal-ai/nano-banana-2");
  sandbox.addFault(submit, QStringLiteral("locked"),
                   {{QStringLiteral("endpoint"), other}, {QStringLiteral("times"), -1}});
  const Client client(sandbox);
  EXPECT_EQ(statuses(client, painter, 2), (std::vector<int>{200, 200}));
  EXPECT_EQ(statuses(client, other, 2), (std::vector<int>{403, 403}));
}

TEST(SandboxScript, AFileOfFaultsHoldsFromTheStart) {
  QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("faults.json")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(R"([{"call":"submit","kind":"server-error"},{"call":"submit","kind":"locked"}])");
  file.close();
  const SandboxProcess sandbox({.more = {QStringLiteral("--faults"), file.fileName()}});
  EXPECT_EQ(statuses(Client(sandbox), painter, 3), (std::vector<int>{500, 403, 200}));
  EXPECT_EQ(sandbox.ledger().size(), 2);
}

TEST(SandboxScript, AFaultOrCallThatNobodyKnowsIsRefused) {
  SandboxProcess sandbox;
  EXPECT_THROW(sandbox.addFault(submit, QStringLiteral("bad-hair-day")), std::runtime_error);
  EXPECT_THROW(sandbox.addFault(QStringLiteral("whistle"), QStringLiteral("drop")), std::runtime_error);
  EXPECT_THROW(sandbox.addFault(submit, QStringLiteral("hold"), {{QStringLiteral("at"), QStringLiteral("noon")}}),
               std::runtime_error);
  EXPECT_EQ(sandbox.state().value(QStringLiteral("faults")).toInt(), 0);
}

TEST(SandboxScript, EveryCallIsNotedInOrderWithItsKeyAndAnswer) {
  SandboxProcess sandbox;
  sandbox.addFault(submit, QStringLiteral("drop"));
  const Client client(sandbox);
  client.submit(painter, tinyPicture());
  client.submit(painter, tinyPicture(), Client::Key::Wrong);
  const QList<QJsonObject> calls = sandbox.calls();
  ASSERT_EQ(calls.size(), 2);
  EXPECT_EQ(calls[0].value(QStringLiteral("answer")).toString(), QStringLiteral("drop"));
  EXPECT_EQ(calls[0].value(QStringLiteral("key")).toString(), QStringLiteral("good"));
  EXPECT_EQ(calls[1].value(QStringLiteral("answer")).toString(), QStringLiteral("401"));
  EXPECT_EQ(calls[1].value(QStringLiteral("key")).toString(), QStringLiteral("wrong"));
  EXPECT_EQ(sandbox.callCount(submit), 2);
}

TEST(SandboxScript, AFaultCanBeAddedWhileAConnectionIsKeptAlive) {
  FaultStage stage;
  const auto request = stage.request(QStringLiteral("status"));
  const auto socket = stage.client.begin(request.method, request.url);
  EXPECT_EQ(stage.client.finish(*socket).status, 200);
  stage.sandbox.addFault(QStringLiteral("status"), QStringLiteral("refuse"));
  EXPECT_TRUE(socket->state() == QAbstractSocket::UnconnectedState || socket->waitForDisconnected(30'000));
  EXPECT_FALSE(stage.client.get(request.url).connected);
  EXPECT_TRUE(stage.client.get(request.url).connected);
}

// A network library that posts again by itself is caught by the counts.
class NetworkLibrary {
 public:
  explicit NetworkLibrary(const SandboxProcess& sandbox) : key_(sandbox.key()) {
    access_.setProxy(QNetworkProxy(QNetworkProxy::HttpProxy, sandbox.proxyHost(), sandbox.proxyPort()));
    trust_.setCaCertificates(QSslCertificate::fromPath(sandbox.authorityPath()));
  }
  QNetworkRequest request() const {
    QNetworkRequest request(queueUrl(painter));
    request.setSslConfiguration(trust_);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setRawHeader("Authorization", "Key " + key_.toUtf8());
    return request;
  }
  void finish(QNetworkReply* reply) {
    QSignalSpy finished(reply, &QNetworkReply::finished);
    ASSERT_TRUE(reply->isFinished() || finished.wait(30'000));
    reply->deleteLater();
  }
  QNetworkAccessManager& access() { return access_; }

 private:
  QString key_;
  QNetworkAccessManager access_;
  QSslConfiguration trust_ = QSslConfiguration::defaultConfiguration();
};

// Gives its bytes once and refuses to begin again.
class OneShot : public QIODevice {
 public:
  explicit OneShot(QByteArray bytes) : bytes_(std::move(bytes)) { open(QIODevice::ReadOnly); }
  bool isSequential() const override { return true; }
  bool reset() override { return false; }
  qint64 bytesAvailable() const override { return bytes_.size() - at_ + QIODevice::bytesAvailable(); }

 protected:
  qint64 readData(char* data, qint64 size) override {
    const qint64 count = qMin<qint64>(size, bytes_.size() - at_);
    if (count == 0) return -1;
    std::copy_n(bytes_.constData() + at_, count, data);
    at_ += count;
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  QByteArray bytes_;
  qint64 at_ = 0;
};

TEST(SandboxScript, ALibraryThatPostsAgainByItselfIsCaughtByCountAndLedger) {
  SandboxProcess sandbox;
  sandbox.addFault(submit, QStringLiteral("drop"), {{QStringLiteral("times"), -1}});
  NetworkLibrary library(sandbox);
  library.finish(library.access().post(library.request(), QByteArrayLiteral(R"({"prompt":"x"})")));
  EXPECT_GE(sandbox.mostPostsOfOneAttempt(), 2);
  EXPECT_GE(sandbox.ledger().size(), 2);
}

TEST(SandboxScript, AOneShotBodyIsPostedOnce) {
  SandboxProcess sandbox;
  sandbox.addFault(submit, QStringLiteral("drop"), {{QStringLiteral("times"), -1}});
  NetworkLibrary library(sandbox);
  OneShot body(QByteArrayLiteral(R"({"prompt":"x"})"));
  QNetworkRequest request = library.request();
  request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  request.setHeader(QNetworkRequest::ContentLengthHeader, body.bytesAvailable());
  library.finish(library.access().post(request, &body));
  EXPECT_EQ(sandbox.mostPostsOfOneAttempt(), 1);
  EXPECT_EQ(sandbox.ledger().size(), 1);
}

TEST(SandboxScript, OneConnectionServesManyRequestsOfALibrary) {
  SandboxProcess sandbox;
  NetworkLibrary library(sandbox);
  for (int i = 0; i < 3; ++i)
    library.finish(library.access().post(library.request(), QByteArrayLiteral(R"({"prompt":"x"})")));
  EXPECT_EQ(sandbox.ledger().size(), 3);
  EXPECT_EQ(sandbox.posts(), 3);
}

}  // namespace
}  // namespace sorvan::test
