// Where one worker of the harness does its trials: a sandbox of its own, and the driver started as often as it likes.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <memory>

#include "support_sandbox/sandbox_process.h"

namespace sorvan::torture {

// The folders of one trial. Everything that the driver may write lies below `folder`.
struct Grounds {
  QString folder;
  QString workspace() const { return folder + QStringLiteral("/workspace"); }
  QString home() const { return folder + QStringLiteral("/home"); }
  QString outside() const { return folder + QStringLiteral("/outside"); }  // nothing in it may change
  QString acknowledgements() const { return folder + QStringLiteral("/acknowledged.jsonl"); }
  QString journal() const { return folder + QStringLiteral("/journal"); }

  // Makes the folders; the workspace is a copy of `workspace`, or empty.
  static Grounds made(const QString& folder, const QString& workspace = {});
};

// How one run of the driver ended.
struct DriverEnd {
  bool killed = false;    // by the shim or by the harness
  bool overdue = false;   // it did not end by itself in time
  bool crashed = false;   // by a signal that nobody sent
  QJsonObject report;     // empty unless it came to its end
};

// What the shim is told; without a fault and a journal it is not loaded.
struct ShimOrder {
  QString fault;
  bool journal = false;
};

class Station {
 public:
  // `driver` is the driver's program, `bug` the planted bug that is on in it, or empty; `key` is the planted secret, and
  // `state` the folder where the sandbox keeps what it sold. Throws std::runtime_error when nothing starts.
  Station(QString driver, QString bug, const QString& key, const QString& state);

  // Starts the driver and waits for its end.
  DriverEnd run(const Grounds& grounds, const QJsonArray& commands, const ShimOrder& shim = {});
  // Starts the driver, kills it once a call of this kind is held by the sandbox, and lets the call go on. `killed` says
  // whether it came to that.
  DriverEnd runUntilHeld(const Grounds& grounds, const QJsonArray& commands, const QString& call);

  sorvan::test::SandboxProcess& sandbox() { return sandbox_; }
  // Each POST body that was sent since the last call of this, with how often it was.
  int mostPostsSinceLast();

 private:
  std::unique_ptr<QProcess> started(const Grounds& grounds, const QJsonArray& commands, const ShimOrder& shim);

  QString driver_;
  QString bug_;
  sorvan::test::SandboxProcess sandbox_;
  QHash<QString, int> posts_;
};

}  // namespace sorvan::torture
