// The remote interpreter of commands, and the books of what it costs.
#pragma once

#include <QString>
#include <QUuid>

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/task.h"
#include "composer/remote_action.h"
#include "core/library_store.h"

namespace sorvan::composer {

/// One finished interpretation. It has been paid for, whatever it says.
struct Interpretation {
  std::optional<RemoteAppAction> action;  ///< absent when the answer holds none that reads
  std::int64_t microcredits = 0;          ///< charged; a credit is 1,000,000
};

/// The interpreter behind the gateway. Main thread.
class CommandInterpreter {
 public:
  virtual ~CommandInterpreter() = default;
  /// Sends the text under an idempotency key and waits for the end. Throws SorvanError; then the request may still
  /// have been accepted.
  virtual Task<Interpretation> interpret(QString text, CommandContext context, QUuid key, std::stop_token stop) = 0;
  /// What became of a request that was sent before, waited for to its end; nothing when no such request was accepted
  /// or when it failed, which costs nothing. Throws SorvanError when that cannot be learned now.
  virtual Task<std::optional<Interpretation>> existing(QUuid key, std::stop_token stop) = 0;
};

/// Sees to it that each paid interpretation stands in the library's extra charges once, also when its answer was lost.
///
/// On disk: the key of a request stands in the settings under "pendingInterpretations" from before the request leaves
/// until its charge is recorded. A charge has the id of its request, so recording it again changes nothing. Main
/// thread; it borrows the store and the interpreter.
class InterpretationBooks {
 public:
  InterpretationBooks(LibraryStore& store, CommandInterpreter& interpreter);

  /// Notes that a request is about to leave. Throws SorvanError when that cannot be written: then nothing may be sent.
  void aboutToSend(const QUuid& key, const std::optional<QUuid>& project);
  /// Records the charge of an answer, and forgets the request once the charge is on disk.
  void answered(const QUuid& key, const Interpretation& answer);
  /// Learns what became of requests without an answer, and records what they cost. Call it at the start, once a
  /// workspace is open, and before each interpretation. One that cannot be learned now waits for the next time.
  Task<> settle(std::stop_token stop);
  bool isSettled() const;

 private:
  LibraryStore& store_;
  CommandInterpreter& interpreter_;
};

/// Micro-credits as a number to read: "2", "0.3", "1,250".
QString creditsText(std::int64_t microcredits);

}  // namespace sorvan::composer
