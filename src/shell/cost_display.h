// The page of costs as it is read: plain values, worked out of the charges on the pool.
#pragma once

#include "account/charge_book.h"
#include "shell/room.h"

#include <QDate>
#include <QString>

#include <array>
#include <memory>
#include <vector>

namespace sorvan::shell {

struct CostTile {
  QString title;   // “Total”
  QString value;   // “$21.99”
  QString detail;  // “1–21 November”
};

// One kind of work in the chart.
struct CostKind {
  QString name;       // “Images”
  int color = 0;      // which of the theme's colours for charts
  QString totalText;  // “$8.16”
};

// One day or month in the chart.
struct CostColumn {
  QString title;               // “15 November”
  QString label;               // under the column: “15”; empty for most days
  std::vector<double> values;  // US dollars, one for each kind
  std::vector<QString> texts;  // “$0.56”, one for each kind
  double total = 0;            // US dollars
  QString totalText;           // “$1.38”
};

// A line across the chart.
struct CostGridLine {
  double value = 0;  // US dollars
  QString text;      // “$2”, “200”
};

struct CostChart {
  QString title;    // “By day”
  QString summary;  // “Total $21.99, 1–21 November. Most: 11 November, $2.15.”
  std::vector<CostKind> kinds;
  std::vector<CostColumn> columns;
  std::vector<CostGridLine> lines;  // the lowest first; the highest is the chart's upper end
};

// One bar of the breakdown.
struct CostBar {
  QString name;
  QString countText;  // “14 videos”
  QString totalText;  // “$7.72”
  double share = 0;   // of the longest bar, 0 to 1
};

enum class CostBreakdownKind { models, projects, payment };

struct CostPage {
  std::vector<account::Charge> charges;  // of the scope, newest first
  account::ChargeNames names;
  std::array<CostTile, 4> tiles;
  CostChart chart;
  std::array<std::vector<CostBar>, 3> bars;  // by CostBreakdownKind
};

// What a page is about.
struct CostQuestion {
  account::CostDashboard about;
  Instant now;
  account::Spend spend;
};

// Any thread. `CostPage::charges` is empty when nothing was spent in the period.
CostPage costPage(const account::ChargeBook& book, const CostQuestion& question);

// The bars over the days or months of the period, for `costPage`.
CostChart costChart(const std::vector<account::Charge>& charges, const account::CostBreakdown& breakdown,
                    const CostQuestion& question);
// The days that the period covers, to today for one that is not over.
QString costPeriodText(const std::vector<account::Charge>& charges, const CostQuestion& question);

// One row of the table.
struct CostRow {
  QString date;
  QString charge;
  QString model;
  QString paidWith;
  QString cost;
  QString detail;  // the note of the charge and the file's name; may be empty
  bool opens = false;
};
CostRow costRow(const CostPage& page, std::size_t row, const account::Spend& spend, Instant now);

}  // namespace sorvan::shell
