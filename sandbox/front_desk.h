// Where every request of the tunnels arrives: it is noted, meets its fault, is carried out and answered.
#pragma once
#include <QJsonArray>
#include <QMap>

#include "call_book.h"
#include "delivery.h"
#include "faults.h"
#include "http_connection.h"
#include "tls_proxy.h"

namespace sandbox {

class KeyCheck;

// Lives on the main thread, as all that it is given does; outlives the connections.
class FrontDesk : public QObject, public HttpHandler {
  Q_OBJECT
 public:
  // Carries out a call and returns its plain answer.
  using Service = std::function<HttpAnswer(const Call&, const HttpRequest&)>;

  FrontDesk(CallBook& book, FaultScript& faults, const KeyCheck& keys, Service service);

  Admission admit(const QString& host);
  Verdict headArrived(HttpConnection& connection, const HttpRequest& head) override;
  void requestArrived(HttpConnection& connection, const HttpRequest& request) override;
  void connectionLost(HttpConnection& connection) override;

  // Lets held and stalled calls go on, of one kind or all. Returns how many.
  int release(std::optional<CallKind> kind);
  int heldCount(CallKind kind) const;
  QJsonArray held() const;

 Q_SIGNALS:
  // A call arrived, is held or was answered.
  void changed();

 private:
  enum class Stage { Reading, HeldAtHead, HeldBefore, HeldAfter, Stalled, Answered };
  struct Exchange {
    Call call;
    HttpRequest request;
    std::optional<Fault> fault;
    HttpAnswer answer;
    int number = 0;
    Stage stage = Stage::Reading;
    bool posted = false;
  };

  static bool waits(const Exchange& exchange);
  void hold(Exchange& exchange, Stage stage);
  void carryOut(HttpConnection& connection, Exchange& exchange);
  void putOff(HttpConnection& connection, const Exchange& exchange);
  void carryOutLate();
  void send(HttpConnection& connection, Exchange& exchange);
  void notePost(Exchange& exchange, bool bodyRead);
  void releaseOne(HttpConnection& connection, Exchange& exchange);

  CallBook& book_;
  FaultScript& faults_;
  const KeyCheck& keys_;
  Service service_;
  QMap<HttpConnection*, Exchange> exchanges_;
  // Calls that were put off until the next look-up.
  QList<std::pair<Call, HttpRequest>> late_;
};

}  // namespace sandbox
