#include "shell/views/accessible_value.h"

#include <QAccessibleWidget>
#include <QWidget>

#include <algorithm>

namespace sorvan::views {

namespace {

// Stays with the widget that it tells of.
class ValueOfWidget final : public QObject {
 public:
  ValueOfWidget(QWidget& widget, AccessibleValue value) : QObject(&widget), value_(std::move(value)) {}
  const AccessibleValue& value() const { return value_; }

 private:
  AccessibleValue value_;
};

const ValueOfWidget* valueOf(const QObject* object) {
  for (const QObject* child : object->children())
    if (const auto* told = dynamic_cast<const ValueOfWidget*>(child)) return told;
  return nullptr;
}

class AccessibleNumber final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleNumber(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return told().now(); }
  void setCurrentValue(const QVariant& value) override {
    const auto [least, most] = told().range();
    told().set(std::clamp(value.toInt(), least, most));
  }
  QVariant maximumValue() const override { return told().range().second; }
  QVariant minimumValue() const override { return told().range().first; }
  QVariant minimumStepSize() const override { return told().step; }

 private:
  const AccessibleValue& told() const { return valueOf(object())->value(); }
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
  if (!object->isWidgetType() || !valueOf(object)) return nullptr;
  return new AccessibleNumber(static_cast<QWidget*>(object));
}

}  // namespace

void giveValue(QWidget& widget, AccessibleValue value) {
  static const bool once = [] {
    QAccessible::installFactory(interfaceOf);
    return true;
  }();
  Q_UNUSED(once);
  new ValueOfWidget(widget, std::move(value));
  // With assistive technology at work, the widget was described while it was still being built.
  QAccessibleInterface* early = QAccessible::queryAccessibleInterface(&widget);
  if (early && early->role() != QAccessible::Slider) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}

void announceValue(QWidget& widget) {
  const ValueOfWidget* told = valueOf(&widget);
  if (!told || !QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(&widget, told->value().now());
  QAccessible::updateAccessibility(&event);
}

}  // namespace sorvan::views
