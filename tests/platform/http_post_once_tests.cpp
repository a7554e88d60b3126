#include <gtest/gtest.h>

#include "platform/http_client.h"
#include "support/raw_server.h"
#include "support/run_task.h"
#include "support/test_certificates.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;
using std::chrono::milliseconds;

static HttpRequest purchase(const QUrl& url) {
  HttpRequest request;
  request.url = url;
  request.verb = "POST";
  request.headers = {{"Content-Type", "application/json"}, {"Authorization", "Key secret"}};
  request.body = "{\"prompt\":\"a picture\"}";
  request.idleTimeout = milliseconds(3000);
  return request;
}

static HttpRequest purchase(const RawServer& server) { return purchase(QUrl(server.address())); }

// Until the session of the exchange is gone and its connections are closed: nothing can be sent after that.
static void settle(RawServer& server) {
  runPosted();
  runUntil([&] { return server.openConnections == 0; });
  runPosted();
}

static PostOutcome post(RawServer& server) {
  HttpClient client;
  PostOutcome outcome = runTask(client.postOnce(purchase(server), {}));
  settle(server);
  return outcome;
}

TEST(PostOnce, AnAnswerIsReturnedWholeWithItsFate) {
  RawServer server;
  server.answer(httpAnswer(200, "{\"request_id\":\"1\"}", "X-Fal-Id: 7\r\n"));
  const PostOutcome outcome = post(server);
  EXPECT_EQ(outcome.fate, PostFate::Answered);
  ASSERT_TRUE(outcome.reply);
  EXPECT_EQ(outcome.reply->status, 200);
  EXPECT_EQ(outcome.reply->body, "{\"request_id\":\"1\"}");
  EXPECT_EQ(outcome.reply->header("x-fal-id"), "7");
  EXPECT_EQ(server.posts(), 1);
  EXPECT_EQ(server.requests.at(0).body, "{\"prompt\":\"a picture\"}");
  EXPECT_TRUE(server.requests.at(0).hasHeader("Content-Length"));
}

TEST(PostOnce, AServerThatClosesAfterReadingSeesOnePost) {
  RawServer server;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) { socket->disconnectFromHost(); };
  const PostOutcome outcome = post(server);
  EXPECT_EQ(server.posts(), 1);
  EXPECT_EQ(outcome.fate, PostFate::Unknown);
  EXPECT_FALSE(outcome.reply);
  EXPECT_FALSE(outcome.problem.isEmpty());
}

TEST(PostOnce, AServerThatResetsTheConnectionSeesOnePost) {
  RawServer server;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) { socket->abort(); };
  EXPECT_EQ(post(server).fate, PostFate::Unknown);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, AServerThatClosesWithinTheStatusLineSeesOnePost) {
  RawServer server;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) { sendAndClose(socket, "HTTP/1.1 20"); };
  EXPECT_EQ(post(server).fate, PostFate::Unknown);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, AServerThatClosesWithinTheHeadersSeesOnePost) {
  RawServer server;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) { sendAndClose(socket, "HTTP/1.1 200 OK\r\nConte"); };
  EXPECT_EQ(post(server).fate, PostFate::Unknown);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, AnAnswerThatIsCutShortIsUnknown) {
  RawServer server;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    sendAndClose(socket, "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"request");
  };
  const PostOutcome outcome = post(server);
  EXPECT_EQ(outcome.fate, PostFate::Unknown);
  EXPECT_FALSE(outcome.reply);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, AServerThatClosesBeforeReadingIsSentNoSecondBody) {
  RawServer server;
  server.onConnection = [](QSslSocket* socket) { socket->abort(); };
  const PostOutcome outcome = post(server);
  EXPECT_NE(outcome.fate, PostFate::Answered);
  EXPECT_LE(server.posts(), 1);
}

TEST(PostOnce, AServerThatClosesAfterTheHeadSeesOnePost) {
  RawServer server;
  server.onHead = [](QSslSocket* socket, const RawRequest&) { socket->abort(); };
  HttpRequest request = purchase(server);
  request.body = QByteArray(4 << 20, 'x');
  HttpClient client;
  const PostOutcome outcome = runTask(client.postOnce(request, {}));
  settle(server);
  EXPECT_EQ(outcome.fate, PostFate::Unknown);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, ALargeBodyLeavesWhole) {
  RawServer server;
  server.answer(httpAnswer(200, "{}"));
  HttpRequest request = purchase(server);
  request.body = QByteArray("0123456789abcdef").repeated(1 << 18);
  HttpClient client;
  EXPECT_EQ(runTask(client.postOnce(request, {})).fate, PostFate::Answered);
  ASSERT_EQ(server.requests.size(), 1u);
  EXPECT_TRUE(server.requests.at(0).body == request.body);
}

TEST(PostOnce, APortThatRefusesMeansNotSent) {
  RawServer server;
  const QUrl url(server.address());
  server.close();
  HttpClient client;
  const PostOutcome outcome = runTask(client.postOnce(purchase(url), {}));
  EXPECT_EQ(outcome.fate, PostFate::NotSent);
  EXPECT_FALSE(outcome.problem.isEmpty());
}

TEST(PostOnce, RefusalsMeanNotSentAndAllElseIsUnknown) {
  const std::map<int, PostFate> fates{
      {200, PostFate::Answered}, {201, PostFate::Answered}, {202, PostFate::Answered}, {302, PostFate::Unknown},
      {303, PostFate::Unknown},  {400, PostFate::NotSent},  {401, PostFate::NotSent},  {402, PostFate::NotSent},
      {403, PostFate::NotSent},  {404, PostFate::NotSent},  {405, PostFate::NotSent},  {408, PostFate::Unknown},
      {409, PostFate::Unknown},  {413, PostFate::NotSent},  {415, PostFate::NotSent},  {422, PostFate::NotSent},
      {425, PostFate::Unknown},  {429, PostFate::NotSent},  {499, PostFate::Unknown},  {500, PostFate::Unknown},
      {502, PostFate::Unknown},  {503, PostFate::Unknown},  {504, PostFate::Unknown}};
  HttpClient client;
  for (const auto& [status, fate] : fates) {
    RawServer server;
    server.answer(httpAnswer(status, "{\"detail\":\"why\"}", "Location: /elsewhere\r\nWWW-Authenticate: Basic\r\n"));
    const PostOutcome outcome = runTask(client.postOnce(purchase(server), {}));
    EXPECT_EQ(outcome.fate, fate) << status;
    ASSERT_TRUE(outcome.reply) << status;
    EXPECT_EQ(outcome.reply->status, status);
    EXPECT_EQ(outcome.reply->body, "{\"detail\":\"why\"}") << status;
    EXPECT_EQ(server.posts(), 1) << status;
  }
}

TEST(PostOnce, ARedirectIsNotFollowedAndTheKeyGoesNowhere) {
  for (const int status : {301, 302, 303, 307, 308}) {
    RawServer elsewhere;
    RawServer server;
    server.answer(httpAnswer(status, {}, "Location: " + elsewhere.address().toLatin1() + "\r\n"));
    EXPECT_EQ(post(server).fate, PostFate::Unknown) << status;
    EXPECT_EQ(server.posts(), 1) << status;
    settle(elsewhere);
    EXPECT_EQ(elsewhere.connections, 0) << status;
  }
}

TEST(PostOnce, SilenceEndsAsUnknownAfterOnePost) {
  RawServer server;
  HttpClient client;
  HttpRequest request = purchase(server);
  request.idleTimeout = milliseconds(150);
  const PostOutcome outcome = runTask(client.postOnce(request, {}));
  EXPECT_EQ(outcome.fate, PostFate::Unknown);
  EXPECT_EQ(outcome.problem, QStringLiteral("The server did not answer in time."));
  settle(server);
  EXPECT_EQ(server.posts(), 1);
}

TEST(PostOnce, AStopBeforehandSendsNothing) {
  RawServer server;
  HttpClient client;
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(runTask(client.postOnce(purchase(server), stop.get_token())), Cancelled);
  settle(server);
  EXPECT_EQ(server.connections, 0);
}

TEST(PostOnce, AStopThatComesBeforeTheBodyWasReadCancels) {
  RawServer server;
  HttpClient client;
  std::stop_source stop;
  auto task = client.postOnce(purchase(server), stop.get_token());
  stop.request_stop();
  EXPECT_THROW(runTask(std::move(task)), Cancelled);
  settle(server);
  EXPECT_LE(server.posts(), 1);
  for (const RawRequest& request : server.requests) EXPECT_TRUE(request.body.isEmpty());
}

TEST(PostOnce, AStopOnceTheBodyLeftIsShieldedAndTheAnswerIsReturned) {
  RawServer server;
  HttpClient client;
  std::stop_source stop;
  server.onRequest = [&](QSslSocket* socket, const RawRequest&) {
    stop.request_stop();
    runPosted();
    socket->write(httpAnswer(200, "{\"request_id\":\"paid\"}"));
  };
  const PostOutcome outcome = runTask(client.postOnce(purchase(server), stop.get_token()));
  EXPECT_EQ(outcome.fate, PostFate::Answered);
  ASSERT_TRUE(outcome.reply);
  EXPECT_EQ(outcome.reply->body, "{\"request_id\":\"paid\"}");
}

TEST(PostOnce, EachGoesOutOnAConnectionOfItsOwn) {
  RawServer server;
  server.answer(httpAnswer(200, "{}"));
  HttpClient client;
  for (int round = 0; round < 3; ++round) runTask(client.postOnce(purchase(server), {}));
  EXPECT_EQ(server.connections, 3);
  EXPECT_EQ(server.posts(), 3);
}

TEST(PostOnce, AKeyWithALineBreakIsNotSent) {
  RawServer server;
  HttpRequest request = purchase(server);
  request.headers.push_back({"X", "a\r\nEvil: b"});
  HttpClient client;
  EXPECT_EQ(runTask(client.postOnce(request, {})).fate, PostFate::NotSent);
  EXPECT_EQ(server.connections, 0);
}

static ServiceConfiguration proxyAt(const RawServer& proxy, const QByteArray& authority) {
  ServiceConfiguration service;
  service.proxyHost = QStringLiteral("127.0.0.1");
  service.proxyPort = proxy.serverPort();
  service.authority = authority;
  return service;
}

TEST(PostOnce, GoesThroughTheProxyOverTlsThatItsAuthoritySigned) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  proxy.answer(httpAnswer(200, "{}"));
  HttpClient client(proxyAt(proxy, testAuthority));
  const PostOutcome outcome = runTask(client.postOnce(purchase(QUrl(QStringLiteral("https://service.test/a"))), {}));
  EXPECT_EQ(outcome.fate, PostFate::Answered) << outcome.problem.toStdString();
  EXPECT_EQ(proxy.posts(), 1);
  ASSERT_FALSE(proxy.requests.empty());
  EXPECT_TRUE(proxy.requests.at(0).head.startsWith("CONNECT service.test:443 "));
  EXPECT_FALSE(proxy.requests.at(0).hasHeader("Authorization"));
}

TEST(PostOnce, ACertificateOfAnotherAuthorityMeansNotSent) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  HttpClient client(proxyAt(proxy, {}));
  const PostOutcome outcome = runTask(client.postOnce(purchase(QUrl(QStringLiteral("https://service.test/a"))), {}));
  EXPECT_EQ(outcome.fate, PostFate::NotSent);
  EXPECT_EQ(proxy.posts(), 0);
}

TEST(PostOnce, ACertificateForAnotherNameMeansNotSent) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  HttpClient client(proxyAt(proxy, testAuthority));
  const PostOutcome outcome = runTask(client.postOnce(purchase(QUrl(QStringLiteral("https://stranger.test/a"))), {}));
  EXPECT_EQ(outcome.fate, PostFate::NotSent);
  EXPECT_EQ(proxy.posts(), 0);
}

TEST(PostOnce, AProxyThatRefusesMeansNotSent) {
  for (const int status : {403, 407, 502, 503}) {
    RawServer proxy;
    proxy.answer(httpAnswer(status));
    HttpClient client(proxyAt(proxy, testAuthority));
    const PostOutcome outcome = runTask(client.postOnce(purchase(QUrl(QStringLiteral("https://service.test/a"))), {}));
    EXPECT_EQ(outcome.fate, PostFate::NotSent) << status << ' ' << outcome.problem.toStdString();
    EXPECT_FALSE(outcome.reply) << status;
    EXPECT_EQ(proxy.posts(), 0);
  }
}

TEST(PostOnce, AProxyThatStaysSilentMeansNotSent) {
  RawServer proxy;
  HttpClient client(proxyAt(proxy, testAuthority));
  HttpRequest request = purchase(QUrl(QStringLiteral("https://service.test/a")));
  request.idleTimeout = milliseconds(200);
  EXPECT_EQ(runTask(client.postOnce(request, {})).fate, PostFate::NotSent);
  EXPECT_EQ(proxy.posts(), 0);
}

TEST(PostOnce, AConnectionOverTlsThatDropsAfterReadingSeesOnePost) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  proxy.onRequest = [](QSslSocket* socket, const RawRequest&) { socket->abort(); };
  HttpClient client(proxyAt(proxy, testAuthority));
  const PostOutcome outcome = runTask(client.postOnce(purchase(QUrl(QStringLiteral("https://service.test/a"))), {}));
  settle(proxy);
  EXPECT_EQ(outcome.fate, PostFate::Unknown);
  EXPECT_EQ(proxy.posts(), 1);
}

}  // namespace sorvan::test
