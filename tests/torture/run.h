// A whole run of the harness: counting, the walk, the hunt for planted bugs.
#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "torture/hunt.h"
#include "torture/plan.h"
#include "torture/tally.h"

namespace sorvan::torture {

struct RunOptions {
  bool full = false;
  bool onlyBugs = false;
  quint64 seed = 1;
  std::chrono::minutes limit{6};
  QString folder;         // an empty folder to work in
  QString driver;         // the program under test
  QString plantedDriver;  // the same with switchable bugs
  bool bugs = true;       // whether they are hunted
  QStringList scenarios;  // only these; empty for all
};

class Run {
 public:
  explicit Run(RunOptions options);

  // Carries everything out and prints it. Returns whether all is well.
  bool carryOut();

 private:
  using Clock = std::chrono::steady_clock;

  void count();
  void count(const Scenario& counted, Workshop& workshop);
  void hunt();
  void hunt(const Bug& bug, const QString& folder);
  void walk(std::vector<Planned> trials);
  void walkOn(const std::vector<Planned>& trials, std::atomic<std::size_t>& next, const QString& folder);
  void one(const Planned& planned, Workshop& workshop);
  std::vector<Planned> quickPlan(quint64 seed) const;
  std::vector<Planned> fullPlan(quint64 seed) const;
  std::vector<Planned> faultsOfService(quint64 seed) const;
  void requireSteps();
  const Scenario& scenario(const QString& name) const;
  bool isChosen(const QString& name) const;
  bool isEnough() const;
  bool isOverdue() const { return Clock::now() > begun_ + options_.limit; }

  RunOptions options_;
  Clock::time_point begun_ = Clock::now();
  QString picture_;  // the user's own, for scenarios that begin with one
  std::vector<Scenario> scenarios_;
  std::mutex mutex_;
  std::map<QString, std::vector<Counted>> steps_;
  Tally tally_;
  int walks_ = 0;
};

}  // namespace sorvan::torture
