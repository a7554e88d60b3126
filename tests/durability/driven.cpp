#include "durability/driven.h"

#include <signal.h>

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

void Driven::start(const QJsonArray& commands, const QString& point, bool armedAtOnce) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SORVAN_SERVICE"_qs, sandbox_.configurationPath());
  environment.insert(u"XDG_CACHE_HOME"_qs, folder_.filePath(u"cache"_qs));
  QFile::remove(armFile_);
  if (armedAtOnce) arm();
  if (!point.isEmpty()) {
    environment.insert(u"LD_PRELOAD"_qs, QStringLiteral(SORVAN_FAULTSHIM));
    environment.insert(u"SORVAN_FAULT_ROOT"_qs, workspace_);
    environment.insert(u"SORVAN_FAULT"_qs, u"point "_qs + point);
    environment.insert(u"SORVAN_FAULT_ARMED"_qs, armFile_);
  }
  driver_ = std::make_unique<QProcess>();
  driver_->setProcessEnvironment(environment);
  driver_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  driver_->start(QStringLiteral(SORVAN_DRIVER),
                 {workspace_, QString::fromUtf8(QJsonDocument(commands).toJson(QJsonDocument::Compact))});
  if (!driver_->waitForStarted(10000)) throw std::runtime_error("the driver did not start");
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
