#include "torture/hunt.h"

#include <algorithm>
#include <random>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

std::vector<Counted> onlyCalls(std::vector<Counted> steps, const QString& call) {
  std::erase_if(steps, [&call](const Counted& step) { return step.call != call; });
  return steps;
}

std::vector<Counted> onlyAt(std::vector<Counted> steps, const QString& where) {
  std::erase_if(steps, [&where](const Counted& step) { return !step.place.contains(where); });
  return steps;
}

std::vector<Planned> joined(std::vector<Planned> first, const std::vector<Planned>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

std::vector<Planned> shuffled(std::vector<Planned> trials, quint64 seed) {
  std::shuffle(trials.begin(), trials.end(), std::mt19937_64(seed));
  return trials;
}

}  // namespace

const std::vector<Bug>& plantedBugs() {
  using enum Bug::Hunt;
  static const std::vector<Bug> bugs{
      {u"synchronous-normal"_s, {u"I1"_s, u"I2"_s, u"I3"_s}, cuts},
      {u"no-folder-sync"_s, {u"I1"_s, u"I3"_s, u"I4"_s}, cuts},
      {u"no-file-sync"_s, {u"I3"_s, u"I4"_s, u"I6"_s}, cuts},
      {u"ignored-write-error"_s, {u"I2"_s, u"I3"_s, u"I4"_s, u"I6"_s}, writeErrors, {}, u"sidecars"_s},
      {u"truncated-body"_s, {u"I3"_s}, downloads},
      {u"commits-swapped"_s, {u"I1"_s}, kills, u"/submitting"_s},
      {u"submit-before-save"_s, {u"I1"_s, u"I2"_s}, kills},
      {u"blind-resend"_s, {u"I1"_s, u"I10"_s}, submits},
      {u"register-twice"_s, {u"I3"_s}, plain},
      {u"charge-note-forgotten"_s, {u"I4"_s}, kills, u"results.json"_s},
      {u"credits-new-key"_s, {u"I1"_s}, purchases, {}, u"credits"_s},
      {u"credits-unknown-new-key"_s, {u"I1"_s}, purchases, {}, u"credits"_s},
  };
  return bugs;
}

std::vector<Planned> huntFor(const Bug& bug, const Scenario& scenario, const std::vector<Counted>& steps, quint64 seed) {
  switch (bug.hunt) {
    case Bug::Hunt::plain: return {Planned{&scenario, {}, {}}};
    case Bug::Hunt::kills: {
      const Thoroughness all{.everyTurn = true, .everyWay = true};
      return shuffled(killWalk(scenario, onlyAt(steps, bug.where), all, seed), seed);
    }
    case Bug::Hunt::cuts: return shuffled(killWalk(scenario, steps, {.everyTurn = true, .cuts = 1}, seed), seed);
    case Bug::Hunt::writeErrors: {
      const std::vector<Counted> writes = onlyCalls(steps, u"write"_s);
      return joined(failWalk(scenario, writes, seed), failWalk(scenario, writes, seed + 1));
    }
    case Bug::Hunt::submits: return serviceFaults(scenario, u"submit"_s);
    case Bug::Hunt::downloads: return serviceFaults(scenario, u"download"_s);
    case Bug::Hunt::purchases: return serviceFaults(scenario, u"purchase"_s);
  }
  return {};
}

QString givenAway(const Bug& bug, const TrialResult& result) {
  for (const Outcome& outcome : result.outcomes)
    for (const Violation& violation : outcome.verdict.violations)
      if (bug.catches.contains(violation.invariant))
        return u"%1 in [%2]"_s.arg(violation.invariant, outcome.trial);
  return {};
}

}  // namespace sorvan::torture
