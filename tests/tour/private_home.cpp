#include "tour/private_home.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <stdexcept>

namespace tour {

QString makePrivateHome(const QString& prefix) {
  const QString home = QDir(QCoreApplication::applicationDirPath())
                           .absoluteFilePath(prefix + QUuid::createUuid().toString(QUuid::Id128).left(8));
  for (const char* folder : {"", "/.config", "/.local/share", "/.cache", "/run", "/Pictures"})
    if (!QDir().mkpath(home + QString::fromLatin1(folder))) throw std::runtime_error("no private home");
  QFile::setPermissions(home + u"/run"_qs, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return home;
}

void stop(QProcess& process) {
  if (process.state() == QProcess::NotRunning) return;
  process.terminate();
  if (!process.waitForFinished(3000)) process.kill();
  process.waitForFinished(2000);
}

}  // namespace tour
