#include "shell/views/painted_list.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWindow>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostDescribed = 1000;

// One row in view. It is known by its id, since its number changes when rows come and go.
class RowInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  RowInterface(QWidget* widget, QUuid id) : widget_(widget), id_(id) {}

  bool isValid() const override { return widget_ && index() >= 0; }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return widget_ ? widget_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override {
    return widget_ ? QAccessible::queryAccessibleInterface(widget_) : nullptr;
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return list() ? list()->rowRole() : QAccessible::ListItem; }
  void setText(QAccessible::Text, const QString&) override {}

  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    if (kind == QAccessible::Name) return list()->rowName(index());
    return kind == QAccessible::Description ? list()->rowDescription(index()) : QString();
  }

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect cell = list()->cellRect(index());
    return {list()->area().viewport()->mapToGlobal(cell.topLeft()), cell.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State result;
    result.invalid = !isValid();
    if (result.invalid) return result;
    result.selectable = result.extSelectable = result.multiSelectable = result.focusable = true;
    result.selected = list()->rowSelected(index());
    result.focused = widget_->hasFocus() && list()->currentRow() == id_;
    return result;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override { return isValid() ? list()->rowActions(index()) : QStringList(); }
  void doAction(const QString& name) override {
    if (isValid()) list()->performRowAction(index(), name);
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  PaintedList* list() const { return dynamic_cast<PaintedList*>(widget_.data()); }
  int index() const { return list() ? list()->rowIndex(id_) : -1; }

  QPointer<QWidget> widget_;
  QUuid id_;
};

class ListInterface final : public QAccessibleWidget {
 public:
  explicit ListInterface(QWidget* widget) : QAccessibleWidget(widget, QAccessible::List, widget->accessibleName()) {}
  ~ListInterface() override { forget(); }

  int childCount() const override {
    if (!list()) return 0;
    return standIn() ? 1 : std::max(0, last() - first());
  }
  QAccessible::Role role() const override { return list() ? list()->listRole() : QAccessible::List; }


  QAccessibleInterface* child(int number) const override {
    if (standIn()) return number == 0 ? QAccessible::queryAccessibleInterface(standIn()) : nullptr;
    const int index = first() + number;
    return number >= 0 && index < last() ? rowOf(index) : nullptr;
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    if (standIn()) return child && child->object() == standIn() ? 0 : -1;
    for (int index = first(); index < last(); ++index) {
      if (rowOf(index) == child) return index - first();
    }
    return -1;
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    const QPoint point = list()->area().viewport()->mapFromGlobal(QPoint(x, y));
    for (int index = first(); index < last(); ++index) {
      if (list()->cellRect(index).contains(point)) return rowOf(index);
    }
    return nullptr;
  }

  QAccessibleInterface* focusChild() const override {
    const int index = list()->rowIndex(list()->currentRow());
    return widget()->hasFocus() && index >= 0 ? rowOf(index) : nullptr;
  }

  QAccessibleInterface* rowOf(int index) const {
    const QUuid id = list()->rowId(index);
    const auto known = rows_.constFind(id);
    if (known != rows_.constEnd()) return QAccessible::accessibleInterface(*known);
    if (rows_.size() >= kMostDescribed) forget();  // rows that were described once and have long left the screen
    auto* row = new RowInterface(widget(), id);
    rows_.insert(id, QAccessible::registerAccessibleInterface(row));
    return row;
  }

 private:
  // While the widget is being destroyed it is no list any more.
  PaintedList* list() const { return dynamic_cast<PaintedList*>(widget()); }
  QWidget* standIn() const {
    QWidget* note = list() && list()->rowCount() == 0 ? list()->standIn() : nullptr;
    return note && note->isVisible() ? note : nullptr;
  }
  int first() const { return list()->visibleRange().first; }
  int last() const { return std::min(list()->visibleRange().second, list()->rowCount()); }
  void forget() const {
    for (const QAccessible::Id id : std::as_const(rows_)) QAccessible::deleteAccessibleInterface(id);
    rows_.clear();
  }

  mutable QHash<QUuid, QAccessible::Id> rows_;
};

QAccessibleInterface* listInterface(const QString&, QObject* object) {
  return dynamic_cast<PaintedList*>(object) ? new ListInterface(static_cast<QWidget*>(object)) : nullptr;
}

}  // namespace

int PaintedList::indexAt(QPoint point) const {
  const auto [first, end] = visibleRange();
  for (int index = first; index < end; ++index)
    if (cellRect(index).contains(point)) return index;
  return -1;
}

void describePaintedList(PaintedList& list) {
  static const bool once = [] {
    QAccessible::installFactory(listInterface);
    return true;
  }();
  Q_UNUSED(once);
  // With assistive technology at work, the base class was already described as a plain scroll area.
  QAccessibleInterface* early = QAccessible::queryAccessibleInterface(&list.area());
  if (early && !dynamic_cast<ListInterface*>(early)) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}

void announceCurrentRow(PaintedList& list, int index) {
  if (!QAccessible::isActive()) return;
  auto* described = dynamic_cast<ListInterface*>(QAccessible::queryAccessibleInterface(&list.area()));
  if (!described) return;
  QAccessibleEvent event(described->rowOf(index), QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace sorvan::views
