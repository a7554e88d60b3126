#include "torture/run.h"

#include <QColor>
#include <QDir>
#include <QImage>
#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

// More than there are cores: each waits now and then, for the service and for what it started.
const unsigned workers = std::clamp(2 * std::thread::hardware_concurrency(), 4U, 16U);
constexpr int leastTrials = 3000;  // of a full run
const QString roadName = u"picture"_s;  // the scenario that is the road from an order to its item

// A quick run takes two of the six old forms, others with another seed.
bool isWalked(const Scenario& scenario, quint64 seed) {
  return scenario.oldVersion == 0 || (static_cast<quint64>(scenario.oldVersion) + seed) % 3 == 0;
}

// A picture of the user's own, for scenarios that begin with one.
QString ownPicture(const QString& folder) {
  QImage picture(96, 64, QImage::Format_RGB888);
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) picture.setPixelColor(x, y, QColor(2 * x, 3 * y, 90));
  const QString file = folder + u"/own picture.png"_s;
  if (!picture.save(file)) throw std::runtime_error("no room for a picture");
  return file;
}

// Runs the same on every worker, and hands on the first failure.
void onWorkers(const std::function<void(unsigned)>& work) {
  std::vector<std::thread> threads;
  std::mutex mutex;
  std::exception_ptr failure;
  for (unsigned worker = 0; worker < workers; ++worker)
    threads.emplace_back([&, worker] {
      try {
        work(worker);
      } catch (...) {
        const std::lock_guard hold(mutex);
        failure = std::current_exception();
      }
    });
  for (std::thread& thread : threads) thread.join();
  if (failure) std::rethrow_exception(failure);
}

void append(std::vector<Planned>& to, std::vector<Planned> more) { to.insert(to.end(), more.begin(), more.end()); }

std::vector<Planned> allFaults(const Scenario& scenario, const QString& call) {
  std::vector<Planned> all = ownFaults(scenario, call);
  append(all, serviceFaults(scenario, call));
  return all;
}

// Every so many of them, so that runs of different seeds together do all.
std::vector<Planned> share(std::vector<Planned> all, quint64 of, quint64 seed) {
  std::vector<Planned> some;
  for (std::size_t i = 0; i < all.size(); ++i)
    if ((i + seed) % of == 0) some.push_back(all[i]);
  return some;
}

// What is asked for once, and paid for.
bool isDear(const QString& call) { return call == u"submit"_s || call == u"download"_s || call == u"purchase"_s; }

}  // namespace

Run::Run(RunOptions options) : options_(std::move(options)), picture_(ownPicture(options_.folder)) {
  for (Scenario& scenario : allScenarios(picture_))
    if (options_.scenarios.isEmpty() || options_.scenarios.contains(scenario.name))
      scenarios_.push_back(std::move(scenario));
  if (scenarios_.empty()) throw std::runtime_error("no scenario has such a name");
  if (options_.bugs && options_.plantedDriver.isEmpty())
    throw std::runtime_error("this build has no driver with planted bugs; --no-bugs leaves them out");
}

bool Run::isChosen(const QString& name) const { return scenario(name).name == name; }

// The first one stands in for one that was left out.
const Scenario& Run::scenario(const QString& name) const {
  for (const Scenario& scenario : scenarios_)
    if (scenario.name == name) return scenario;
  return scenarios_.front();
}

// The first runs of each scenario: no fault, everything must succeed, and its steps are counted. How often the service is
// asked differs from run to run, so only what each of them went through is counted.
void Run::count(const Scenario& counted, Workshop& workshop) {
  constexpr int runs = 3;
  std::vector<Counted> steps;
  for (int i = 0; i < runs; ++i) {
    const TrialResult result = workshop.run(counted, {});
    tally_.add({&counted, {}, {}}, result);
    const std::vector<Counted> these = countedSteps(result.steps, result.workspace);
    steps = i == 0 ? these : commonSteps(steps, these);
  }
  const std::lock_guard hold(mutex_);
  say(u"%1: %2 steps"_s.arg(counted.name).arg(steps.size()));
  steps_[counted.name] = std::move(steps);
}

void Run::count() {
  std::atomic<std::size_t> next = 0;
  onWorkers([&](unsigned worker) {
    Workshop workshop(options_.folder + u"/counting-%1"_s.arg(worker), options_.driver, picture_);
    for (std::size_t i = next++; i < scenarios_.size(); i = next++) count(scenarios_[i], workshop);
  });
}

// A step that a trial missed, because the network came in other pieces this time, is tried at again.
void Run::one(const Planned& planned, Workshop& workshop) {
  constexpr int mostAttempts = 8;
  for (int attempt = 1;; ++attempt) {
    const TrialResult result = workshop.run(*planned.scenario, planned.fault);
    tally_.add(planned, result);
    if (result.met && (planned.place.isEmpty() || result.place == planned.place)) return;
    if (attempt == 2 && planned.mayBeAbsent) return one(atFirstTurn(planned), workshop);
    if (attempt == mostAttempts) return tally_.missed(planned.scenario->name + u": "_s + planned.fault.text());
  }
}

bool Run::isEnough() const { return options_.full && isOverdue() && tally_.trials() >= leastTrials; }

// Trials that nobody else has taken, until they are all gone or the service of this workshop has seen enough.
void Run::walkOn(const std::vector<Planned>& trials, std::atomic<std::size_t>& next, const QString& folder) {
  constexpr int trialsOfAWorkshop = 150;
  Workshop workshop(folder, options_.driver, picture_);
  for (int made = 0; made < trialsOfAWorkshop && !isEnough(); ++made) {
    const std::size_t mine = next++;
    if (mine >= trials.size()) return;
    one(trials[mine], workshop);
  }
}

void Run::walk(std::vector<Planned> trials) {
  const int walk = ++walks_;
  std::atomic<std::size_t> next = 0;
  onWorkers([&](unsigned worker) {
    for (int workshop = 1; next < trials.size() && !isEnough(); ++workshop)
      walkOn(trials, next, options_.folder + u"/walk-%1-%2-%3"_s.arg(walk).arg(worker).arg(workshop));
  });
}

std::vector<Planned> Run::faultsOfService(quint64 seed) const {
  std::vector<Planned> plan;
  const std::vector<std::pair<QString, QStringList>> calls{
      {u"picture"_s, {u"submit"_s, u"status"_s, u"result"_s, u"pricing"_s, u"download"_s}},
      {u"edit"_s, {u"upload-start"_s, u"upload"_s}},
      {u"cancel"_s, {u"cancel"_s}},
      {u"credits"_s, {u"purchase"_s, u"look-up"_s, u"operation"_s}},
      {u"credits-edit"_s, {u"gateway-upload"_s}},
      {u"credits-cancel"_s, {u"cancel-operation"_s}}};
  for (const auto& [name, kinds] : calls)
    for (const QString& call : isChosen(name) ? kinds : QStringList()) {
      append(plan, ownFaults(scenario(name), call));
      append(plan, share(serviceFaults(scenario(name), call), isDear(call) ? 1 : 5, seed));
    }
  return plan;
}

// The road from the order to the item: every step, before, in the middle and after. Of everything else each different step.
std::vector<Planned> Run::quickPlan(quint64 seed) const {
  std::vector<Planned> plan;
  for (const Scenario& each : scenarios_) {
    const bool road = each.name == roadName;
    const Thoroughness thoroughness{.everyTurn = road, .everyWay = road, .cuts = road ? 6U : 12U};
    if (options_.full || isWalked(each, seed)) append(plan, killWalk(each, steps_.at(each.name), thoroughness, seed));
  }
  for (const QString& name : {roadName, u"rate"_s, u"sidecars"_s})
    if (isChosen(name)) append(plan, failWalk(scenario(name), steps_.at(name), seed));
  append(plan, faultsOfService(seed));
  return plan;
}

std::vector<Planned> Run::fullPlan(quint64 seed) const {
  std::vector<Planned> plan;
  for (const Scenario& each : scenarios_) {
    const std::vector<Counted>& steps = steps_.at(each.name);
    append(plan, killWalk(each, steps, {.everyTurn = true, .everyWay = each.name == roadName, .cuts = 3}, seed));
    append(plan, failWalk(each, steps, seed));
  }
  for (const QString& name : {roadName, u"edit"_s, u"clip"_s})
    for (const QString& call : {u"submit"_s, u"status"_s, u"result"_s, u"pricing"_s, u"download"_s})
      if (isChosen(name)) append(plan, allFaults(scenario(name), call));
  for (const QString& call : {u"upload-start"_s, u"upload"_s})
    if (isChosen(u"edit"_s)) append(plan, allFaults(scenario(u"edit"_s), call));
  if (isChosen(u"cancel"_s)) append(plan, allFaults(scenario(u"cancel"_s), u"cancel"_s));
  for (const QString& call : {u"purchase"_s, u"look-up"_s, u"operation"_s, u"download"_s})
    if (isChosen(u"credits"_s)) append(plan, allFaults(scenario(u"credits"_s), call));
  if (isChosen(u"credits-edit"_s)) append(plan, allFaults(scenario(u"credits-edit"_s), u"gateway-upload"_s));
  if (isChosen(u"credits-cancel"_s)) append(plan, allFaults(scenario(u"credits-cancel"_s), u"cancel-operation"_s));
  return plan;
}

// What the first, faultless runs went through must have been hit by a kill in the end, however the trials were planned.
void Run::requireSteps() {
  for (const Scenario& each : scenarios_) {
    if (!options_.full && !isWalked(each, options_.seed)) continue;
    for (const Counted& step : steps_.at(each.name))
      if (each.name == roadName) tally_.mustBeHitInEveryWay(each.name, step);
      else tally_.mustBeHit(each.name, step.place);
  }
}

void Run::hunt(const Bug& bug, const QString& folder) {
  constexpr std::size_t mostTrials = 40;
  // In another scenario it may harm nothing.
  if (!isChosen(bug.scenario)) return say(u"planted bug not hunted, its scenario is left out: "_s + bug.name);
  const Scenario& prey = scenario(bug.scenario);
  Workshop workshop(folder, options_.plantedDriver, picture_, bug.name);
  const std::vector<Planned> trials = huntFor(bug, prey, steps_.at(prey.name), options_.seed);
  for (std::size_t i = 0; i < std::min(trials.size(), mostTrials); ++i) {
    const QString found = givenAway(bug, workshop.run(*trials[i].scenario, trials[i].fault));
    if (!found.isEmpty()) return tally_.hunted(bug.name, found);
  }
  tally_.hunted(bug.name, {});
}

void Run::hunt() {
  if (!options_.bugs) return;
  std::atomic<std::size_t> next = 0;
  onWorkers([&](unsigned) {
    const std::vector<Bug>& bugs = plantedBugs();
    for (std::size_t i = next++; i < bugs.size(); i = next++) hunt(bugs[i], options_.folder + u"/hunt-"_s + bugs[i].name);
  });
}

bool Run::carryOut() {
  say(u"seed %1, in %2"_s.arg(QString::number(options_.seed), options_.folder));
  count();
  if (options_.onlyBugs) {
    // Nothing but what counting tells.
  } else if (options_.full) {
    requireSteps();
    walk(quickPlan(options_.seed));
    for (quint64 round = 0; !isOverdue() || tally_.trials() < leastTrials; ++round) walk(fullPlan(options_.seed + round));
  } else {
    requireSteps();
    walk(quickPlan(options_.seed));
  }
  hunt();
  return tally_.conclude(options_.seed);
}

}  // namespace sorvan::torture
