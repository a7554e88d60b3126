// Scripted faults: what a call meets instead of its plain answer.
#pragma once
#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <optional>

#include "calls.h"

namespace sandbox {

enum class FaultKind {
  // Met by the connection, before there is a call.
  Refuse,     // the proxy says that the host refused the connection
  Close,      // the proxy closes the connection without a word
  BreakTls,   // the tunnel opens and closes in the handshake
  Untrusted,  // a certificate of an authority that nobody trusts
  // Met by the call.
  CloseBeforeReading,  // the head is seen, the body never read
  Late,                // dropped, and carried out only after the next look-up was answered
  Drop,                // taken, then the connection is gone without an answer
  CutStatusLine,       // taken, then "HTTP/1." and the connection is gone
  Hold,                // nothing goes on until it is released
  Slow,                // the answer's body trickles
  Stall,               // half of the answer's body, the rest when released
  CutWithLength,       // half of the body, though all of it was announced
  CutWithoutLength,    // half of the body, its length unsaid
  Twice,               // the same answer two times on the wire
  Answer,              // another answer: status, body, contentType, location
  NoHandle,            // a submit's answer without request_id and addresses
  Elsewhere,           // addresses in the answer lead to a host of nobody
  Backwards,           // a status that falls back to IN_QUEUE
  UnknownState,        // a status that no document names
  JobError,            // a status COMPLETED with error and error_type
  WrongMedia,          // a download that is not the media it claims
  HalfPage,            // the first half of the body, under the length of that half
  OtherMedia,          // a whole file of another kind than was promised
  DamagedMedia,        // the media with their second half spoilt
  VectorMedia,         // a drawing that is no picture of pixels
};

// Where a held call waits.
enum class HoldPoint { Head, Before, After };

struct Fault {
  QString name;  // as the script wrote it
  FaultKind kind = FaultKind::Drop;
  CallKind call = CallKind::Submit;
  QString endpoint;         // only calls whose endpoint is this; empty for any
  int skip = 0;             // leave so many matching calls alone first
  int times = 1;            // then meet so many; -1 for all
  bool takesEffect = true;  // whether the call is carried out (and charged) all the same
  HoldPoint holdPoint = HoldPoint::After;
  HttpAnswer answer;          // of FaultKind::Answer
  int bytesPerSecond = 4096;  // of FaultKind::Slow

  bool meetsConnection() const { return kind <= FaultKind::Untrusted; }
};

// One line for each name that a script may use, with what it does: part of --help.
QString faultNames();

// The script of faults, in the order they were given.
class FaultScript {
 public:
  // Adds one fault as its JSON object says it. Returns what is wrong with it, or an empty text.
  QString add(const QJsonObject& description);
  // Adds every fault of a JSON array (or of one object). All of them or none.
  QString addAll(const QByteArray& json);
  void clear() { faults_.clear(); }
  qsizetype pending() const { return faults_.size(); }

  // The fault that this call meets, used up once.
  std::optional<Fault> take(const Call& call);
  // The fault that a new connection to this host meets, used up once.
  std::optional<Fault> takeForConnection(const QString& host);
  // Whether the next such call is to meet a fault before it has a connection.
  bool refusesConnectionFor(const Call& call) const;
  // The hosts at which connections are to meet a fault.
  QStringList refusedHosts() const;

 private:
  std::optional<Fault> use(qsizetype index);

  QList<Fault> faults_;
};

}  // namespace sandbox
