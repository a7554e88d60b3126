#include <gtest/gtest.h>

#include <cerrno>

#include "platform/http_client.h"
#include "support/failing_file_layer.h"
#include "support/raw_server.h"
#include "support/run_task.h"
#include "support/temporary_folder.h"
#include "support/test_certificates.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;
using std::chrono::milliseconds;

namespace {
struct Download : testing::Test {
  Download() { client.allowPlainHttpForTests(); }

  HttpRequest request() const {
    HttpRequest asked;
    asked.url = QUrl(server.address(QStringLiteral("/clip.mp4")));
    asked.idleTimeout = milliseconds(3000);
    asked.maximumBytes = 1LL << 30;
    return asked;
  }
  HttpReply run(const HttpRequest& asked, std::stop_token stop = {}) {
    return runTask(client.download(asked, target, stop));
  }
  std::optional<HttpProblem> problem(const HttpRequest& asked) {
    try {
      run(asked);
    } catch (const HttpError& failure) {
      return failure.problem();
    }
    return std::nullopt;
  }

  RawServer server;
  HttpClient client;
  TemporaryFolder folder;
  QString target = folder / QStringLiteral("0.part");
};
}  // namespace

TEST_F(Download, StreamsTheBodyIntoTheFile) {
  const QByteArray media = QByteArray("0123456789abcdef").repeated(1 << 18);
  server.answer(httpAnswer(200, media, "Content-Type: video/mp4\r\n"));
  const HttpReply reply = run(request());
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.header("Content-Type"), "video/mp4");
  EXPECT_TRUE(reply.body.isEmpty());
  EXPECT_TRUE(folder.read(QStringLiteral("0.part")) == media);
  EXPECT_EQ(folder.files().size(), 1);
}

// Writes `left` bytes as fast as the other side takes them, and holds no more than one piece itself.
static void pour(QSslSocket* socket, qint64 left) {
  const auto rest = std::make_shared<qint64>(left);
  const auto more = [socket, rest] {
    while (*rest > 0 && socket->bytesToWrite() < 1 << 20) *rest -= socket->write(QByteArray(1 << 16, 'x'));
  };
  QObject::connect(socket, &QSslSocket::bytesWritten, socket, more);
  more();
}

TEST_F(Download, OfALongClipHoldsOnlyPiecesInMemory) {
  struct Pieces final : FileLayer {
    qint64 largest = 0;
    qint64 write(int descriptor, const char* bytes, qint64 count) override {
      largest = std::max(largest, count);
      return FileLayer::write(descriptor, bytes, count);
    }
  } layer;
  constexpr qint64 size = 64LL << 20;
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    socket->write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(size) + "\r\n\r\n");
    pour(socket, size);
  };
  const FileLayerOverride override(layer);
  EXPECT_EQ(run(request()).status, 200);
  EXPECT_EQ(QFileInfo(target).size(), size);
  EXPECT_LE(layer.largest, 4 << 20);
}

TEST_F(Download, AnEmptyBodyIsAnEmptyFile) {
  server.answer(httpAnswer(200));
  EXPECT_EQ(run(request()).status, 200);
  EXPECT_EQ(folder.read(QStringLiteral("0.part")), "");
}

TEST_F(Download, ReplacesWhatACrashLeftOnlyWhenItIsWhole) {
  folder.write(QStringLiteral("0.part"), "old");
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    sendAndClose(socket, "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
  };
  EXPECT_EQ(problem(request()), HttpProblem::Truncated);
  EXPECT_EQ(folder.read(QStringLiteral("0.part")), "old");
  server.answer(httpAnswer(200, "new"));
  run(request());
  EXPECT_EQ(folder.read(QStringLiteral("0.part")), "new");
  EXPECT_EQ(folder.files().size(), 1);
}

TEST_F(Download, ABodyCutShortOfItsLengthLeavesNothing) {
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    sendAndClose(socket, "HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n" + QByteArray(2'000'000, 'x'));
  };
  EXPECT_EQ(problem(request()), HttpProblem::Truncated);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, AChunkedBodyThatIsCutShortIsNeverTakenForWholeMedia) {
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    sendAndClose(socket, "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n64\r\nhalf");
  };
  EXPECT_NE(problem(request()), std::nullopt);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, AnotherStatusIsAReplyWithoutAFile) {
  server.answer(httpAnswer(404, "<html>gone</html>"));
  const HttpReply reply = run(request());
  EXPECT_EQ(reply.status, 404);
  EXPECT_EQ(reply.body, "<html>gone</html>");
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, AFullDiskIsToldAndLeavesNothing) {
  server.answer(httpAnswer(200, QByteArray(3'000'000, 'x')));
  for (int step = 1; step <= 4; ++step) {
    FailingFileLayer layer(step, ENOSPC);
    const FileLayerOverride override(layer);
    EXPECT_THROW(run(request()), FileError) << "step " << step;
    EXPECT_EQ(folder.files(), QStringList()) << "step " << step;
  }
}

TEST_F(Download, ABodyThatIsTooLargeLeavesNothing) {
  server.answer(httpAnswer(200, QByteArray(5000, 'x')));
  HttpRequest asked = request();
  asked.maximumBytes = 4999;
  EXPECT_EQ(problem(asked), HttpProblem::TooLarge);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, ACancelledOneLeavesNothing) {
  std::stop_source stop;
  server.onRequest = [&](QSslSocket* socket, const RawRequest&) {
    socket->write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    stop.request_stop();
  };
  EXPECT_THROW(run(request(), stop.get_token()), Cancelled);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, SlowBytesOutliveTheTotalLimit) {
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    socket->write("HTTP/1.1 200 OK\r\nContent-Length: 30\r\n\r\n");
    auto* timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket, [socket] { socket->write("x"); });
    timer->start(10);
  };
  HttpRequest asked = request();
  asked.totalLimit = milliseconds(100);
  EXPECT_EQ(run(asked).status, 200);
  EXPECT_EQ(folder.read(QStringLiteral("0.part")).size(), 30);
}

TEST_F(Download, SilenceEndsAfterTheIdleTime) {
  server.onRequest = [](QSslSocket* socket, const RawRequest&) {
    socket->write("HTTP/1.1 200 OK\r\nContent-Length: 30\r\n\r\nxxx");
  };
  HttpRequest asked = request();
  asked.idleTimeout = milliseconds(100);
  EXPECT_EQ(problem(asked), HttpProblem::TimedOut);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, FollowsRedirectsWithoutASecret) {
  RawServer media;
  media.answer(httpAnswer(200, "media"));
  server.answer(httpAnswer(302, {}, "Location: " + media.address(QStringLiteral("/m")).toLatin1() + "\r\n"));
  const HttpReply reply = run(request());
  EXPECT_EQ(reply.url, QUrl(media.address(QStringLiteral("/m"))));
  EXPECT_EQ(folder.read(QStringLiteral("0.part")), "media");
}

TEST_F(Download, DoesNotCarryASecretToAnotherAddress) {
  RawServer media;
  server.answer(httpAnswer(302, {}, "Location: " + media.address().toLatin1() + "\r\n"));
  for (const char* name : {"authorization", "Cookie", "Idempotency-Key"}) {
    HttpRequest asked = request();
    asked.headers = {{name, "secret"}};
    EXPECT_EQ(run(asked).status, 302);
  }
  EXPECT_EQ(media.connections, 0);
  EXPECT_EQ(folder.files(), QStringList());
}

TEST_F(Download, AsksBeforeEachHop) {
  RawServer media;
  server.answer(httpAnswer(302, {}, "Location: " + media.address().toLatin1() + "\r\n"));
  HttpRequest asked = request();
  QList<QUrl> hops;
  asked.mayFollow = [&](const QUrl& url) {
    hops.append(url);
    return false;
  };
  EXPECT_EQ(run(asked).status, 302);
  EXPECT_EQ(hops, QList<QUrl>{QUrl(media.address())});
  EXPECT_EQ(media.connections, 0);
}

TEST_F(Download, GivesUpAfterFiveRedirects) {
  server.answer(httpAnswer(302, {}, "Location: /again\r\n"));
  EXPECT_EQ(run(request()).status, 302);
  EXPECT_EQ(server.requests.size(), 6u);
}

TEST_F(Download, NeverGoesToAnAddressThatIsNotSecure) {
  HttpClient strict;
  try {
    runTask(strict.download(request(), target, {}));
    FAIL() << "it asked over plain http";
  } catch (const HttpError& failure) {
    EXPECT_EQ(failure.problem(), HttpProblem::Insecure);
  }
  EXPECT_EQ(server.connections, 0);
}

TEST_F(Download, ARedirectFromHttpsToHttpIsNotFollowed) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  proxy.answer(httpAnswer(302, {}, "Location: " + server.address().toLatin1() + "\r\n"));
  HttpClient strict(ServiceConfiguration{QStringLiteral("127.0.0.1"), proxy.serverPort(), testAuthority, {}});
  HttpRequest asked = request();
  asked.url = QUrl(QStringLiteral("https://service.test/clip.mp4"));
  EXPECT_EQ(runTask(strict.download(asked, target, {})).status, 302);
  EXPECT_EQ(server.connections, 0);
}

TEST_F(Download, GoesThroughTheProxyOverTls) {
  RawServer proxy;
  proxy.becomeSecureProxy();
  proxy.answer(httpAnswer(200, "media"));
  HttpClient strict(ServiceConfiguration{QStringLiteral("127.0.0.1"), proxy.serverPort(), testAuthority, {}});
  HttpRequest asked = request();
  asked.url = QUrl(QStringLiteral("https://other.test/clip.mp4"));
  EXPECT_EQ(runTask(strict.download(asked, target, {})).status, 200);
  EXPECT_EQ(folder.read(QStringLiteral("0.part")), "media");
}

}  // namespace sorvan::test
