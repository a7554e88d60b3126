// What the trials came to, and how it is printed.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <mutex>

#include "torture/plan.h"

namespace sorvan::torture {

// Prints a line at once.
void say(const QString& line);

// Several threads may add at once.
class Tally {
 public:
  // Takes up the outcomes of one trial and prints what was violated.
  void add(const Planned& planned, const TrialResult& result);
  // A kill must strike at this place of the scenario.
  void mustBeHit(const QString& scenario, const QString& place);
  // Kills must strike before this step of the scenario, after it, and in the middle of what can be halved; of steps
  // that differ from run to run, at one of this kind.
  void mustBeHitInEveryWay(const QString& scenario, const Counted& step);
  // A planned step or fault that never struck.
  void missed(const QString& what);
  // A planted bug was or was not caught; `by` says how.
  void hunted(const QString& bug, const QString& by);

  int trials() const;
  // The invariants by name, the steps that were hit, and the line that ends a run. Returns whether all is well.
  bool conclude(quint64 seed) const;

 private:
  QString lastLine(quint64 seed) const;
  QStringList neverHit() const;

  mutable std::mutex mutex_;
  int trials_ = 0;
  int kills_ = 0;
  int faults_ = 0;
  int cuts_ = 0;
  int unknown_ = 0;
  QHash<QString, int> violated_;  // trials in which this invariant did not hold
  QSet<QString> places_;          // what was hit by a kill, as `hit` names it
  QSet<QString> required_;        // those that must be
  QStringList missed_;
  int bugs_ = 0;
  int caught_ = 0;
};

}  // namespace sorvan::torture
