// The stage of the fault tests: every call of the wire, ready to be made, and what it cost.
#pragma once
#include "sandbox/client.h"

namespace sorvan::test {

// What one call met, and what it changed in the sandbox's books.
struct Met {
  WireAnswer answer;
  int purchases = 0;        // new lines of the ledger
  int posts = 0;            // new POSTs
  bool carriedOut = false;  // a submit was charged, an upload stands; false for the others, which change nothing
};

class FaultStage {
 public:
  // Starts a sandbox with one completed job, whose handle and picture the later calls are about.
  FaultStage();

  SandboxProcess sandbox;
  Client client;

  // The calls that every fault of the wire can meet.
  static QStringList calls();
  static bool isPost(const QString& call);

  // Makes the call under the fault. Readies what it needs first, so that only the call itself is counted.
  Met meet(const QString& call, const QString& fault, const QJsonObject& more = {},
           Client::ReadUntil until = Client::ReadUntil::Complete);
  // Makes it without a fault.
  Met make(const QString& call);

  // One call, to be begun and finished by the test itself.
  struct Request {
    QByteArray method;
    QUrl url;
    QByteArray body;
    Client::Key key = Client::Key::Good;
  };
  Request request(const QString& call);
  bool uploadStands(const Request& upload) const;

  // Lines of the ledger and POSTs so far.
  struct Books {
    int purchases = 0;
    int posts = 0;
  };
  Books books() const;

  const QJsonObject& handle() const { return handle_; }
  QUrl picture() const { return picture_; }

 private:
  Met counted(const QString& call, const std::function<WireAnswer(const Request&)>& makeIt);

  QJsonObject handle_;
  QUrl picture_;
};

extern const QString painter;
QJsonObject tinyPicture(int seed = 1);

}  // namespace sorvan::test
