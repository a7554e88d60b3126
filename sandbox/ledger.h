// The purchases, in an append-only file.
#pragma once
#include <QByteArray>
#include <QFile>
#include <QString>

namespace sandbox {

struct Purchase {
  QString handle;  // the request id that the buyer may or may not have learned
  QString key;     // an idempotency key, where the request carried one
  QString endpoint;
  double amount = 0;  // US dollars
  QByteArray body;    // only its SHA-256 is written
};

// One line of JSON a purchase: {"at","run","handle","key"?,"endpoint","amount","sha256"}. Lines are only ever added,
// and a line is on the disk (fsync) before `add` returns.
class Ledger {
 public:
  // Opens or creates the file. Throws std::runtime_error when it cannot be opened or a line cannot be written: money
  // that is not noted would make every test worthless.
  explicit Ledger(const QString& path);
  void add(const Purchase& purchase);
  // Names the trial that later purchases belong to.
  void setRun(const QString& run) { run_ = run; }
  const QString& run() const { return run_; }
  qsizetype count() const { return count_; }
  QByteArray text() const;

 private:
  QFile file_;
  QString run_;
  qsizetype count_ = 0;
};

}  // namespace sandbox
