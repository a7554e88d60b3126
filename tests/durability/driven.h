// One workspace, one sandbox, and the driver started on them as often as a test likes.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>

#include "support_sandbox/sandbox_process.h"

namespace durability {

// What one run of the driver ended with.
struct Ended {
  bool killed = false;
  int exitCode = -1;
  QJsonObject report;  // empty when it was killed
  QJsonObject job(int index = 0) const { return report[u"jobs"_qs].toArray().at(index).toObject(); }
  QJsonObject item(int index = 0) const { return report[u"items"_qs].toArray().at(index).toObject(); }
  qsizetype jobs() const { return report[u"jobs"_qs].toArray().size(); }
  qsizetype items() const { return report[u"items"_qs].toArray().size(); }
};

class Driven {
 public:
  Driven();
  ~Driven();

  // Starts the driver with these commands and returns while it runs. `point` is a kill point of the fault shim, such as
  // "before rename results.json"; it counts once `arm` was called, or from the start when `armedAtOnce`.
  void start(const QJsonArray& commands, const QString& point = {}, bool armedAtOnce = true);
  void arm();
  // SIGKILL, now.
  void kill();
  // Waits for the end of what `start` began.
  Ended end();
  // Starts and waits.
  Ended run(const QJsonArray& commands, const QString& point = {});
  // Starts and waits under a fault of the shim, such as "failfrom 12 ENOSPC".
  Ended runFaulty(const QJsonArray& commands, const QString& fault);
  // The same with a fault of the network.
  Ended runOnBadLine(const QJsonArray& commands, const QString& fault);
  // Whether this machine lets a program mount a file system of its own, as the next one does.
  static bool mountingIsAllowed();
  // Starts and waits as a user without privileges, with the workspace on a file system of 400 kB that is all full.
  Ended runOnFullDisk(const QJsonArray& commands);
  // Starts and waits as a user without privileges, in a folder that may not be written.
  Ended runInReadOnlyFolder(const QJsonArray& commands);

  sorvan::test::SandboxProcess& sandbox() { return sandbox_; }
  QString workspace() const { return workspace_; }
  // Files below a folder of the workspace, relative to it, sorted.
  QStringList filesBelow(const QString& folder) const;

 private:
  QProcessEnvironment environment() const;
  QProcessEnvironment faulty(const QString& fault) const;
  QString configurationForEverybody() const;
  void launch(const QProcessEnvironment& environment, const QString& program, const QStringList& arguments);
  Ended runShell(const QJsonArray& commands, const QString& before, const QStringList& around);

  QTemporaryDir folder_;
  QString workspace_;
  QString armFile_;
  sorvan::test::SandboxProcess sandbox_;
  std::unique_ptr<QProcess> driver_;
};

QJsonObject enqueuePicture(const QString& prompt = u"a lighthouse in the rain"_qs);
QJsonObject command(const QString& name);

}  // namespace durability
