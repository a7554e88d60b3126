// The remote interpreter of commands, and the books of what it costs.
#pragma once

#include <QString>
#include <QUuid>

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/instant.h"
#include "base/sorvan_error.h"
#include "base/task.h"
#include "composer/remote_action.h"
#include "core/library_store.h"

namespace sorvan::composer {

/// One finished interpretation. It has been paid for, whatever it says.
struct Interpretation {
  std::optional<RemoteAppAction> action;  ///< absent when the answer holds none that reads
  std::int64_t microcredits = 0;          ///< charged; a credit is 1,000,000
};

/// Thrown when a request has certainly not been accepted: nothing was begun under its key, and nothing can be charged.
class InterpretationNotSent final : public SorvanError {
 public:
  using SorvanError::SorvanError;
};

/// The interpreter behind the gateway. Main thread.
class CommandInterpreter {
 public:
  virtual ~CommandInterpreter() = default;
  /// Sends the text under an idempotency key and waits for the end. Throws InterpretationNotSent, or another
  /// SorvanError when the request may have been accepted.
  virtual Task<Interpretation> interpret(QString text, CommandContext context, QUuid key, std::stop_token stop) = 0;
  /// What became of a request that was sent before, waited for to its end; one that failed costs nothing. Nothing when
  /// no such request has arrived yet. Throws SorvanError when that cannot be learned now.
  virtual Task<std::optional<Interpretation>> existing(QUuid key, std::stop_token stop) = 0;
  /// The gateway and the account that pay now; empty while they are not known.
  virtual QString payer() const { return {}; }
};

/// How long after it was sent a request may still reach the gateway, in seconds. The connection is given up after 30
/// seconds without an answer, but what a proxy or a gateway under repair has taken by then can be handed on later. None
/// is known to keep a request for hours; a day is far beyond, and costs one question at each opening.
inline constexpr double latestArrival = 24 * 60 * 60;

/// Sees to it that each paid interpretation stands in the library's extra charges once, also when its answer was lost.
///
/// On disk: the key of a request stands in the settings under "pendingInterpretations", with its time, from before the
/// request leaves until its charge is recorded or it is certain that none comes. A charge has the id of its request, so
/// recording it again changes nothing. Main thread; it borrows the store and the interpreter.
class InterpretationBooks {
 public:
  InterpretationBooks(LibraryStore& store, CommandInterpreter& interpreter);

  /// Notes that a request is about to leave. Throws SorvanError when that cannot be written: then nothing may be sent.
  void aboutToSend(const QUuid& key, const std::optional<QUuid>& project);
  /// Records the charge of an answer, and forgets the request once the charge is on disk.
  void answered(const QUuid& key, const Interpretation& answer);
  /// Forgets a request that has certainly not been accepted.
  void notSent(const QUuid& key);
  /// Learns what became of requests without an answer, and records what they cost. Call it at the start, once a
  /// workspace is open, and before each interpretation. One that cannot be learned now waits for the next time. So does
  /// one that has not arrived, until `latestArrival` has passed since it was sent, and one that another account pays
  /// for, until that one is signed in.
  Task<> settle(std::stop_token stop);
  bool isSettled() const;

 private:
  /// What a look-up that found nothing means for a request.
  void notSeen(const QUuid& key, Instant sentAt);

  LibraryStore& store_;
  CommandInterpreter& interpreter_;
};

/// Micro-credits as a number to read: "2", "0.3", "1,250".
QString creditsText(std::int64_t microcredits);

}  // namespace sorvan::composer
