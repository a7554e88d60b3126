#include "support/raw_server.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <stdexcept>

#include "support/test_certificates.h"

namespace sorvan::test {

struct RawServer::Connection {
  QByteArray received;
  bool headTold = false;
};

RawServer::RawServer() {
  if (!listen(QHostAddress::LocalHost)) throw std::runtime_error("no loopback to listen on");
}

QString RawServer::address(const QString& path) const {
  return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
}

void RawServer::answer(const QByteArray& bytes) {
  onRequest = [bytes](QSslSocket* socket, const RawRequest&) { socket->write(bytes); };
}

void RawServer::becomeSecureProxy() { secureProxy = true; }

int RawServer::posts() const {
  return static_cast<int>(
      std::count_if(requests.begin(), requests.end(), [](const RawRequest& r) { return r.is("POST"); }));
}

static void configure(QSslSocket* socket) {
  QSslConfiguration tls = socket->sslConfiguration();
  tls.setLocalCertificate(QSslCertificate(QByteArray(testCertificate)));
  tls.setPrivateKey(QSslKey(QByteArray(testCertificateKey), QSsl::Ec));
  tls.setPeerVerifyMode(QSslSocket::VerifyNone);
  socket->setSslConfiguration(tls);
}

void RawServer::incomingConnection(qintptr descriptor) {
  auto* socket = new QSslSocket(this);
  socket->setSocketDescriptor(descriptor);
  configure(socket);
  ++connections;
  ++openConnections;
  connect(socket, &QSslSocket::disconnected, this, [this, socket] {
    --openConnections;
    socket->deleteLater();
  });
  if (onConnection) onConnection(socket);
  const auto state = std::make_shared<Connection>();
  connect(socket, &QSslSocket::readyRead, this, [this, socket, state] { readMore(socket, state); });
}

static qsizetype announcedLength(const QByteArray& head) {
  const qsizetype at = head.toLower().indexOf("\r\ncontent-length:");
  if (at < 0) return 0;
  const qsizetype from = at + 17;
  return head.sliced(from, head.indexOf("\r\n", from) - from).trimmed().toLongLong();
}

void RawServer::readMore(QSslSocket* socket, const std::shared_ptr<Connection>& state) {
  state->received += socket->readAll();
  const qsizetype end = state->received.indexOf("\r\n\r\n");
  if (end < 0) return;
  const QByteArray head = state->received.first(end + 4);
  if (!std::exchange(state->headTold, true)) {
    requests.push_back({head, {}});
    if (onHead) onHead(socket, requests.back());
  }
  const qsizetype length = announcedLength(head);
  if (state->received.size() < head.size() + length) return;
  const RawRequest request{head, state->received.sliced(head.size(), length)};
  requests.back() = request;
  state->received.remove(0, head.size() + length);
  state->headTold = false;
  take(socket, request);
}

void RawServer::take(QSslSocket* socket, const RawRequest& request) {
  if (secureProxy && request.is("CONNECT")) {
    socket->write("HTTP/1.1 200 Connection established\r\n\r\n");
    socket->flush();
    socket->startServerEncryption();
    return;
  }
  if (onRequest) onRequest(socket, request);
}

QByteArray httpAnswer(int status, const QByteArray& body, const QByteArray& moreHeaders) {
  return "HTTP/1.1 " + QByteArray::number(status) + " Said\r\nContent-Length: " + QByteArray::number(body.size()) +
         "\r\n" + moreHeaders + "\r\n" + body;
}

void sendAndClose(QSslSocket* socket, const QByteArray& bytes) {
  socket->write(bytes);
  socket->disconnectFromHost();
}

}  // namespace sorvan::test
