#include "durability/driven.h"

#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <stdexcept>

namespace durability {

Driven::Driven() : workspace_(folder_.filePath(u"workspace"_qs)), armFile_(folder_.filePath(u"armed"_qs)) {
  QDir().mkpath(workspace_);
}

Driven::~Driven() {
  if (driver_) {
    driver_->kill();
    driver_->waitForFinished(5000);
  }
}

static QString textOf(const QJsonArray& commands) {
  return QString::fromUtf8(QJsonDocument(commands).toJson(QJsonDocument::Compact));
}

QProcessEnvironment Driven::environment() const {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SORVAN_SERVICE"_qs, sandbox_.configurationPath());
  environment.insert(u"XDG_CACHE_HOME"_qs, folder_.filePath(u"cache"_qs));
  environment.insert(u"XDG_RUNTIME_DIR"_qs, folder_.path());
  return environment;
}

void Driven::launch(const QProcessEnvironment& environment, const QString& program, const QStringList& arguments) {
  driver_ = std::make_unique<QProcess>();
  driver_->setProcessEnvironment(environment);
  driver_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  driver_->start(program, arguments);
  if (!driver_->waitForStarted(10000)) throw std::runtime_error("the driver did not start");
}

void Driven::start(const QJsonArray& commands, const QString& point, bool armedAtOnce) {
  QProcessEnvironment with = environment();
  QFile::remove(armFile_);
  if (armedAtOnce) arm();
  if (!point.isEmpty()) {
    with.insert(u"LD_PRELOAD"_qs, QStringLiteral(SORVAN_FAULTSHIM));
    with.insert(u"SORVAN_FAULT_ROOT"_qs, workspace_);
    with.insert(u"SORVAN_FAULT"_qs, u"point "_qs + point);
    with.insert(u"SORVAN_FAULT_ARMED"_qs, armFile_);
  }
  launch(with, QStringLiteral(SORVAN_DRIVER), {workspace_, textOf(commands)});
}

QProcessEnvironment Driven::faulty(const QString& fault) const {
  QProcessEnvironment with = environment();
  with.insert(u"LD_PRELOAD"_qs, QStringLiteral(SORVAN_FAULTSHIM));
  with.insert(u"SORVAN_FAULT_ROOT"_qs, workspace_);
  with.insert(u"SORVAN_FAULT"_qs, fault);
  return with;
}

Ended Driven::runOnBadLine(const QJsonArray& commands, const QString& fault) {
  launch(faulty(fault), QStringLiteral(SORVAN_DRIVER), {workspace_, textOf(commands)});
  return end();
}

Ended Driven::runFaulty(const QJsonArray& commands, const QString& fault) {
  QProcessEnvironment with = faulty(fault);
  with.insert(u"SORVAN_FAULT_NETWORK"_qs, u"no"_qs);
  launch(with, QStringLiteral(SORVAN_DRIVER), {workspace_, textOf(commands)});
  return end();
}

// A copy that a user without privileges can reach and run.
static QString openToEverybody(const QString& file, const QString& copy) {
  QFile::remove(copy);
  if (!QFile::copy(file, copy)) throw std::runtime_error("cannot copy the driver");
  QFile::setPermissions(copy, QFile::Permissions(0x7755));
  return copy;
}

QString Driven::configurationForEverybody() const {
  QJsonObject configuration = sandbox_.configuration();
  QFile authority(sandbox_.authorityPath());
  if (!authority.open(QFile::ReadOnly)) throw std::runtime_error("no authority");
  configuration.insert(u"authority"_qs, QString::fromLatin1(authority.readAll()));
  const QString path = folder_.filePath(u"service.json"_qs);
  QFile file(path);
  if (!file.open(QFile::WriteOnly)) throw std::runtime_error("cannot write the configuration");
  file.write(QJsonDocument(configuration).toJson());
  file.setPermissions(QFile::Permissions(0x6644));
  return path;
}

// As root the driver becomes the user nobody, because root may write anywhere.
Ended Driven::runShell(const QJsonArray& commands, const QString& before, const QStringList& around) {
  QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
  const QString driver = openToEverybody(QStringLiteral(SORVAN_DRIVER), folder_.filePath(u"driver"_qs));
  const QString drop = getuid() == 0 ? u"setpriv --reuid=65534 --regid=65534 --clear-groups "_qs : QString();
  const QString script = before + u"; exec "_qs + drop + u"\"$1\" \"$2\" \"$3\""_qs;
  QStringList command = around + QStringList{u"sh"_qs, u"-c"_qs, script, u"sh"_qs, driver, workspace_, textOf(commands)};
  QProcessEnvironment with = environment();
  with.insert(u"SORVAN_SERVICE"_qs, configurationForEverybody());
  const QString program = command.takeFirst();
  launch(with, program, command);
  return end();
}

// A mount namespace of its own.
static QStringList ownMounts() { return {u"unshare"_qs, getuid() == 0 ? u"-m"_qs : u"-rm"_qs}; }

bool Driven::mountingIsAllowed() {
  const QTemporaryDir place;
  QStringList command = ownMounts() + QStringList{u"mount"_qs, u"-t"_qs, u"tmpfs"_qs, u"none"_qs, place.path()};
  const QString program = command.takeFirst();
  return QProcess::execute(program, command) == 0;
}

Ended Driven::runOnFullDisk(const QJsonArray& commands) {
  const QString fill = u"mount -t tmpfs -o size=400k,mode=0777 none '"_qs + workspace_ + u"'; dd if=/dev/zero of='"_qs +
                       workspace_ + u"/filler' bs=1k count=390 2>/dev/null"_qs;
  return runShell(commands, fill, ownMounts());
}

Ended Driven::runInReadOnlyFolder(const QJsonArray& commands) {
  return runShell(commands, u"chmod 0555 '"_qs + workspace_ + u"'"_qs, {});
}

void Driven::arm() {
  QFile file(armFile_);
  if (!file.open(QFile::WriteOnly)) throw std::runtime_error("cannot arm");
}

void Driven::kill() { ::kill(static_cast<pid_t>(driver_->processId()), SIGKILL); }

Ended Driven::end() {
  if (!driver_->waitForFinished(30000)) {
    kill();
    driver_->waitForFinished(5000);
    throw std::runtime_error("the driver did not end within 30 s");
  }
  Ended ended;
  ended.killed = driver_->exitStatus() == QProcess::CrashExit;
  ended.exitCode = driver_->exitCode();
  ended.report = QJsonDocument::fromJson(driver_->readAllStandardOutput()).object();
  driver_.reset();
  return ended;
}

Ended Driven::run(const QJsonArray& commands, const QString& point) {
  start(commands, point);
  return end();
}

QStringList Driven::filesBelow(const QString& folder) const {
  QStringList found;
  const QDir root(workspace_);
  QDirIterator walk(root.filePath(folder), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (walk.hasNext()) found.append(root.relativeFilePath(walk.next()));
  found.sort();
  return found;
}

QJsonObject enqueuePicture(const QString& prompt) {
  return {{u"do"_qs, u"enqueue"_qs}, {u"model"_qs, u"fal-ai/flux/schnell"_qs}, {u"prompt"_qs, prompt}, {u"seed"_qs, 7}};
}

QJsonObject command(const QString& name) { return {{u"do"_qs, name}}; }

}  // namespace durability
