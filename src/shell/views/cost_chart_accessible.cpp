#include "shell/views/cost_chart_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWindow>

#include "shell/views/cost_chart.h"

namespace sorvan::views {

namespace {

// One column. It is known by its place.
class ColumnInterface final : public QAccessibleInterface {
 public:
  ColumnInterface(CostChartView* chart, int column) : chart_(chart), column_(column) {}

  bool isValid() const override {
    return chart_ && column_ < static_cast<int>(chart_->chart().columns.size());
  }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return chart_ ? chart_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override {
    return chart_ ? QAccessible::queryAccessibleInterface(chart_) : nullptr;
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::StaticText; }
  void setText(QAccessible::Text, const QString&) override {}
  QString text(QAccessible::Text kind) const override {
    return isValid() && kind == QAccessible::Name ? chart_->columnName(column_) : QString();
  }
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = chart_->columnRect(column_);
    return {chart_->mapToGlobal(place.topLeft()), place.size()};
  }
  QAccessible::State state() const override {
    QAccessible::State result;
    result.invalid = !isValid();
    if (result.invalid) return result;
    result.focusable = true;
    result.focused = chart_->hasFocus() && chart_->shownColumn() == column_;
    return result;
  }

 private:
  QPointer<CostChartView> chart_;
  int column_;
};

class ChartInterface final : public QAccessibleWidget {
 public:
  explicit ChartInterface(CostChartView* chart) : QAccessibleWidget(chart, QAccessible::Chart) {}
  ~ChartInterface() override {
    for (const QAccessible::Id id : columns_) QAccessible::deleteAccessibleInterface(id);
  }

  int childCount() const override { return chart() ? static_cast<int>(chart()->chart().columns.size()) : 0; }

  QAccessibleInterface* child(int number) const override {
    if (number < 0 || number >= childCount()) return nullptr;
    while (static_cast<int>(columns_.size()) <= number)
      columns_.push_back(
          QAccessible::registerAccessibleInterface(new ColumnInterface(chart(), static_cast<int>(columns_.size()))));
    return QAccessible::accessibleInterface(columns_[static_cast<std::size_t>(number)]);
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    for (std::size_t index = 0; index < columns_.size(); ++index)
      if (QAccessible::accessibleInterface(columns_[index]) == child) return static_cast<int>(index);
    return -1;
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    return chart() ? child(chart()->columnAt(chart()->mapFromGlobal(QPoint(x, y)))) : nullptr;
  }

  QAccessibleInterface* focusChild() const override {
    return chart() && chart()->hasFocus() ? child(chart()->shownColumn()) : nullptr;
  }

 private:
  // While the widget is being destroyed it is no chart any more.
  CostChartView* chart() const { return qobject_cast<CostChartView*>(widget()); }

  mutable std::vector<QAccessible::Id> columns_;
};

QAccessibleInterface* chartInterface(const QString&, QObject* object) {
  auto* chart = qobject_cast<CostChartView*>(object);
  return chart ? new ChartInterface(chart) : nullptr;
}

}  // namespace

void describeCostChart(CostChartView& chart) {
  static const bool once = [] {
    QAccessible::installFactory(chartInterface);
    return true;
  }();
  Q_UNUSED(once);
  // With assistive technology at work, the widget was already described as a plain one while it was built.
  QAccessibleInterface* early = QAccessible::queryAccessibleInterface(&chart);
  if (early && !dynamic_cast<ChartInterface*>(early))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
}

void announceCostColumn(CostChartView& chart, int column) {
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&chart);
  QAccessibleInterface* entry = described ? described->child(column) : nullptr;
  if (!entry) return;
  QAccessibleEvent event(entry, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace sorvan::views
