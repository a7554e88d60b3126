// What the desktop asks of every program: light or dark, more contrast, less motion. Read from the desktop portal.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include "shell/views/room.h"

namespace sorvan::views {

// Main thread. Without a session bus or a portal it stays at its defaults: dark, with motion, the contrast of the design.
class DesktopAppearance final : public QObject {
  Q_OBJECT

 public:
  explicit DesktopAppearance(QObject* parent = nullptr) : QObject(parent), bus_(QDBusConnection::sessionBus()) {}
  DesktopAppearance(QDBusConnection bus, QObject* parent = nullptr) : QObject(parent), bus_(std::move(bus)) {}

  // Asks the portal without waiting for it; `changed` follows when an answer differs from what is known.
  void start();

  bool prefersLight() const { return prefersLight_; }
  bool reducedMotion() const { return reducedMotion_; }
  bool moreContrast() const { return portalContrast_ || desktopContrast_; }

  // What the portal says of one setting; other settings are ignored.
  void learn(const QString& space, const QString& key, const QVariant& value);

 Q_SIGNALS:
  void changed();

 private Q_SLOTS:
  void settingChanged(const QDBusMessage& signal);

 private:
  void ask(const QString& space, const QString& key);

  QDBusConnection bus_;
  bool prefersLight_ = false;
  bool reducedMotion_ = false;
  bool portalContrast_ = false;
  bool desktopContrast_ = false;
};

}  // namespace sorvan::views
