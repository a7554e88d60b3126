#include "torture/tally.h"

#include <cstdio>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

void say(const QString& line) {
  std::puts(line.toUtf8().constData());
  std::fflush(stdout);
}

}  // namespace

void Tally::add(const Planned& planned, const TrialResult& result) {
  const std::lock_guard hold(mutex_);
  const bool kills = planned.fault.kind == FaultKind::kill || planned.fault.kind == FaultKind::held;
  if (kills) ++kills_;
  if (planned.fault.kind == FaultKind::fail || planned.fault.kind == FaultKind::service) ++faults_;
  if (planned.fault.kind == FaultKind::kill && result.met) places_ << planned.scenario->name + u": "_s + result.place;
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

QString Tally::lastLine() const {
  const auto broken = [this](std::initializer_list<const char*> names) {
    int count = 0;
    for (const char* name : names) count += violated_.value(QString::fromLatin1(name));
    return QString::number(count);
  };
  return u"trials %1, kills %2, faults %3, power cuts %4, "_s.arg(trials_).arg(kills_).arg(faults_).arg(cuts_) +
         u"duplicate purchases %1, lost results %2, lost work %3, planted bugs caught %4 of %5"_s.arg(
             broken({"I1", "I10"}), broken({"I3", "I4"}), broken({"I2", "I7"}), QString::number(caught_),
             QString::number(bugs_));
}

bool Tally::conclude() const {
  const std::lock_guard hold(mutex_);
  for (const InvariantName& name : invariantNames()) {
    const QString id = QString::fromLatin1(name.name);
    if (id == u"I12"_s) {
      say(u"I12 %1: not yet applicable, nothing is paid with credits"_s.arg(QString::fromLatin1(name.text)));
      continue;
    }
    say(u"%1 %2: held in %3 of %4 trials"_s.arg(id, QString::fromLatin1(name.text))
            .arg(trials_ - violated_.value(id))
            .arg(trials_));
  }
  say(u"steps hit by a kill: %1"_s.arg(places_.size()));
  for (const QString& what : missed_) say(u"NEVER HIT: "_s + what);
  say(u"unknown submissions %1"_s.arg(unknown_));
  say(lastLine());
  return violated_.isEmpty() && missed_.isEmpty() && caught_ == bugs_;
}

}  // namespace sorvan::torture
