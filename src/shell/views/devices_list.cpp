#include "shell/views/devices_list.h"

#include <QHBoxLayout>

#include "shell/account_page_texts.h"
#include "shell/views/accessible_role.h"
#include "shell/views/card.h"
#include "shell/views/controls.h"

namespace sorvan::views {

namespace {
constexpr int kRowHeight = 36;
}

DevicesList::DevicesList(QWidget* parent) : QWidget(parent), rows_(new QVBoxLayout) {
  setAccessibleName(shell::texts::devicesTitle());
  giveRole(*this, QAccessible::List);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 18, 0, 0);
  column->setSpacing(4);
  auto* title = new Label(shell::texts::devicesTitle());
  title->setWeight(Weight::semibold);
  column->addWidget(title);
  rows_->setSpacing(0);
  column->addLayout(rows_);
}

void DevicesList::show(const std::vector<DeviceDisplay>& devices) {
  setVisible(!devices.empty());
  if (devices == shown_) return;
  shown_ = devices;
  rebuildKeepingFocus(*this, [this] {
    clearLayout(*rows_);
    for (const DeviceDisplay& device : shown_) {
      rows_->addWidget(rowOf(device));
      rows_->addWidget(new Hairline);
    }
  });
}

QWidget* DevicesList::rowOf(const DeviceDisplay& device) {
  auto* widget = new QWidget;
  widget->setMinimumHeight(kRowHeight);
  widget->setAccessibleName(device.name + QStringLiteral(", ") + device.lastSeen);
  giveRole(*widget, QAccessible::ListItem);
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(0, 2, 0, 2);
  row->setSpacing(12);
  auto* name = new ElidedLabel(Type::body, &Colors::textPrimary, Qt::ElideRight);
  name->setText(device.name);
  row->addWidget(name, 1);
  row->addWidget(new Label(device.lastSeen, Type::small, &Colors::textTertiary));
  if (device.buttonName.isEmpty()) return widget;
  auto* button = new Button(shell::texts::signOutDevice(), ButtonVariant::quiet);
  button->setControlSize(ControlSize::compact);
  button->setAccessibleName(device.buttonName);
  connect(button, &Button::clicked, this, [this, id = device.id] { Q_EMIT signOutPressed(id); });
  row->addWidget(button);
  return widget;
}

}  // namespace sorvan::views
