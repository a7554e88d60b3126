#include "torture/station.h"

#include <signal.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <filesystem>
#include <stdexcept>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

constexpr int longestRunMilliseconds = 40'000;

sorvan::test::SandboxProcess::Options optionsFor(const QString& key, const QString& state) {
  sorvan::test::SandboxProcess::Options options;
  QDir().mkpath(state);
  options.stateFolder = state;
  options.more = {u"--key"_s, key, u"--longest-side"_s, u"160"_s};
  return options;
}

QProcessEnvironment environmentFor(const Grounds& grounds, const QString& configuration, const ShimOrder& shim) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SORVAN_SERVICE"_s, configuration);
  environment.insert(u"SORVAN_DRIVER_ACKS"_s, grounds.acknowledgements());
  environment.insert(u"HOME"_s, grounds.home());
  environment.insert(u"TMPDIR"_s, grounds.home() + u"/tmp"_s);
  for (const QString& kind : {u"CACHE"_s, u"CONFIG"_s, u"DATA"_s, u"STATE"_s})
    environment.insert(u"XDG_"_s + kind + u"_HOME"_s, grounds.home() + u'/' + kind.toLower());
  environment.insert(u"XDG_RUNTIME_DIR"_s, grounds.home() + u"/runtime"_s);
  if (shim.fault.isEmpty() && !shim.journal) return environment;
  environment.insert(u"LD_PRELOAD"_s, QStringLiteral(SORVAN_FAULTSHIM));
  environment.insert(u"SORVAN_FAULT_ROOT"_s, grounds.workspace());
  if (!shim.fault.isEmpty()) environment.insert(u"SORVAN_FAULT"_s, shim.fault);
  if (shim.journal) environment.insert(u"SORVAN_FAULT_JOURNAL"_s, grounds.journal());
  return environment;
}

// What costs nothing and may be asked again.
bool isFree(const QString& endpoint) {
  static const QStringList free{u"upload-start"_s, u"gateway-upload"_s, u"cancel-operation"_s, u"prices"_s, u"account"_s};
  return free.contains(endpoint);
}

DriverEnd endOf(QProcess& driver) {
  DriverEnd end;
  if (!driver.waitForFinished(longestRunMilliseconds)) {
    end.overdue = true;
    driver.kill();
    driver.waitForFinished();
  }
  end.killed = driver.exitStatus() == QProcess::CrashExit && driver.exitCode() == SIGKILL;
  end.crashed = driver.exitStatus() == QProcess::CrashExit && driver.exitCode() != SIGKILL;
  end.report = QJsonDocument::fromJson(driver.readAllStandardOutput()).object();
  return end;
}

}  // namespace

Grounds Grounds::made(const QString& folder, const QString& workspace) {
  const Grounds grounds{folder};
  for (const QString& part : {grounds.outside(), grounds.home() + u"/tmp"_s, grounds.home() + u"/runtime"_s})
    QDir().mkpath(part);
  QFile::setPermissions(grounds.home() + u"/runtime"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QFile canary(grounds.outside() + u"/of-somebody-else.png"_s);
  if (!canary.open(QFile::WriteOnly) || canary.write("not yours") < 0) throw std::runtime_error("no room for a trial");
  if (workspace.isEmpty()) QDir().mkpath(grounds.workspace());
  else std::filesystem::copy(workspace.toStdString(), grounds.workspace().toStdString(),
                             std::filesystem::copy_options::recursive);
  return grounds;
}

Station::Station(QString driver, QString bug, const QString& key, const QString& state)
    : driver_(std::move(driver)), bug_(std::move(bug)), sandbox_(optionsFor(key, state)) {
  // More than any number of trials spends.
  sandbox_.steerGateway({{u"do"_s, u"grant"_s}, {u"credits"_s, 1'000'000}});
}

std::unique_ptr<QProcess> Station::started(const Grounds& grounds, const QJsonArray& commands, const ShimOrder& shim) {
  auto driver = std::make_unique<QProcess>();
  QProcessEnvironment environment = environmentFor(grounds, sandbox_.configurationPath(), shim);
  if (!bug_.isEmpty()) environment.insert(u"SORVAN_PLANTED_BUG"_s, bug_);
  driver->setProcessEnvironment(environment);
  driver->setStandardErrorFile(grounds.folder + u"/errors"_s, QIODevice::Append);
  driver->start(driver_, {grounds.workspace(), QString::fromUtf8(QJsonDocument(commands).toJson(QJsonDocument::Compact))});
  if (!driver->waitForStarted()) throw std::runtime_error("the driver did not start");
  return driver;
}

DriverEnd Station::run(const Grounds& grounds, const QJsonArray& commands, const ShimOrder& shim) {
  return endOf(*started(grounds, commands, shim));
}

DriverEnd Station::runUntilHeld(const Grounds& grounds, const QJsonArray& commands, const QString& call) {
  const auto driver = started(grounds, commands, {});
  bool held = true;
  try {
    sandbox_.waitForHeld(call);
  } catch (const std::runtime_error&) {
    held = false;  // a busy machine: the program gave up before it came to this call
  }
  ::kill(static_cast<pid_t>(driver->processId()), SIGKILL);
  DriverEnd end = endOf(*driver);
  end.killed = held;
  sandbox_.release();
  return end;
}

int Station::mostPostsSinceLast() {
  int most = 0;
  const QJsonObject posts = sandbox_.state().value(u"posts"_s).toObject();
  const QJsonObject endpoints = posts.value(u"endpoints"_s).toObject();
  for (auto endpoint = endpoints.begin(); endpoint != endpoints.end(); ++endpoint) {
    if (isFree(endpoint.key())) continue;
    const QJsonObject attempts = endpoint.value().toObject().value(u"attempts"_s).toObject();
    for (auto attempt = attempts.begin(); attempt != attempts.end(); ++attempt) {
      if (attempt.key() == u"unread"_s) continue;  // whose body it was is not known
      int& known = posts_[endpoint.key() + u' ' + attempt.key()];
      most = qMax(most, attempt.value().toInt() - known);
      known = attempt.value().toInt();
    }
  }
  return most;
}

}  // namespace sorvan::torture
