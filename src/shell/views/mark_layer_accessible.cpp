#include "shell/views/mark_layer_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWindow>

#include "shell/views/mark_layer.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {

// One box. It is known by its number, which is what a person sees of it.
class BoxInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  BoxInterface(MarkLayer* layer, int index) : layer_(layer), index_(index) {}

  bool isValid() const override { return layer_ && index_ < layer_->marking().marks().count(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return layer_ ? layer_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override {
    return layer_ ? QAccessible::queryAccessibleInterface(layer_) : nullptr;
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  void setText(QAccessible::Text, const QString&) override {}

  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    const MarksEditor& marks = layer_->marking().marks();
    if (kind == QAccessible::Name)
      return texts::boxNamed(index_ + 1, marks.boxes()[static_cast<size_t>(index_)].note.simplified());
    return kind == QAccessible::Description ? texts::boxPosition(marks.areaOf(index_)) : QString();
  }

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = layer_->placeOf(index_).toAlignedRect();
    return {layer_->mapToGlobal(place.topLeft()), place.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State result;
    result.invalid = !isValid();
    if (result.invalid) return result;
    result.selectable = result.focusable = true;
    result.selected = layer_->marking().marks().selected() == index_;
    result.focused = result.selected && layer_->hasFocus();
    return result;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (isValid() && name == pressAction()) layer_->marking().select(index_);
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QPointer<MarkLayer> layer_;
  int index_;
};

class BoxesInterface final : public QAccessibleWidget {
 public:
  explicit BoxesInterface(MarkLayer* layer) : QAccessibleWidget(layer, QAccessible::List, layer->accessibleName()) {}
  ~BoxesInterface() override {
    for (const QAccessible::Id id : boxes_) QAccessible::deleteAccessibleInterface(id);
  }

  int childCount() const override { return layer() ? layer()->marking().marks().count() : 0; }

  QAccessibleInterface* child(int number) const override {
    if (number < 0 || number >= childCount()) return nullptr;
    while (static_cast<int>(boxes_.size()) <= number)
      boxes_.push_back(
          QAccessible::registerAccessibleInterface(new BoxInterface(layer(), static_cast<int>(boxes_.size()))));
    return QAccessible::accessibleInterface(boxes_[static_cast<size_t>(number)]);
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    for (size_t index = 0; index < boxes_.size(); ++index)
      if (QAccessible::accessibleInterface(boxes_[index]) == child) return static_cast<int>(index);
    return -1;
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    if (!layer()) return nullptr;
    const QPoint point = layer()->mapFromGlobal(QPoint(x, y));
    for (int index = 0; index < childCount(); ++index)
      if (layer()->placeOf(index).contains(point)) return child(index);
    return nullptr;
  }

  QAccessibleInterface* focusChild() const override {
    return layer() && layer()->hasFocus() ? child(layer()->marking().marks().selected()) : nullptr;
  }

 private:
  // While the widget is being destroyed it is no layer any more.
  MarkLayer* layer() const { return qobject_cast<MarkLayer*>(widget()); }

  mutable std::vector<QAccessible::Id> boxes_;
};

QAccessibleInterface* layerInterface(const QString&, QObject* object) {
  auto* layer = qobject_cast<MarkLayer*>(object);
  return layer ? new BoxesInterface(layer) : nullptr;
}

}  // namespace

void describeMarkLayer(MarkLayer& layer) {
  static const bool once = [] {
    QAccessible::installFactory(layerInterface);
    return true;
  }();
  Q_UNUSED(once);
  // With assistive technology at work, the widget was already described as a plain one while it was built.
  QAccessibleInterface* early = QAccessible::queryAccessibleInterface(&layer);
  if (early && !dynamic_cast<BoxesInterface*>(early))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}

}  // namespace sorvan::views
