// The page of what work has cost.
#pragma once

#include <QWidget>

#include "shell/costs_presenter.h"
#include "shell/views/pages.h"

class QScrollArea;
class QStackedLayout;
class QVBoxLayout;

namespace sorvan::views {

class Button;
class ChargeModel;
class ChartValuesModel;
class Chip;
class CostBars;
class CostChartView;
class CostLegend;
class CostTable;
class CostTileCard;
class ElidedLabel;
class EmptyNote;
class Label;
class SegmentedControl;

// Period and scope over tiles, chart, breakdown and the table of charges. The presenter outlives it.
class CostReportPage final : public QWidget {
  Q_OBJECT

 public:
  explicit CostReportPage(CostsPresenter& costs, QWidget* parent = nullptr);

  // Stands in the toolbar while the page is in front.
  QWidget* tools() const { return tools_; }
  SegmentedControl* periods() const { return periods_; }
  CostChartView* chart() const { return chart_; }
  CostTable* table() const { return table_; }

 Q_SIGNALS:
  // The file is to be chosen.
  void exportRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeReport();
  QWidget* makeTiles();
  QWidget* makeChartCard();
  QWidget* makeBreakdownCard();
  QWidget* makeTableCard();
  QWidget* makeReading();
  void refresh();
  void refreshReport();
  void refreshNote();
  void offerScopes();
  void showChartAsTable(bool asTable);

  CostsPresenter& costs_;
  QWidget* tools_ = nullptr;
  Button* export_ = nullptr;
  SegmentedControl* periods_ = nullptr;
  Chip* scope_ = nullptr;
  ElidedLabel* explanation_ = nullptr;
  QStackedLayout* states_ = nullptr;
  QScrollArea* scroll_ = nullptr;
  EmptyNote* note_ = nullptr;
  std::array<CostTileCard*, 4> tiles_{};
  Label* chartTitle_ = nullptr;
  CostLegend* legend_ = nullptr;
  Button* asTable_ = nullptr;
  QStackedLayout* chartFaces_ = nullptr;
  CostChartView* chart_ = nullptr;
  CostTable* values_ = nullptr;
  ChartValuesModel* valuesModel_ = nullptr;
  SegmentedControl* showing_ = nullptr;
  CostBars* bars_ = nullptr;
  CostTable* table_ = nullptr;
  ChargeModel* charges_ = nullptr;
  Label* tableNote_ = nullptr;
  quint64 shown_ = 0;  // the number of the report
};

// Adds the page to the window, with its question for a file.
void addCostPage(const PageDesk& desk);

}  // namespace sorvan::views
