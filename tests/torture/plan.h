// Which trials are done: the walk over the steps of a scenario, and the faults of the service.
#pragma once

#include <QString>
#include <vector>

#include "torture/journal.h"
#include "torture/trial.h"

namespace sorvan::torture {

struct Planned {
  const Scenario* scenario = nullptr;
  Fault fault;
  QString place;  // of the walks: the step that must be hit, as `placeOf` names it; empty for other faults
  int turn = 0;   // of the walks: which of the steps at this place it is
  bool mayBeAbsent = false;  // a run may end without it, see `Counted::varies`
};

// A step that a scenario goes through, as its first run counted it.
struct Counted {
  QString call;
  QString place;
  QString glob;   // as the shim is told it
  int turn = 0;   // which of the steps at this place it is, from 1

  // Whether it depends on how often the service is asked until it is done: that differs from run to run, and so does the
  // number of pieces on the network, and of lines of progress in the database's log.
  bool varies() const;
};

// The same trial at the first of the steps at its place, which every run goes through.
Planned atFirstTurn(Planned trial);

std::vector<Counted> countedSteps(const std::vector<Step>& steps, const QString& workspace);
// The steps that both runs went through.
std::vector<Counted> commonSteps(const std::vector<Counted>& one, const std::vector<Counted>& other);

// The ways in which the program can be killed at such a call: "before", "middle" where it can be halved, "after".
const QStringList& waysOfKilling(const QString& call);

// How much of a scenario's steps a walk takes.
struct Thoroughness {
  bool everyTurn = false;  // every step; else one for each different place, chosen by the seed
  bool everyWay = false;   // killed before, in the middle (of what can be halved) and after it; else in one of these ways
  unsigned cuts = 0;       // power cuts at one in so many of the kills; 0 for none
};

// Kills at the steps of a scenario.
std::vector<Planned> killWalk(const Scenario& scenario, const std::vector<Counted>& steps, Thoroughness thoroughness,
                              quint64 seed);

// Every different step fails once, and for one in three it and all that follow, with one of the four errors.
std::vector<Planned> failWalk(const Scenario& scenario, const std::vector<Counted>& steps, quint64 seed);

// Faults that only this call of the scenario can meet.
std::vector<Planned> ownFaults(const Scenario& scenario, const QString& call);
// Faults that any call can meet, an answer that never comes, and kills while the sandbox holds the call.
std::vector<Planned> serviceFaults(const Scenario& scenario, const QString& call);

}  // namespace sorvan::torture
