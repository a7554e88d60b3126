// What the trials came to, and how it is printed.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <mutex>

#include "torture/plan.h"

namespace sorvan::torture {

// Several threads may add at once.
class Tally {
 public:
  // Takes up the outcomes of one trial and prints what was violated.
  void add(const Planned& planned, const TrialResult& result);
  // A planned step or fault that never struck.
  void missed(const QString& what);
  // A planted bug was or was not caught; `by` says how.
  void hunted(const QString& bug, const QString& by);

  int trials() const;
  // The invariants by name, the steps that were hit, and the line that ends a run. Returns whether all is well.
  bool conclude() const;

 private:
  QString lastLine() const;

  mutable std::mutex mutex_;
  int trials_ = 0;
  int kills_ = 0;
  int faults_ = 0;
  int cuts_ = 0;
  int unknown_ = 0;
  QHash<QString, int> violated_;  // trials in which this invariant did not hold
  QSet<QString> places_;          // steps that were hit by a kill
  QStringList missed_;
  int bugs_ = 0;
  int caught_ = 0;
};

}  // namespace sorvan::torture
