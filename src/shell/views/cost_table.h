// The tables of the page of costs: the charges, and the chart's values.
#pragma once

#include <QAbstractTableModel>
#include <QTableView>

#include "shell/cost_display.h"
#include "shell/views/room.h"

namespace sorvan::shell {
class CostsPresenter;
}

namespace sorvan::views {

// How a column is shown.
struct CostTableColumn {
  int width = 0;         // pixels; 0 takes what is left
  bool number = false;   // right aligned, in digits of one width
  bool faint = false;    // secondary words
  int leastTable = 0;    // the table's width from which the column is shown
};

// A table of plain rows without lines. Up and Down walk the rows, Enter and a double click open one. Tab leaves it.
class CostTable final : public QTableView {
  Q_OBJECT

 public:
  CostTable(const QString& name, std::vector<CostTableColumn> columns, QWidget* parent = nullptr);

  const std::vector<CostTableColumn>& columns() const { return columns_; }
  int hoveredRow() const { return hovered_; }
  // Gives the columns their widths anew, after the model got others.
  void fit();
  void keyboardSearch(const QString&) override {}

 Q_SIGNALS:
  void opened(int row);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<CostTableColumn> columns_;
  int hovered_ = -1;
};

// The rows of the report, read from the presenter as they come into view.
class ChargeModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit ChargeModel(CostsPresenter& costs, QObject* parent = nullptr);
  // The report is another one.
  void reload();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  CostsPresenter& costs_;
  int rows_ = 0;
};

// The chart's values: a row for each day or month in which anything was spent, a column for each kind of work.
class ChartValuesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit ChartValuesModel(QObject* parent = nullptr);
  void setChart(const CostChart& chart);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString text(const CostColumn& column, int section) const;

  CostChart chart_;
};

// The columns of both.
std::vector<CostTableColumn> chargeColumns();
std::vector<CostTableColumn> chartValueColumns();

}  // namespace sorvan::views
