// A server on loopback that does to a connection exactly what the test says, and counts what it saw.
#pragma once

#include <functional>
#include <vector>

#include <QObject>
#include <QSslSocket>
#include <QTcpServer>

namespace sorvan::test {

struct RawRequest {
  QByteArray head;  // request line and headers
  QByteArray body;
  bool is(const char* verb) const { return head.startsWith(QByteArray(verb) + ' '); }
  bool hasHeader(const QByteArray& name) const { return head.toLower().contains("\r\n" + name.toLower() + ":"); }
};

// Thread: the test's; it serves while the test runs the event loop.
class RawServer final : public QTcpServer {
 public:
  RawServer();

  // Called for each connection before a byte is read.
  std::function<void(QSslSocket*)> onConnection;
  // Called when a head is complete and its body is not yet.
  std::function<void(QSslSocket*, const RawRequest&)> onHead;
  // Called when a request is complete.
  std::function<void(QSslSocket*, const RawRequest&)> onRequest;

  // Answers every complete request with these bytes.
  void answer(const QByteArray& bytes);
  // Answers CONNECT with 200 and goes on over TLS with the test's certificate.
  void becomeSecureProxy();

  QString address(const QString& path = QStringLiteral("/")) const;
  // Request heads seen, complete or not, and those that are POSTs.
  std::vector<RawRequest> requests;
  int posts() const;
  int connections = 0;
  int openConnections = 0;

 protected:
  void incomingConnection(qintptr descriptor) override;

 private:
  struct Connection;
  void readMore(QSslSocket* socket, const std::shared_ptr<Connection>& state);
  void take(QSslSocket* socket, const RawRequest& request);
  bool secureProxy = false;
};

// A whole answer.
QByteArray httpAnswer(int status, const QByteArray& body = {}, const QByteArray& moreHeaders = {});
// Sends the bytes and closes once they have left.
void sendAndClose(QSslSocket* socket, const QByteArray& bytes);

}  // namespace sorvan::test
