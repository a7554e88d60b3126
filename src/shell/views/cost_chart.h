// The bars of what was spent, one a day or month, with its kinds of work piled up.
#pragma once

#include <QWidget>

#include "shell/cost_display.h"
#include "shell/views/room.h"

namespace sorvan::views {

// One stop of the tab key; the arrow keys walk its columns, as the pointer does. The values of the column under either
// stand in a card beside it. To assistive technology it is a chart with a summary whose children are the columns.
class CostChartView final : public QWidget {
  Q_OBJECT

 public:
  explicit CostChartView(QWidget* parent = nullptr);

  void setChart(const CostChart& chart);
  const CostChart& chart() const { return chart_; }
  // The column of which the values are shown; -1 for none.
  int shownColumn() const;
  int columnAt(QPoint point) const;
  // The whole height of the plot over that column, in this widget.
  QRect columnRect(int column) const;
  // “15 November, Images $0.56, Video $0.76”
  QString columnName(int column) const;
  QSize minimumSizeHint() const override { return {240, 150}; }
  QSize sizeHint() const override { return {600, 220}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QRect plot() const;
  int axisWidth() const;
  double top() const;
  void goTo(int column);
  void paintGrid(QPainter& painter) const;
  void paintColumn(QPainter& painter, int column) const;
  void paintLabels(QPainter& painter) const;
  void paintCard(QPainter& painter, int column) const;

  CostChart chart_;
  int hovered_ = -1;
  int current_ = -1;  // by the keyboard
};

// The kinds of work with their colours and totals, in one line at the right.
class CostLegend final : public QWidget {
  Q_OBJECT

 public:
  explicit CostLegend(QWidget* parent = nullptr);
  void setKinds(const std::vector<CostKind>& kinds);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<CostKind> kinds_;
};

}  // namespace sorvan::views
