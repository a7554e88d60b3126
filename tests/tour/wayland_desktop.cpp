#include "tour/wayland_desktop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

#include "tour/private_home.h"
#include "tour/tourist.h"

namespace tour {
namespace {

const QString socketName = QStringLiteral("sorvan-tour");

}  // namespace

WaylandDesktop::WaylandDesktop(QSize size)
    : home_(makePrivateHome(u"wayland-"_qs)), environment_(QProcessEnvironment::systemEnvironment()) {
  for (const char* name : {"SORVAN_WORKSPACE", "SORVAN_SERVICE", "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM",
                           "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"})
    environment_.remove(QString::fromLatin1(name));
  environment_.insert(u"HOME"_qs, home_);
  environment_.insert(u"XDG_CONFIG_HOME"_qs, home_ + u"/.config"_qs);
  environment_.insert(u"XDG_DATA_HOME"_qs, home_ + u"/.local/share"_qs);
  environment_.insert(u"XDG_CACHE_HOME"_qs, home_ + u"/.cache"_qs);
  environment_.insert(u"XDG_RUNTIME_DIR"_qs, home_ + u"/run"_qs);
  environment_.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_qs, u"1"_qs);
  environment_.insert(u"LANG"_qs, u"C.UTF-8"_qs);
  startCompositor(size);
  startBus();
  environment_.insert(u"WAYLAND_DISPLAY"_qs, socketName);
  environment_.insert(u"QT_QPA_PLATFORM"_qs, u"wayland"_qs);
}

WaylandDesktop::~WaylandDesktop() {
  stop(bus_);
  stop(compositor_);
  QDir(home_).removeRecursively();
}

void WaylandDesktop::startCompositor(QSize size) {
  compositor_.setProcessEnvironment(environment_);
  compositor_.setProcessChannelMode(QProcess::MergedChannels);
  compositor_.start(u"weston"_qs, {u"--backend=headless-backend.so"_qs, u"--use-pixman"_qs,
                                   u"--shell=desktop-shell.so"_qs, u"--no-config"_qs, u"--idle-time=0"_qs, u"--debug"_qs,
                                   u"--socket="_qs + socketName, u"--width="_qs + QString::number(size.width()),
                                   u"--height="_qs + QString::number(size.height())});
  const QString socket = home_ + u"/run/"_qs + socketName;
  if (!within(15, [&] { return QFileInfo::exists(socket); }))
    throw std::runtime_error("weston did not start: " + compositor_.readAll().toStdString());
}

void WaylandDesktop::startBus() {
  bus_.setProcessEnvironment(environment_);
  bus_.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--nopidfile"_qs, u"--print-address=1"_qs});
  if (!bus_.waitForReadyRead(10000)) throw std::runtime_error("dbus-daemon did not start");
  const QString address = QString::fromLatin1(bus_.readLine().trimmed());
  environment_.insert(u"DBUS_SESSION_BUS_ADDRESS"_qs, address);
  // The tour reads the accessibility tree of the same bus.
  qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLatin1());
  qputenv("XDG_RUNTIME_DIR", (home_ + u"/run"_qs).toLocal8Bit());
  qunsetenv("DISPLAY");
}

QString WaylandDesktop::picture() {
  QProcess shooter;
  shooter.setProcessEnvironment(environment_);
  shooter.setWorkingDirectory(home_);
  shooter.start(u"weston-screenshooter"_qs, {});
  if (!shooter.waitForFinished(20000) || shooter.exitCode() != 0) return {};
  const QStringList pictures = QDir(home_).entryList({u"wayland-screenshot*.png"_qs}, QDir::Files, QDir::Time);
  return pictures.isEmpty() ? QString() : home_ + u'/' + pictures.first();
}

}  // namespace tour
