// Where an account is signed in.
#pragma once

#include <QWidget>

#include "shell/account_displays.h"
#include "shell/views/room.h"

class QVBoxLayout;

namespace sorvan::views {

// One row a device; all but this one can be signed out.
class DevicesList final : public QWidget {
  Q_OBJECT

 public:
  explicit DevicesList(QWidget* parent = nullptr);
  void show(const std::vector<DeviceDisplay>& devices);

 Q_SIGNALS:
  void signOutPressed(const QString& device);

 private:
  QWidget* rowOf(const DeviceDisplay& device);

  QVBoxLayout* rows_;
  std::vector<DeviceDisplay> shown_;
};

}  // namespace sorvan::views
