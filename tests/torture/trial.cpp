#include "torture/trial.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QUuid>
#include <stdexcept>

#include "torture/journal.h"
#include "torture/old_library.h"
#include "torture/power_cut.h"

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

QJsonObject command(const QString& name) { return {{u"do"_s, name}}; }

// Retry on whatever stopped. The first time once, as a user does; later twice in one session, because the service's word
// that a job is dead counts only within one.
QJsonArray retries(int times) {
  QJsonArray commands;
  for (int i = 0; i < times; ++i) {
    commands.append(command(u"retry"_s));
    commands.append(command(u"run"_s));
  }
  return commands;
}

bool isAtRest(const QJsonObject& report) {
  if (report.isEmpty() || report.contains(u"refused"_s)) return false;
  for (const QJsonValue& value : report.value(u"jobs"_s).toArray()) {
    const QJsonObject job = value.toObject();
    if (!job.value(u"unknown"_s).toBool() && job.value(u"status"_s).toString() != u"complete"_s) return false;
  }
  return true;
}

QString plantedKey(QByteArray& secret) {
  secret = QUuid::createUuid().toRfc4122().toHex() + QUuid::createUuid().toRfc4122().toHex();
  return QUuid::createUuid().toString(QUuid::WithoutBraces) + u':' + QString::fromLatin1(secret);
}

struct CutName {
  CutModel model;
  const char16_t* name;
};
constexpr CutName cutNames[] = {{CutModel::strict, u"only what was synced"},
                                {CutModel::ordered, u"as on ext4"},
                                {CutModel::torn, u"torn"}};

void damage(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write("{\"charges\": [ cut off by somebody els") < 0)
    throw std::runtime_error("a sidecar cannot be damaged");
}

}  // namespace

QString Fault::text() const {
  switch (kind) {
    case FaultKind::none: return u"no fault"_s;
    case FaultKind::kill:
    case FaultKind::fail: return shim;
    case FaultKind::service: return name + u" at "_s + call;
    case FaultKind::held: return u"killed while "_s + call + u" is held "_s + more.value(u"at"_s).toString();
  }
  return {};
}

// What is carried through one trial.
struct Workshop::Recovery {
  QString tag;
  QStringList ledgerRuns;
  Evidence evidence;
  TrialResult result;
};

Workshop::Workshop(QString folder, const QString& driver, QString picture, const QString& bug)
    : folder_(std::move(folder)), picture_(std::move(picture)) {
  QDir().mkpath(folder_);
  station_ = std::make_unique<Station>(driver, bug, plantedKey(secret_), folder_ + u"/service"_s);
}

void Workshop::setUp(const Scenario& scenario, const Grounds& grounds) {
  const QString point = scenario.setUpEndsAt.isEmpty() ? QString() : u"point "_s + scenario.setUpEndsAt;
  if (scenario.setUpStands) station_->sandbox().setManualPace(true);
  const DriverEnd end = station_->run(grounds, scenario.setUp, {point, false});
  if (scenario.setUpStands) station_->sandbox().setManualPace(false);
  if (end.killed == point.isEmpty() || end.overdue || end.crashed || end.report.contains(u"refused"_s))
    throw std::runtime_error("the library for “" + scenario.name.toStdString() + "” cannot be made");
  if (!scenario.damagedSidecar.isEmpty()) damage(grounds.workspace() + u"/.sorvan/"_s + scenario.damagedSidecar);
}

const Workshop::Beginning& Workshop::beginningOf(const Scenario& scenario) {
  const auto known = beginnings_.find(scenario.name);
  if (known != beginnings_.end()) return known->second;
  Beginning beginning;
  beginning.run = u"before "_s + scenario.name;
  station_->sandbox().setRun(beginning.run);
  const Grounds grounds = Grounds::made(folder_ + u"/before-"_s + scenario.name);
  if (scenario.oldVersion > 0)
    beginning.acknowledged = layOldLibrary(grounds.workspace(), scenario.oldVersion, picture_);
  else if (!scenario.beginsWithNothing)
    setUp(scenario, grounds);
  station_->mostPostsSinceLast();
  beginning.workspace = grounds.workspace();
  beginning.files = filesBelow(grounds.workspace());
  beginning.acknowledged += acknowledgedIn(grounds);
  return beginnings_[scenario.name] = beginning;
}

DriverEnd Workshop::start(const Grounds& grounds, const QJsonArray& commands, const QString& what, Recovery& recovery) {
  DriverEnd end = station_->run(grounds, commands);
  if (recovery.evidence.opened.isEmpty()) recovery.evidence.opened = end.report.value(u"opened"_s).toObject();
  if (end.overdue) recovery.evidence.unended << what + u" did not end"_s;
  if (end.crashed || end.killed) recovery.evidence.unended << what + u" crashed"_s;
  recovery.evidence.mostPosts = qMax(recovery.evidence.mostPosts, station_->mostPostsSinceLast());
  return end;
}

void Workshop::measure(const Scenario& scenario, const Fault& fault, const Grounds& grounds, Recovery& recovery) {
  sorvan::test::SandboxProcess& sandbox = station_->sandbox();
  const QJsonArray commands = named(scenario.commands, recovery.tag);
  if (scenario.jobsStand) sandbox.setManualPace(true);
  DriverEnd end;
  if (fault.kind == FaultKind::service || fault.kind == FaultKind::held) sandbox.addFault(fault.call, fault.name, fault.more);
  if (fault.kind == FaultKind::held) end = station_->runUntilHeld(grounds, commands, fault.call);
  else end = station_->run(grounds, commands, {fault.shim, fault.kind != FaultKind::service});
  recovery.result.met = fault.kind == FaultKind::none || (fault.kind == FaultKind::held && end.killed);
  if (fault.kind == FaultKind::service) recovery.result.met = sandbox.state().value(u"faults"_s).toInt() == 0;
  sandbox.clearFaults();
  sandbox.release();
  if (scenario.jobsStand) sandbox.setManualPace(false);
  if (end.overdue) recovery.evidence.unended << u"the run under the fault did not end"_s;
  if (end.crashed) recovery.evidence.unended << u"the run under the fault crashed"_s;
  recovery.evidence.mostPosts = station_->mostPostsSinceLast();
  const bool opened = !end.report.isEmpty() && !end.report.contains(u"refused"_s);
  recovery.evidence.leftUnsaved = scenario.endsSaved && opened && !fault.forGood && end.report.value(u"unsaved"_s).toBool();
  if (fault.kind == FaultKind::service || fault.kind == FaultKind::held) return;
  recovery.result.workspace = grounds.workspace();
  recovery.result.steps = readJournal(grounds.journal());
  if (const auto struck = struckIn(recovery.result.steps)) {
    recovery.result.met = true;
    recovery.result.place = placeOf(struck->other, struck->path, grounds.workspace());
  }
}

void Workshop::comeToRest(const Grounds& grounds, Recovery& recovery) {
  constexpr int mostStarts = 3;
  Evidence& evidence = recovery.evidence;
  for (int i = 0; i < mostStarts; ++i) {
    evidence.report = start(grounds, retries(i == 0 ? 1 : 2), u"the recovery"_s, recovery).report;
    if (isAtRest(evidence.report)) break;
  }
  evidence.after = filesBelow(grounds.workspace());
  evidence.secondReport = start(grounds, retries(1), u"the second recovery"_s, recovery).report;
  evidence.second = filesBelow(grounds.workspace());
}

bool Workshop::secretWasShownElsewhere() const {
  for (const QJsonObject& call : station_->sandbox().calls())
    if (call.value(u"host"_s).toString() == u"elsewhere.example"_s && call.value(u"key"_s).toString() != u"none"_s)
      return true;
  return false;
}

Outcome Workshop::recover(const Scenario& scenario, const Fault& fault, const Grounds& grounds, Recovery recovery,
                          const QString& variant) {
  Outcome outcome;
  outcome.trial = scenario.name + u", "_s + fault.text() + (variant.isEmpty() ? QString() : u", power cut, "_s + variant);
  if (!recovery.result.place.isEmpty()) outcome.trial += u" ("_s + recovery.result.place + u')';
  outcome.powerCut = !variant.isEmpty();
  const QString run = recovery.tag + u'/' + variant;
  station_->sandbox().setRun(run);
  recovery.evidence.grounds = grounds;
  comeToRest(grounds, recovery);
  recovery.evidence.purchases = purchasesOf(station_->sandbox(), recovery.ledgerRuns + QStringList{run});
  recovery.evidence.gateway = station_->sandbox().gateway();
  if (fault.kind == FaultKind::service) recovery.evidence.secretShownElsewhere = secretWasShownElsewhere();
  outcome.verdict = judge(recovery.evidence);
  outcome.folder = grounds.folder;
  return outcome;
}

TrialResult Workshop::run(const Scenario& scenario, const Fault& fault) {
  const Beginning& beginning = beginningOf(scenario);
  Recovery recovery;
  recovery.tag = u"trial "_s + QString::number(++number_);
  recovery.ledgerRuns = {beginning.run, recovery.tag};
  recovery.evidence.before = beginning.files;
  recovery.evidence.secret = secret_;
  recovery.evidence.oldVersion = scenario.oldVersion;
  if (!scenario.damagedSidecar.isEmpty()) recovery.evidence.damagedSidecar = u".sorvan/"_s + scenario.damagedSidecar;
  const Grounds grounds = Grounds::made(folder_ + u'/' + QString::number(number_), beginning.workspace);
  station_->sandbox().setRun(recovery.tag);
  measure(scenario, fault, grounds, recovery);
  recovery.evidence.acknowledged = beginning.acknowledged + acknowledgedIn(grounds);

  // What a power cut at this moment would leave, before anything else touches it.
  std::vector<std::pair<Grounds, QString>> cuts;
  if (fault.cuts && recovery.result.met) {
    PowerCut cut(beginning.workspace);
    cut.play(recovery.result.steps, grounds.workspace());
    for (const CutName& each : cutNames) {
      const Grounds left = Grounds::made(grounds.folder + u"-cut-"_s + QString::number(int(each.model)));
      cut.leave(each.model, fault.seed, left.workspace());
      cuts.emplace_back(left, QString::fromUtf16(each.name));
    }
  }
  std::vector<Outcome> outcomes{recover(scenario, fault, grounds, recovery, {})};
  for (const auto& [left, name] : cuts) outcomes.push_back(recover(scenario, fault, left, recovery, name));
  for (const Outcome& outcome : outcomes)
    if (outcome.verdict.violations.empty()) QDir(outcome.folder).removeRecursively();
  recovery.result.outcomes = std::move(outcomes);
  return std::move(recovery.result);
}

}  // namespace sorvan::torture
