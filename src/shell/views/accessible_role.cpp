#include "shell/views/accessible_role.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace sorvan::views {

namespace {

constexpr const char* roleProperty = "sorvanRole";

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
  const QVariant role = object->property(roleProperty);
  if (!role.isValid() || !object->isWidgetType()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void giveRole(QWidget& widget, QAccessible::Role role) {
  static const bool once = [] {
    QAccessible::installFactory(interfaceOf);
    return true;
  }();
  Q_UNUSED(once);
  widget.setProperty(roleProperty, static_cast<int>(role));
  // With assistive technology at work, the widget was described while it was still being built.
  QAccessibleInterface* early = QAccessible::queryAccessibleInterface(&widget);
  if (early && early->role() != role) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}

}  // namespace sorvan::views
