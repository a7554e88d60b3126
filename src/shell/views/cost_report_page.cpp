#include "shell/views/cost_report_page.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "account/account_texts.h"
#include "shell/cost_texts.h"
#include "shell/views/controls.h"
#include "shell/views/cost_chart.h"
#include "shell/views/cost_parts.h"
#include "shell/views/cost_table.h"
#include "shell/views/empty_note.h"
#include "shell/views/feedback.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPadding = 16;
constexpr int kGap = 12;
constexpr int kChartLeast = 230;
constexpr int kLowerLeast = 260;
constexpr int kSpinner = 20;
constexpr int kWidestScope = 220;

enum Face { readingFace, noteFace, reportFace };

template <class Layout>
Layout* bare(Layout* layout, int spacing = 0) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

}  // namespace

CostReportPage::CostReportPage(CostsPresenter& costs, QWidget* parent) : QWidget(parent), costs_(costs) {
  export_ = new Button(shell::texts::costExport);
  export_->setIconName(u"folder-output"_s);
  export_->setToolTip(account::texts::exportHelp());
  export_->setAccessibleDescription(account::texts::exportHelp());
  tools_ = new QWidget;
  bare(new QHBoxLayout(tools_))->addWidget(export_);
  connect(export_, &Button::clicked, this, &CostReportPage::exportRequested);
  auto* column = bare(new QVBoxLayout(this));
  column->addWidget(makeHead());
  column->addWidget(new Hairline);
  auto* below = new QWidget;
  states_ = bare(new QStackedLayout(below));
  states_->addWidget(makeReading());
  states_->addWidget(note_ = new EmptyNote);
  states_->addWidget(makeReport());
  column->addWidget(below, 1);
  connect(note_, &EmptyNote::pressed, this, [this] {
    costs_.pageState() == CostPageState::failed ? costs_.tryAgain() : costs_.showAllTime();
  });
  connect(&costs_, &CostsPresenter::changed, this, &CostReportPage::refresh);
  refresh();
}

QWidget* CostReportPage::makeHead() {
  auto* head = new Surface(&Colors::surfaceChrome);
  head->setFixedHeight(metrics().filterRow - metrics().borderHairline);
  std::vector<Segment> segments;
  for (const QString& period : CostsPresenter::periods()) segments.push_back({period, {}, {}});
  periods_ = new SegmentedControl(shell::texts::costPeriod, segments, ControlSize::compact);
  scope_ = new Chip;
  explanation_ = new ElidedLabel(Type::small, &Colors::textTertiary, Qt::ElideRight);
  auto* divider = new Hairline(&Colors::lineDefault, Qt::Vertical);
  divider->setFixedHeight(20);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(kPadding, 0, kPadding, 0);
  row->setSpacing(kGap);
  row->addWidget(periods_);
  row->addWidget(divider);
  row->addWidget(scope_);
  row->addStretch(1);
  row->addWidget(explanation_);
  connect(periods_, &SegmentedControl::chosen, &costs_, &CostsPresenter::setPeriod);
  connect(scope_, &Chip::clicked, this, &CostReportPage::offerScopes);
  return head;
}

QWidget* CostReportPage::makeReading() {
  auto* reading = new QWidget;
  auto* column = new QVBoxLayout(reading);
  column->addStretch(1);
  column->addWidget(new Spinner(kSpinner), 0, Qt::AlignHCenter);
  column->addSpacing(8);
  column->addWidget(new Label(shell::texts::costReading, Type::body, &Colors::textSecondary), 0, Qt::AlignHCenter);
  column->addStretch(1);
  return reading;
}

QWidget* CostReportPage::makeReport() {
  scroll_ = new QScrollArea;
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(kGap);
  column->addWidget(makeTiles());
  column->addWidget(makeChartCard(), 3);
  auto* lower = bare(new QHBoxLayout, kGap);
  lower->addWidget(makeBreakdownCard(), 1);
  lower->addWidget(makeTableCard(), 2);
  column->addLayout(lower, 4);
  scroll_->setWidget(content);
  scroll_->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  for (QWidget* stop : std::initializer_list<QWidget*>{asTable_, chart_, values_, showing_, bars_, table_})
    stop->installEventFilter(this);
  for (QWidget* segment : showing_->findChildren<QWidget*>()) segment->installEventFilter(this);
  return scroll_;
}

QWidget* CostReportPage::makeTiles() {
  auto* tiles = new QWidget;
  auto* row = bare(new QHBoxLayout(tiles), kGap);
  for (CostTileCard*& tile : tiles_) row->addWidget(tile = new CostTileCard, 1);
  return tiles;
}

QWidget* CostReportPage::makeChartCard() {
  auto* card = new CostCard;
  card->setMinimumHeight(kChartLeast);
  chartTitle_ = new Label({}, Type::body);
  chartTitle_->setWeight(Weight::semibold);
  legend_ = new CostLegend;
  QSizePolicy kept = legend_->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  legend_->setSizePolicy(kept);
  asTable_ = new Button(shell::texts::costShowTable, ButtonVariant::quiet);
  asTable_->setControlSize(ControlSize::compact);
  chart_ = new CostChartView;
  values_ = new CostTable(shell::texts::costSpending, chartValueColumns());
  valuesModel_ = new ChartValuesModel(this);
  values_->setModel(valuesModel_);
  auto* head = bare(new QHBoxLayout, kGap);
  head->addWidget(chartTitle_);
  head->addWidget(legend_, 1);
  head->addWidget(asTable_);
  auto* faces = new QWidget;
  chartFaces_ = bare(new QStackedLayout(faces));
  chartFaces_->addWidget(chart_);
  chartFaces_->addWidget(values_);
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(16, 10, 16, 10);
  column->setSpacing(6);
  column->addLayout(head);
  column->addWidget(faces, 1);
  connect(asTable_, &Button::clicked, this, [this] { showChartAsTable(chartFaces_->currentWidget() == chart_); });
  return card;
}

void CostReportPage::showChartAsTable(bool asTable) {
  chartFaces_->setCurrentWidget(asTable ? static_cast<QWidget*>(values_) : chart_);
  asTable_->setText(asTable ? shell::texts::costShowChart : shell::texts::costShowTable);
  legend_->setVisible(!asTable);
}

QWidget* CostReportPage::makeBreakdownCard() {
  auto* card = new CostCard;
  card->setMinimumHeight(kLowerLeast);
  showing_ = new SegmentedControl(
      shell::texts::costBreakdown,
      {{shell::texts::costModels, {}, {}}, {shell::texts::costProjects, {}, {}}, {shell::texts::costPayment, {}, {}}},
      ControlSize::compact);
  bars_ = new CostBars;
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(16, 12, 4, 12);
  column->setSpacing(8);
  column->addWidget(showing_, 0, Qt::AlignLeft);
  column->addWidget(bars_, 1);
  connect(showing_, &SegmentedControl::chosen, &costs_,
          [this](int index) { costs_.setShowing(static_cast<CostBreakdownKind>(index)); });
  return card;
}

QWidget* CostReportPage::makeTableCard() {
  auto* card = new CostCard;
  card->setMinimumHeight(kLowerLeast);
  table_ = new CostTable(shell::texts::costCharges, chargeColumns());
  charges_ = new ChargeModel(costs_, this);
  table_->setModel(charges_);
  tableNote_ = new Label({}, Type::caption, &Colors::textTertiary);
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(8, 2, 4, 8);
  column->setSpacing(4);
  column->addWidget(table_, 1);
  column->addWidget(tableNote_);
  connect(table_, &CostTable::opened, &costs_, &CostsPresenter::openRow);
  return card;
}

void CostReportPage::refresh() {
  periods_->setCurrent(costs_.period());
  scope_->setLabel(costs_.scopeTitle());
  scope_->setMinimumWidth(std::min(scope_->sizeHint().width(), kWidestScope));
  scope_->setAccessibleName(shell::texts::costScope + u", "_s + costs_.scopeTitle());
  explanation_->setText(costs_.explanation());
  explanation_->setToolTip(costs_.explanation());
  // While a file is written the button keeps the keyboard; another press waits for nothing and does nothing.
  export_->setEnabled(costs_.rowCount() > 0);
  switch (costs_.pageState()) {
    case CostPageState::report:
      refreshReport();
      return states_->setCurrentIndex(reportFace);
    case CostPageState::reading:
      states_->setCurrentIndex(readingFace);
      break;
    default:
      refreshNote();
      states_->setCurrentIndex(noteFace);
  }
  // The rows of the report before are gone.
  shown_ = 0;
  charges_->reload();
}

void CostReportPage::refreshNote() {
  if (costs_.pageState() == CostPageState::failed)
    return note_->setWords({u"circle-alert"_s, shell::texts::costFailed, costs_.problem(), shell::texts::costTryAgain});
  note_->setWords({u"receipt-text"_s, account::texts::nothingSpent(), costs_.emptyText(),
                   costs_.offersAllTime() ? shell::texts::costShowAll : QString()});
}

void CostReportPage::refreshReport() {
  const CostPage& page = *costs_.page();
  showing_->setCurrent(static_cast<int>(costs_.showing()));
  const QString names[] = {shell::texts::costModels, shell::texts::costProjects, shell::texts::costPayment};
  const auto kind = static_cast<std::size_t>(costs_.showing());
  bars_->setBars(names[kind], page.bars[kind]);
  tableNote_->setText(costs_.tableNote());
  tableNote_->setVisible(!costs_.tableNote().isEmpty());
  if (std::exchange(shown_, costs_.pageNumber()) == costs_.pageNumber()) return;
  for (std::size_t at = 0; at < tiles_.size(); ++at) tiles_[at]->setTile(page.tiles[at]);
  chartTitle_->setText(page.chart.title);
  legend_->setKinds(page.chart.kinds);
  chart_->setChart(page.chart);
  valuesModel_->setChart(page.chart);
  values_->fit();
  charges_->reload();
}

void CostReportPage::offerScopes() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(shell::texts::costScope);
  for (const CostScope& scope : costs_.scopes()) {
    QString title = scope.title;
    QAction* choice = menu->addAction(title.replace(u'&', u"&&"_s));
    choice->setCheckable(true);
    choice->setChecked(scope.key == costs_.scope());
    connect(choice, &QAction::triggered, &costs_, [this, key = scope.key] { costs_.setScope(key); });
  }
  menu->popup(scope_->mapToGlobal(scope_->rect().bottomLeft() + QPoint(0, 4)));
}

// What the keyboard comes to is in view.
bool CostReportPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) scroll_->ensureWidgetVisible(static_cast<QWidget*>(watched), 0, kPadding);
  return QWidget::eventFilter(watched, event);
}

void CostReportPage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceCanvas);
}

}  // namespace sorvan::views
