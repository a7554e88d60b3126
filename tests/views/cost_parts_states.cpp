// Tiles, chart, bars and table of the page of costs, in every state.
#include <QGridLayout>
#include <QStandardItemModel>

#include "shell/views/cost_chart.h"
#include "shell/views/cost_parts.h"
#include "shell/views/cost_table.h"
#include "shell/views/thumbnail_store.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kTile(180, 96);
constexpr QSize kChart(460, 170);
constexpr QSize kTable(700, 140);
constexpr QSize kBars(340, 130);

ComponentState tile(const QString& name, const CostTile& shown) {
  return {name, [shown](QWidget& widget) { static_cast<CostTileCard&>(widget).setTile(shown); }};
}

std::vector<ComponentState> tileStates() {
  return {tile(u"With an amount"_s, {u"Total"_s, u"$21.99"_s, u"1–21 November"_s}),
          tile(u"Nothing"_s, {u"AI assistance"_s, u"$0.00"_s, {}}),
          tile(u"Not recorded"_s, {u"Not recorded"_s, u"3"_s, u"outputs without an amount"_s}),
          tile(u"Long"_s, {u"Total"_s, u"$1,204,021.99"_s, u"1 January 2024 to 21 November 2026"_s})};
}

CostChart chart(int days) {
  CostChart shown;
  shown.title = u"By day"_s;
  shown.kinds = {{u"Images"_s, 0, u"$8.16"_s}, {u"Video"_s, 1, u"$9.00"_s}, {u"Assistant"_s, 2, u"$0.40"_s}};
  shown.lines = {{0, u"$0"_s}, {1, u"$1"_s}, {2, u"$2"_s}};
  for (int day = 1; day <= days; ++day) {
    const double images = (day * 7 % 5) * 0.2;
    const double clips = day % 3 == 0 ? 0.45 : 0;
    const double help = day % 4 == 0 ? 0.1 : 0;
    const auto text = [](double amount) { return u"$%1"_s.arg(amount, 0, 'f', 2); };
    const double total = images + clips + help;
    shown.columns.push_back({u"%1 November"_s.arg(day), day % 5 == 0 || day == 1 ? QString::number(day) : QString(),
                             {images, clips, help}, {text(images), text(clips), text(help)}, total, text(total)});
  }
  return shown;
}

CostChartView& chartIn(QWidget& widget) { return static_cast<CostChartView&>(widget); }

void fillChart(QWidget& widget) { chartIn(widget).setChart(chart(21)); }

std::vector<ComponentState> chartStates() {
  const auto hovered = [](int column) {
    return [column](QWidget& widget) {
      fillChart(widget);
      hover(widget, chartIn(widget).columnRect(column).center());
    };
  };
  return {{u"Normal"_s, fillChart},
          {u"Hover, its card at the right"_s, hovered(3)},
          {u"Hover, its card at the left"_s, hovered(20)},
          {u"Hover on a day without costs"_s, hovered(4)},
          {u"Keyboard"_s,
           [](QWidget& widget) {
             fillChart(widget);
             focusByKey(widget);
             press(widget, Qt::Key_Home);
           }},
          {u"Nothing spent"_s, [](QWidget& widget) { chartIn(widget).setChart({u"By day"_s, {}, {}, {}, {{0, u"$0"_s}, {1, u"$1"_s}}}); }}};
}

void fillTable(QWidget& widget) {
  auto& table = static_cast<CostTable&>(widget);
  auto* model = new QStandardItemModel(3, 5, &table);
  model->setHorizontalHeaderLabels({u"Date"_s, u"Charge"_s, u"Model"_s, u"Paid with"_s, u"Cost"_s});
  const QStringList rows[] = {
      {u"21 Nov 10:14"_s, u"Hero shot of the @Tin coffee tin on a slate counter by a rain-streaked window"_s, u"GPT Image 2.5"_s,
       u"Sorvan Credits"_s, u"12 credits"_s},
      {u"21 Nov 09:41"_s, u"Harbour wall from the water, low sun"_s, u"Nano Banana 2 Edit"_s, u"My fal.ai key"_s, u"≈ $0.060"_s},
      {u"20 Nov"_s, u"Improve Prompt with AI"_s, u"google/gemini-3.8-flash"_s, u"Sorvan Credits"_s, u"1 credit"_s}};
  for (int line = 0; line < 3; ++line)
    for (int part = 0; part < 5; ++part) model->setItem(line, part, new QStandardItem(rows[line][part]));
  table.setModel(model);
  table.fit();
}

void chooseSecond(QWidget& widget) {
  auto& table = static_cast<CostTable&>(widget);
  table.setCurrentIndex(table.model()->index(1, 0));
}

std::vector<ComponentState> tableStates() {
  return {{u"Normal"_s, fillTable},
          {u"Hover"_s,
           [](QWidget& table) {
             fillTable(table);
             hover(table, {120, 54});
           }},
          {u"Selected, the keyboard is elsewhere"_s,
           [](QWidget& table) {
             fillTable(table);
             chooseSecond(table);
           }},
          {u"Keyboard"_s, [](QWidget& table) {
             fillTable(table);
             chooseSecond(table);
             focusByKey(table);
           }}};
}

void fillBars(QWidget& widget) {
  static_cast<CostBars&>(widget).setBars(u"Models"_s, {{u"Wan 3.0"_s, u"14 videos"_s, u"$7.72"_s, 1},
                                                       {u"GPT Image 2.5 Sunburst with a long name"_s, u"31 images"_s, u"$4.10"_s, 0.53},
                                                       {u"FLUX.1 Schnell"_s, u"1 image"_s, u"$0.04"_s, 0.01}});
}

}  // namespace

std::unique_ptr<QWidget> costPartsSheet(const QString&) {
  auto sheet = emptySheet(u"cost-parts"_s, u"Parts of the page of costs"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {
      {u"Tiles"_s, stage.states(u"Cost tile"_s, [] { return new CostTileCard; }, kTile, tileStates(), 4)},
      {u"Chart"_s, stage.states(u"Cost chart"_s, [] { return new CostChartView; }, kChart, chartStates(), 3)},
      {u"Breakdown"_s, stage.states(u"Cost bars"_s, [] { return new CostBars; }, kBars,
                                    {{u"Normal"_s, fillBars},
                                     {u"Keyboard"_s,
                                      [](QWidget& bars) {
                                        fillBars(bars);
                                        focusByKey(bars);
                                      }}},
                                    2)},
      {u"Charges"_s, stage.states(u"Charge table"_s, [] { return new CostTable(u"Charges"_s, chargeColumns()); }, kTable,
                                  tableStates(), 2)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
