#include "tls_proxy.h"

#include "hosts.h"

namespace sandbox {

TlsProxy::TlsProxy(QSslConfiguration trusted, QSslConfiguration untrusted, HttpHandler& handler,
                   std::function<Admission(const QString&)> admit, QObject* parent)
    : QTcpServer(parent),
      trusted_(std::move(trusted)),
      untrusted_(std::move(untrusted)),
      handler_(handler),
      admit_(std::move(admit)) {}

void TlsProxy::incomingConnection(qintptr descriptor) {
  auto* socket = new QSslSocket(this);
  if (!socket->setSocketDescriptor(descriptor)) {
    delete socket;
    return;
  }
  connect(socket, &QSslSocket::readyRead, this, [this, socket] { readConnect(socket); });
  connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
}

void TlsProxy::readConnect(QSslSocket* socket) {
  // 1. Wait for the whole head; only it is taken, so that TLS finds its own first byte.
  const QByteArray seen = socket->peek(8192);
  const qsizetype end = seen.indexOf("\r\n\r\n");
  if (end < 0) {
    if (seen.size() >= 8192) socket->abort();
    return;
  }
  socket->read(end + 4);
  socket->disconnect(this);

  // 2. Only tunnels to the hosts of the service exist.
  const QList<QByteArray> words = seen.left(seen.indexOf("\r\n")).split(' ');
  if (words.first() != "CONNECT" || words.size() < 2)
    return refuse(socket, textAnswer(405, "text/plain", "This proxy only opens tunnels.\n"));
  const QString host = QString::fromLatin1(words[1].split(':').first()).toLower();
  if (!words[1].endsWith(":443") || !hosts::all().contains(host))
    return refuse(socket, textAnswer(403, "text/plain", "The sandbox has no host of this name.\n"));

  // 3. A scripted fault may meet the connection itself.
  const Admission admission = admit_(host);
  if (admission == Admission::Close) return socket->abort();
  if (admission == Admission::Refuse)
    return refuse(socket, textAnswer(502, "text/plain", "The host refused the connection.\n"));
  openTunnel(socket, host, admission);
}

void TlsProxy::refuse(QSslSocket* socket, const HttpAnswer& answer) {
  socket->write(headBytes(answer, Length::Announced, false) + answer.body);
  socket->disconnectFromHost();
}

void TlsProxy::openTunnel(QSslSocket* socket, const QString& host, Admission admission) {
  socket->write("HTTP/1.1 200 Connection established\r\n\r\n");
  if (admission == Admission::BreakTls) {
    connect(socket, &QSslSocket::readyRead, socket, &QSslSocket::abort);
    return;
  }
  socket->flush();
  socket->setSslConfiguration(admission == Admission::Untrusted ? untrusted_ : trusted_);
  connect(socket, &QSslSocket::encrypted, this, [this, socket, host] {
    disconnect(socket, &QSslSocket::disconnected, socket, nullptr);
    new HttpConnection(socket, host, handler_, this);
  });
  socket->startServerEncryption();
}

void TlsProxy::closeIdle(const QStringList& hosts) {
  for (HttpConnection* connection : findChildren<HttpConnection*>(Qt::FindDirectChildrenOnly))
    if (connection->idle() && hosts.contains(connection->host())) connection->finish(false);
}

}  // namespace sandbox
