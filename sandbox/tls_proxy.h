// The CONNECT proxy in front of the simulated hosts: the tunnel does not lead out of the program, TLS starts inside it.
#pragma once
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>

#include "http_connection.h"

namespace sandbox {

// What becomes of one CONNECT.
enum class Admission {
  Open,       // the tunnel opens and TLS starts with the trusted certificate
  Refuse,     // 502, as a proxy answers that could not connect
  Close,      // the connection closes without a word
  BreakTls,   // the tunnel opens and closes in the middle of the handshake
  Untrusted,  // the tunnel opens with a certificate of an unknown authority
};

// Listens on 127.0.0.1. Each opened tunnel becomes an HttpConnection for the handler, which outlives the proxy.
class TlsProxy : public QTcpServer {
  Q_OBJECT
 public:
  // `admit` says what becomes of a CONNECT to a host that the sandbox serves; others are always refused.
  TlsProxy(QSslConfiguration trusted, QSslConfiguration untrusted, HttpHandler& handler,
           std::function<Admission(const QString& host)> admit, QObject* parent);
  // Closes every connection that waits for a request of one of these hosts.
  void closeIdle(const QStringList& hosts);

 protected:
  void incomingConnection(qintptr descriptor) override;

 private:
  void readConnect(QSslSocket* socket);
  void refuse(QSslSocket* socket, const HttpAnswer& answer);
  void openTunnel(QSslSocket* socket, const QString& host, Admission admission);

  QSslConfiguration trusted_;
  QSslConfiguration untrusted_;
  HttpHandler& handler_;
  std::function<Admission(const QString&)> admit_;
};

}  // namespace sandbox
