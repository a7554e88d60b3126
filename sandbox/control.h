// The control address: plain HTTP on loopback, for tests. See --help for what it answers.
#pragma once
#include <QTcpServer>

#include "front_desk.h"
#include "gateway_service.h"
#include "job_board.h"
#include "ledger.h"
#include "tls_proxy.h"

namespace sandbox {

// What the control address reads and turns.
struct Controls {
  FrontDesk& desk;
  CallBook& book;
  FaultScript& faults;
  Ledger& ledger;
  JobBoard& jobs;
  TlsProxy& proxy;
  GatewayService& gateway;
};

QString controlHelp();

class Control : public QTcpServer, public HttpHandler {
  Q_OBJECT
 public:
  Control(Controls controls, QObject* parent);

  Verdict headArrived(HttpConnection&, const HttpRequest&) override { return Verdict::ReadBody; }
  void requestArrived(HttpConnection& connection, const HttpRequest& request) override;
  void connectionLost(HttpConnection& connection) override;

 protected:
  void incomingConnection(qintptr descriptor) override;

 private:
  struct Waiter {
    CallKind call;
    bool held;
    int count;  // of held calls, 0 waits until none is held any more
  };
  HttpAnswer carryOut(const HttpRequest& request);
  HttpAnswer state() const;
  HttpAnswer addFaults(const QByteArray& json);
  HttpAnswer release(const QJsonObject& body);
  void wait(HttpConnection& connection, const HttpRequest& request);
  bool answerIfReached(HttpConnection& connection, const Waiter& waiter);
  void lookAtWaiters();

  Controls controls_;
  QMap<HttpConnection*, Waiter> waiters_;
};

}  // namespace sandbox
