#include "tour/desktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <stdexcept>

#include "tour/private_home.h"

namespace tour {

Desktop::Desktop(QSize size)
    : home_(makePrivateHome(u"tour-home-"_qs)), environment_(QProcessEnvironment::systemEnvironment()) {
  for (const char* name : {"SORVAN_WORKSPACE", "SORVAN_SERVICE", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_STYLE_OVERRIDE",
                           "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"})
    environment_.remove(QString::fromLatin1(name));
  environment_.insert(u"HOME"_qs, home_);
  environment_.insert(u"XDG_CONFIG_HOME"_qs, home_ + u"/.config"_qs);
  environment_.insert(u"XDG_DATA_HOME"_qs, home_ + u"/.local/share"_qs);
  environment_.insert(u"XDG_CACHE_HOME"_qs, home_ + u"/.cache"_qs);
  environment_.insert(u"XDG_RUNTIME_DIR"_qs, home_ + u"/run"_qs);
  environment_.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_qs, u"1"_qs);
  environment_.insert(u"LANG"_qs, u"C.UTF-8"_qs);
  startDisplay(size);
  startBus();
  startWindowManager();
}

Desktop::~Desktop() {
  stop(windowManager_);
  stop(bus_);
  stop(display_);
  QDir(home_).removeRecursively();
}

void Desktop::startDisplay(QSize size) {
  display_.setProcessEnvironment(environment_);
  display_.start(u"Xvfb"_qs, {u"-displayfd"_qs, u"1"_qs, u"-screen"_qs, u"0"_qs,
                              QString::number(size.width()) + u'x' + QString::number(size.height()) + u"x24"_qs,
                              u"-nolisten"_qs, u"tcp"_qs, u"-dpi"_qs, u"96"_qs});
  QByteArray number;
  while (!number.contains('\n')) {
    if (!display_.waitForReadyRead(15000)) throw std::runtime_error("Xvfb did not start");
    number += display_.readAllStandardOutput();
  }
  const QString display = u":"_qs + QString::fromLatin1(number.trimmed());
  environment_.insert(u"DISPLAY"_qs, display);
  qputenv("DISPLAY", display.toLatin1());
}

void Desktop::startBus() {
  bus_.setProcessEnvironment(environment_);
  bus_.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--nopidfile"_qs, u"--print-address=1"_qs});
  if (!bus_.waitForReadyRead(10000)) throw std::runtime_error("dbus-daemon did not start");
  const QString address = QString::fromLatin1(bus_.readLine().trimmed());
  environment_.insert(u"DBUS_SESSION_BUS_ADDRESS"_qs, address);
  qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLatin1());
  qputenv("XDG_RUNTIME_DIR", (home_ + u"/run"_qs).toLocal8Bit());
}

// On a busy machine it now and then ends, or waits for ever, while it starts: then it is started anew.
void Desktop::startWindowManager() {
  windowManager_.setProcessEnvironment(environment_);
  windowManager_.setProcessChannelMode(QProcess::MergedChannels);
  for (int attempt = 0; attempt < 4; ++attempt) {
    windowManager_.start(u"openbox"_qs, {u"--sm-disable"_qs});
    if (windowManager_.waitForStarted(10000) && managesWindows()) return;
    stop(windowManager_);
  }
  throw std::runtime_error("openbox does not manage windows: " + windowManager_.readAll().toStdString());
}

// Without a window manager no window is active, and no shortcut fires. It says that it is ready by naming a desktop.
bool Desktop::managesWindows() {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < 8000 && windowManager_.state() == QProcess::Running) {
    QProcess question;
    question.setProcessEnvironment(environment_);
    question.setStandardErrorFile(QProcess::nullDevice());
    question.start(u"xdotool"_qs, {u"get_desktop"_qs});
    if (question.waitForFinished(5000) && question.exitCode() == 0) return true;
    windowManager_.waitForFinished(50);  // a look at whether it still runs, and a pause
  }
  return false;
}

}  // namespace tour
