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
  QString place;  // of the walk: the step that must be hit, as `placeOf` names it; empty for other faults
};

// A step that a scenario goes through, as its first run counted it.
struct Counted {
  quint64 number = 0;
  QString call;
  QString place;
};

std::vector<Counted> countedSteps(const std::vector<Step>& steps, const QString& workspace);

enum class Thoroughness {
  places,  // each different step once, in one of the three ways
  steps,   // every step, in one of the three ways
};

// Kills at the steps of a scenario. `cuts` is the share of them that power cuts are tried at, one in so many; 0 for none.
std::vector<Planned> killWalk(const Scenario& scenario, const std::vector<Counted>& steps, Thoroughness thoroughness,
                              unsigned cuts, quint64 seed);

// Every different step fails once, and for one in three it and all that follow, with one of the four errors.
std::vector<Planned> failWalk(const Scenario& scenario, const std::vector<Counted>& steps, quint64 seed);

// Faults of the sandbox at this call of the scenario, and kills while it holds the call.
std::vector<Planned> serviceFaults(const Scenario& scenario, const QString& call);

}  // namespace sorvan::torture
