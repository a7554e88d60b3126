// The program as the desktop calls it: org.freedesktop.Application on the session bus.
#pragma once

#include <QDBusConnection>
#include <QStringList>
#include <QVariantMap>

#include "shell/views/room.h"

namespace sorvan::views {

// Main thread; calls are answered from the event loop. It is a second door beside the running instance's socket:
// without a bus, or when another process has the name, nothing is lost but this door.
class ApplicationService final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  // `bus` is the session bus, but in tests; `name` is the bus name to take.
  ApplicationService(QDBusConnection bus, QString name, QObject* parent = nullptr);
  // Gives the name back.
  ~ApplicationService() override;

  // Takes the name. False when there is no bus or another process has it.
  bool offer();

 public Q_SLOTS:
  // The methods of the interface, named and typed as it demands. `platform` may carry the token that lets this
  // program come to the front.
  Q_SCRIPTABLE void Activate(const QVariantMap& platform);
  Q_SCRIPTABLE void Open(const QStringList& addresses, const QVariantMap& platform);
  Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameters, const QVariantMap& platform);

 Q_SIGNALS:
  void activated();
  void opened(const QStringList& addresses);
  void actionActivated(const QString& name);

 private:
  QDBusConnection bus_;
  QString name_;
  bool offered_ = false;
};

}  // namespace sorvan::views
