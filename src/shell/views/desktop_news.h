// The desktop's notification service, over the session bus.
#pragma once

#include <QDBusConnection>

#include "shell/views/room.h"
#include "shell/work_news.h"

namespace sorvan::views {

// Speaks org.freedesktop.Notifications. A press on the card or on its button activates. Main thread.
class DesktopNewsStand final : public NewsStand {
  Q_OBJECT

 public:
  explicit DesktopNewsStand(QDBusConnection bus, QObject* parent = nullptr);

  void show(const DesktopNews& news) override;
  void withdraw() override;

 private Q_SLOTS:
  void actionInvoked(uint id, const QString& action);
  void activationToken(uint id, const QString& token);
  void notificationClosed(uint id, uint reason);

 private:
  void askCapabilities();
  void send();

  QDBusConnection bus_;
  bool markup_ = false;      // the service reads the text as markup
  bool known_ = false;       // it has said what it can do, or is silent
  bool sending_ = false;     // a card is on its way, and its id is not known yet
  bool again_ = false;       // a newer one waits for that id
  DesktopNews news_;
  bool wanted_ = false;
  uint shown_ = 0;           // the service's id; 0: no card
  QString token_;
};

}  // namespace sorvan::views
