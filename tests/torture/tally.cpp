#include "torture/tally.h"

#include <cstdio>

namespace sorvan::torture {

using namespace Qt::StringLiterals;

void say(const QString& line) {
  std::puts(line.toUtf8().constData());
  std::fflush(stdout);
}

namespace {

QString hit(const QString& scenario, const QString& place, const QString& way = {}, int turn = 0) {
  QString name = scenario + u": "_s + place;
  if (!way.isEmpty()) name += u", "_s + way;
  if (turn > 0) name += u", number "_s + QString::number(turn);
  return name;
}

}  // namespace

void Tally::mustBeHit(const QString& scenario, const QString& place) {
  const std::lock_guard hold(mutex_);
  required_ << hit(scenario, place);
}

void Tally::mustBeHitInEveryWay(const QString& scenario, const Counted& step) {
  const std::lock_guard hold(mutex_);
  for (const QString& way : waysOfKilling(step.call))
    required_ << hit(scenario, step.place, way, step.varies() ? 0 : step.turn);
}

QStringList Tally::neverHit() const {
  QStringList steps((required_ - places_).values());
  steps.sort();
  return steps;
}

void Tally::add(const Planned& planned, const TrialResult& result) {
  const std::lock_guard hold(mutex_);
  const bool kills = planned.fault.kind == FaultKind::kill || planned.fault.kind == FaultKind::held;
  if (kills) ++kills_;
  if (planned.fault.kind == FaultKind::fail || planned.fault.kind == FaultKind::service) ++faults_;
  if (planned.fault.kind == FaultKind::kill && result.met) {
    const QString way = planned.fault.shim.section(u' ', 1, 1);
    places_ << hit(planned.scenario->name, result.place) << hit(planned.scenario->name, result.place, way)
            << hit(planned.scenario->name, result.place, way, planned.turn);
  }
  for (const Outcome& outcome : result.outcomes) {
    ++trials_;
    if (outcome.powerCut) ++cuts_;
    unknown_ += outcome.verdict.unknownSubmissions;
    QSet<QString> names;
    for (const Violation& violation : outcome.verdict.violations) {
      names << violation.invariant;
      say(u"VIOLATED %1 in [%2]: %3 (see %4)"_s.arg(violation.invariant, outcome.trial, violation.what, outcome.folder));
    }
    for (const QString& name : names) ++violated_[name];
  }
}

void Tally::missed(const QString& what) {
  const std::lock_guard hold(mutex_);
  missed_ << what;
}

void Tally::hunted(const QString& bug, const QString& by) {
  const std::lock_guard hold(mutex_);
  ++bugs_;
  if (!by.isEmpty()) ++caught_;
  say(by.isEmpty() ? u"planted bug NOT CAUGHT: "_s + bug : u"planted bug caught: %1, by %2"_s.arg(bug, by));
}

int Tally::trials() const {
  const std::lock_guard hold(mutex_);
  return trials_;
}

QString Tally::lastLine(quint64 seed) const {
  const auto broken = [this](std::initializer_list<const char*> names) {
    int count = 0;
    for (const char* name : names) count += violated_.value(QString::fromLatin1(name));
    return QString::number(count);
  };
  return u"trials %1, kills %2, faults %3, power cuts %4, "_s.arg(trials_).arg(kills_).arg(faults_).arg(cuts_) +
         u"duplicate purchases %1, lost results %2, lost work %3, planted bugs caught %4 of %5"_s.arg(
             broken({"I1", "I10"}), broken({"I3", "I4"}), broken({"I2", "I7"}), QString::number(caught_),
             QString::number(bugs_)) +
         u", unknown submissions %1, seed %2"_s.arg(unknown_).arg(seed);
}

bool Tally::conclude(quint64 seed) const {
  const std::lock_guard hold(mutex_);
  for (const InvariantName& name : invariantNames()) {
    const QString id = QString::fromLatin1(name.name);
    const QString text = QString::fromLatin1(name.text);
    say(u"%1 %2: held in %3 of %4 trials"_s.arg(id, text).arg(trials_ - violated_.value(id)).arg(trials_));
  }
  const QStringList open = missed_ + neverHit();
  say(u"steps that had to be hit by a kill: %1, never hit: %2"_s.arg(required_.size()).arg(neverHit().size()));
  for (const QString& what : open) say(u"NEVER HIT: "_s + what);
  say(lastLine(seed));
  return violated_.isEmpty() && open.isEmpty() && caught_ == bugs_;
}

}  // namespace sorvan::torture
