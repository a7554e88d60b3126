// One connection that speaks HTTP/1.1, one request at a time.
#pragma once
#include <QObject>
#include <QTcpSocket>

#include "http_message.h"

namespace sandbox {

class HttpConnection;

// What a connection asks of whoever answers it. All calls come on the main thread.
class HttpHandler {
 public:
  enum class Verdict { ReadBody, StopReading };
  virtual ~HttpHandler() = default;
  // The head stands, the body is not read yet. After StopReading nothing more is read until resumeReading().
  virtual Verdict headArrived(HttpConnection& connection, const HttpRequest& head) = 0;
  virtual void requestArrived(HttpConnection& connection, const HttpRequest& request) = 0;
  // The other side went away, whatever was going on. The connection deletes itself afterwards.
  virtual void connectionLost(HttpConnection& connection) = 0;
};

// Reads requests from a socket that it owns, and deletes itself when the socket is gone. What is written goes out as it
// is: the shape of an answer belongs to Delivery.
class HttpConnection : public QObject {
  Q_OBJECT
 public:
  // `host` names the tunnel that the connection came through; `handler` outlives the connection.
  HttpConnection(QTcpSocket* socket, QString host, HttpHandler& handler, QObject* parent);

  const QString& host() const { return host_; }
  bool idle() const { return phase_ == Phase::Head && pending_.isEmpty(); }
  bool wantsKeepAlive() const;

  void resumeReading();
  void write(const QByteArray& bytes);
  // The answer has been written; the next request may come, or the connection closes once all has gone out.
  void finish(bool keepAlive);
  // Closes without another byte, as a crashed service does.
  void drop();

 private:
  enum class Phase { Head, Body, Answering, Stopped, Closed };
  void read();
  void readHead();
  void readBody();
  bool readChunks();
  void refuseGarbage();
  void closed();

  QTcpSocket* socket_;
  QString host_;
  HttpHandler& handler_;
  Phase phase_ = Phase::Head;
  QByteArray pending_;
  HttpRequest request_;
};

}  // namespace sandbox
