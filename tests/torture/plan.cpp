#include "torture/plan.h"

#include <QHash>
#include <QSet>
#include <random>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

using Chance = std::mt19937_64;

bool isOfTheNetwork(const QString& call) { return call == u"connect"_s || call == u"send"_s || call == u"recv"_s; }

// One step for each different place, chosen by the seed among those that are the same.
std::vector<Counted> oneForEachPlace(const std::vector<Counted>& steps, Chance& chance) {
  QHash<QString, std::vector<Counted>> places;
  QStringList order;
  for (const Counted& step : steps) {
    if (!places.contains(step.place)) order.append(step.place);
    places[step.place].push_back(step);
  }
  std::vector<Counted> chosen;
  for (const QString& place : std::as_const(order)) {
    const std::vector<Counted>& same = places[place];
    chosen.push_back(same[std::uniform_int_distribution<std::size_t>(0, same.size() - 1)(chance)]);
  }
  return chosen;
}

// One of the ways, another at each turn.
QStringList oneWay(const QString& call, quint64 turn) {
  const QStringList& ways = waysOfKilling(call);
  return {ways[static_cast<qsizetype>(turn % static_cast<quint64>(ways.size()))]};
}

QString orderFor(const Counted& step, const QString& action, const QString& error = {}) {
  return u"at %1 %2 %3 %4"_s.arg(action).arg(step.turn).arg(step.glob, error).trimmed();
}

// What stands on the wire or in the proxy, at any call.
const QStringList& faultsOfAnyCall() {
  static const QStringList names{
      u"refuse"_s,        u"close"_s,       u"break-tls"_s,          u"untrusted"_s,
      u"drop"_s,          u"cut-status-line"_s, u"close-before-reading"_s, u"cut-with-length"_s,
      u"cut-without-length"_s, u"twice"_s,   u"server-error"_s,       u"bad-gateway"_s,
      u"unavailable"_s,   u"garbage"_s,     u"empty"_s,              u"redirect"_s,
      u"unauthorized"_s,  u"locked"_s,      u"not-found"_s,          u"gone"_s,
      u"conflict"_s,      u"invalid"_s,     u"rate-limited"_s,       u"slow"_s};
  return names;
}

// What only this call's answer can hold, and a result that is gone.
QStringList ownFaultsOf(const QString& call) {
  if (call == u"submit"_s) return {u"no-handle"_s, u"elsewhere"_s};
  if (call == u"status"_s) return {u"backwards"_s, u"unknown-state"_s, u"job-error"_s, u"elsewhere"_s};
  if (call == u"purchase"_s) return {u"late"_s};
  if (call == u"result"_s) return {u"elsewhere"_s, u"gone"_s};
  if (call == u"download"_s) return {u"wrong-media"_s};
  return {};
}

Planned planned(const Scenario& scenario, FaultKind kind) {
  Planned trial;
  trial.scenario = &scenario;
  trial.fault.kind = kind;
  return trial;
}

Planned walkedTo(const Scenario& scenario, FaultKind kind, const Counted& step) {
  Planned trial = planned(scenario, kind);
  trial.place = step.place;
  trial.turn = step.turn;
  trial.mayBeAbsent = step.turn > 1 && step.varies();
  return trial;
}

Planned atService(const Scenario& scenario, FaultKind kind, const QString& call, const QString& name) {
  Planned trial = planned(scenario, kind);
  trial.fault.call = call;
  trial.fault.name = name;
  if (name == u"slow"_s) trial.fault.more.insert(u"bytesPerSecond"_s, 200'000);
  return trial;
}

}  // namespace

const QStringList& waysOfKilling(const QString& call) {
  static const QStringList halved{u"before"_s, u"middle"_s, u"after"_s};
  static const QStringList whole{u"before"_s, u"after"_s};
  return call == u"write"_s || call == u"send"_s ? halved : whole;
}

bool Counted::varies() const { return isOfTheNetwork(call) || place.endsWith(u"/library.store-wal"_s); }

Planned atFirstTurn(Planned trial) {
  QStringList words = trial.fault.shim.split(u' ');
  words[2] = u"1"_s;
  trial.fault.shim = words.join(u' ');
  trial.turn = 1;
  trial.mayBeAbsent = false;
  return trial;
}

std::vector<Counted> countedSteps(const std::vector<Step>& steps, const QString& workspace) {
  std::vector<Counted> counted;
  QHash<QString, int> turns;
  for (const Step& step : steps) {
    // What the system refused changed nothing, but the shim passed it too.
    if (step.call == u"refused"_s) ++turns[globOf(step.other, step.path, workspace)];
    if (step.call == u"refused"_s) continue;
    const QString glob = globOf(step.call, step.path, workspace);
    counted.push_back({step.call, placeOf(step.call, step.path, workspace), glob, ++turns[glob]});
  }
  return counted;
}

std::vector<Counted> commonSteps(const std::vector<Counted>& one, const std::vector<Counted>& other) {
  QHash<QString, int> most;
  for (const Counted& step : other) most[step.glob] = qMax(most[step.glob], step.turn);
  std::vector<Counted> common;
  for (const Counted& step : one)
    if (step.turn <= most.value(step.glob)) common.push_back(step);
  return common;
}

std::vector<Planned> killWalk(const Scenario& scenario, const std::vector<Counted>& steps, Thoroughness thoroughness,
                              quint64 seed) {
  Chance chance(seed);
  std::vector<Planned> walk;
  quint64 turn = seed;
  for (const Counted& step : thoroughness.everyTurn ? steps : oneForEachPlace(steps, chance)) {
    for (const QString& way : thoroughness.everyWay ? waysOfKilling(step.call) : oneWay(step.call, turn)) {
      Planned trial = walkedTo(scenario, FaultKind::kill, step);
      trial.fault.shim = orderFor(step, way);
      trial.fault.cuts = thoroughness.cuts > 0 && turn % thoroughness.cuts == 0;
      trial.fault.seed = chance();
      walk.push_back(trial);
      ++turn;
    }
  }
  return walk;
}

std::vector<Planned> failWalk(const Scenario& scenario, const std::vector<Counted>& steps, quint64 seed) {
  static const QStringList errors{u"ENOSPC"_s, u"EIO"_s, u"EDQUOT"_s, u"EROFS"_s};
  Chance chance(seed);
  std::vector<Planned> walk;
  for (const Counted& step : oneForEachPlace(steps, chance)) {
    Planned trial = walkedTo(scenario, FaultKind::fail, step);
    const QString error = errors[static_cast<qsizetype>((walk.size() + seed) % 4)];
    trial.fault.forGood = (walk.size() + seed) % 3 == 0 && !isOfTheNetwork(step.call);
    trial.fault.shim = orderFor(step, trial.fault.forGood ? u"failfrom"_s : u"fail"_s, error);
    walk.push_back(trial);
  }
  return walk;
}

std::vector<Planned> ownFaults(const Scenario& scenario, const QString& call) {
  std::vector<Planned> trials;
  for (const QString& name : ownFaultsOf(call)) trials.push_back(atService(scenario, FaultKind::service, call, name));
  return trials;
}

std::vector<Planned> serviceFaults(const Scenario& scenario, const QString& call) {
  std::vector<Planned> trials;
  for (const QString& name : faultsOfAnyCall()) trials.push_back(atService(scenario, FaultKind::service, call, name));
  // The sandbox never goes on: the program's own patience ends.
  trials.push_back(atService(scenario, FaultKind::service, call, u"hold"_s));
  for (const QString& at : {u"head"_s, u"before"_s, u"after"_s}) {
    Planned trial = atService(scenario, FaultKind::held, call, u"hold"_s);
    trial.fault.more.insert(u"at"_s, at);
    trials.push_back(trial);
  }
  trials.push_back(atService(scenario, FaultKind::held, call, u"stall"_s));
  return trials;
}

}  // namespace sorvan::torture
