#include "torture/run.h"

#include <QColor>
#include <QDir>
#include <QImage>
#include <atomic>
#include <cstdio>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

constexpr unsigned workers = 2;
constexpr int leastTrials = 3000;  // of a full run

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

// Every so many of them, so that runs of different seeds together do all.
std::vector<Planned> share(std::vector<Planned> all, quint64 of, quint64 seed) {
  std::vector<Planned> some;
  for (std::size_t i = 0; i < all.size(); ++i)
    if ((i + seed) % of == 0) some.push_back(all[i]);
  return some;
}

}  // namespace

Run::Run(RunOptions options) : options_(std::move(options)) {
  for (Scenario& scenario : allScenarios(ownPicture(options_.folder)))
    if (options_.scenarios.isEmpty() || options_.scenarios.contains(scenario.name))
      scenarios_.push_back(std::move(scenario));
  if (scenarios_.empty()) throw std::runtime_error("no scenario has such a name");
  if (options_.bugs && options_.plantedDriver.isEmpty())
    throw std::runtime_error("this build has no driver with planted bugs; --no-bugs leaves them out");
}

const Scenario& Run::scenario(const QString& name) const {
  for (const Scenario& scenario : scenarios_)
    if (scenario.name == name) return scenario;
  return scenarios_.front();
}

// The first run of each scenario: no fault, everything must succeed, and its steps are counted.
void Run::count() {
  std::mutex mutex;
  std::atomic<std::size_t> next = 0;
  onWorkers([&](unsigned worker) {
    Workshop workshop(options_.folder + u"/counting-%1"_s.arg(worker), options_.driver);
    for (std::size_t i = next++; i < scenarios_.size(); i = next++) {
      const TrialResult result = workshop.run(scenarios_[i], {});
      tally_.add({&scenarios_[i], {}, {}}, result);
      const std::lock_guard hold(mutex);
      steps_[scenarios_[i].name] = countedSteps(result.steps, result.workspace);
      std::printf("%s: %zu steps\n", qPrintable(scenarios_[i].name), result.steps.size());
    }
  });
}

// A step that a trial missed, because the network came in other pieces this time, is tried at again.
void Run::one(const Planned& planned, Workshop& workshop) {
  constexpr int mostAttempts = 4;
  for (int attempt = 1;; ++attempt) {
    const TrialResult result = workshop.run(*planned.scenario, planned.fault);
    tally_.add(planned, result);
    if (result.met) return;
    if (attempt == mostAttempts) return tally_.missed(planned.scenario->name + u": "_s + planned.fault.text());
  }
}

void Run::walkInto(const std::vector<Planned>& trials, const QString& folder, std::size_t first) {
  constexpr std::size_t trialsOfAWorkshop = 150;
  Workshop workshop(folder, options_.driver);
  const std::size_t end = std::min(trials.size(), first + trialsOfAWorkshop * workers);
  for (std::size_t i = first; i < end; i += workers) {
    if (options_.full && isOverdue() && tally_.trials() >= leastTrials) return;
    one(trials[i], workshop);
  }
}

void Run::walk(std::vector<Planned> trials) {
  constexpr std::size_t trialsOfAWorkshop = 150;
  const int walk = ++walks_;
  onWorkers([&](unsigned worker) {
    for (std::size_t first = worker; first < trials.size(); first += trialsOfAWorkshop * workers)
      walkInto(trials, options_.folder + u"/walk-%1-%2-%3"_s.arg(walk).arg(worker).arg(first), first);
  });
}

std::vector<Planned> Run::quickPlan(quint64 seed) const {
  std::vector<Planned> plan;
  for (const Scenario& each : scenarios_) {
    const bool main = each.name == u"picture"_s;
    append(plan, killWalk(each, steps_.at(each.name), Thoroughness::places, main ? 1 : 12, seed));
  }
  append(plan, failWalk(scenario(u"picture"_s), steps_.at(scenario(u"picture"_s).name), seed));
  for (const QString& call : {u"submit"_s, u"status"_s, u"result"_s, u"download"_s})
    append(plan, share(serviceFaults(scenario(u"picture"_s), call), call == u"submit"_s ? 1 : 4, seed));
  for (const QString& call : {u"upload-start"_s, u"upload"_s})
    append(plan, share(serviceFaults(scenario(u"edit"_s), call), 6, seed));
  append(plan, share(serviceFaults(scenario(u"cancel"_s), u"cancel"_s), 6, seed));
  return plan;
}

std::vector<Planned> Run::fullPlan(quint64 seed) const {
  std::vector<Planned> plan;
  for (const Scenario& each : scenarios_) {
    append(plan, killWalk(each, steps_.at(each.name), Thoroughness::steps, 3, seed));
    append(plan, failWalk(each, steps_.at(each.name), seed));
    for (const QString& call : {u"submit"_s, u"status"_s, u"result"_s, u"download"_s})
      if (each.name != u"cancel"_s && !each.setUpEndsAt.contains(u"results"_s)) append(plan, serviceFaults(each, call));
  }
  for (const QString& call : {u"upload-start"_s, u"upload"_s}) append(plan, serviceFaults(scenario(u"edit"_s), call));
  append(plan, serviceFaults(scenario(u"cancel"_s), u"cancel"_s));
  return plan;
}

void Run::hunt(const Bug& bug, const QString& folder) {
  constexpr std::size_t mostTrials = 40;
  const Scenario& prey = scenario(u"picture"_s);
  Workshop workshop(folder, options_.plantedDriver, bug.name);
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
  for (const QString& bug : bugsNotYetPossible()) std::printf("planted bug not yet possible: %s\n", qPrintable(bug));
}

bool Run::carryOut() {
  std::printf("seed %llu, in %s\n", static_cast<unsigned long long>(options_.seed), qPrintable(options_.folder));
  count();
  if (options_.onlyBugs) {
    // Nothing but what counting tells.
  } else if (options_.full) {
    for (quint64 round = 0; !isOverdue() || tally_.trials() < leastTrials; ++round) walk(fullPlan(options_.seed + round));
  } else {
    walk(quickPlan(options_.seed));
  }
  hunt();
  return tally_.conclude();
}

}  // namespace sorvan::torture
