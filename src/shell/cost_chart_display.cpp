#include "account/account_texts.h"
#include "shell/cost_display.h"
#include "shell/cost_texts.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace sorvan::shell {
using namespace Qt::Literals::StringLiterals;

namespace {

// A charge with a date from another age must not make a chart of thousands of columns.
constexpr int mostColumns = 240;
constexpr int gridSteps = 3;
constexpr int fewMonths = 14;
constexpr int fewDays = 10;
// A period that reaches to now ends so many seconds later, and a month ends at the very edge of the next one.
constexpr double lastMinute = 60;

QDate dayOf(Instant moment) { return moment.toDateTime().toLocalTime().date(); }
QDate monthOf(const QDate& day) { return {day.year(), day.month(), 1}; }
QString dayName(const QDate& day) { return QLocale().toString(day, u"d MMMM"_s); }
QString monthName(const QDate& month) { return QLocale().toString(month, u"MMMM yyyy"_s); }

// The first and the last day or month of the chart, and where others stand between them.
struct Span {
  QDate first;
  QDate last;
  bool months = false;

  int place(const QDate& day) const {
    if (!months) return static_cast<int>(first.daysTo(day));
    return (day.year() - first.year()) * 12 + day.month() - first.month();
  }
  int count() const { return place(last) + 1; }
  QDate at(int column) const { return months ? first.addMonths(column) : first.addDays(column); }
  bool inOneMonth() const { return first.year() == last.year() && first.month() == last.month(); }
};

Span spanOf(const std::vector<account::Charge>& charges, bool byMonth, const CostQuestion& question) {
  Span span;
  span.months = byMonth;
  const QDate today = dayOf(question.now);
  span.first = charges.empty() ? today : dayOf(charges.back().date);
  span.last = today;
  if (const auto interval = question.about.interval(question.now)) {
    span.first = dayOf(interval->start);
    span.last = dayOf(interval->end - lastMinute);
  }
  if (byMonth) span.first = monthOf(span.first), span.last = monthOf(span.last);
  span.first = std::min(span.first, span.last);
  if (span.count() > mostColumns)
    span.first = byMonth ? span.last.addMonths(1 - mostColumns) : span.last.addDays(1 - mostColumns);
  return span;
}

// Under which columns a word stands: every fifth day of a month, the first and the middle of months, quarters of years.
QString labelOf(const Span& span, const QDate& day) {
  const QLocale locale;
  if (span.months) {
    const bool all = span.count() <= fewMonths;
    if (day.month() == 1) return locale.toString(day, u"MMM yyyy"_s);
    return all || day.month() % 3 == 1 ? locale.toString(day, u"MMM"_s) : QString();
  }
  if (span.inOneMonth() && span.count() > fewDays)
    return day.day() == 1 || day.day() % 5 == 0 ? QString::number(day.day()) : QString();
  if (span.count() <= fewDays) return locale.toString(day, u"d MMM"_s);
  return day.day() == 1 || day.day() == 15 ? locale.toString(day, u"d MMM"_s) : QString();
}

std::vector<CostColumn> emptyColumns(const Span& span, std::size_t kinds) {
  std::vector<CostColumn> columns;
  for (int at = 0; at < span.count(); ++at) {
    const QDate day = span.at(at);
    CostColumn column;
    column.title = span.months ? monthName(day) : dayName(day);
    column.label = labelOf(span, day);
    column.values.assign(kinds, 0);
    columns.push_back(std::move(column));
  }
  return columns;
}

// In the order in which they are piled up, without those that do not occur.
std::vector<CostKind> kindsOf(const account::CostBreakdown& breakdown) {
  const CostKind all[] = {{account::texts::seriesImages(), 0, {}},
                          {account::texts::seriesVideo(), 1, {}},
                          {account::texts::seriesAudio(), 3, {}},
                          {account::texts::seriesAssistant(), 2, {}}};
  std::vector<CostKind> kinds;
  for (const CostKind& kind : all) {
    const auto isThis = [&](const account::CostPoint& point) { return point.kind == kind.name; };
    if (std::ranges::any_of(breakdown.series, isThis)) kinds.push_back(kind);
  }
  return kinds;
}

std::size_t placeOf(const std::vector<CostKind>& kinds, const QString& name) {
  const auto found = std::ranges::find(kinds, name, &CostKind::name);
  return static_cast<std::size_t>(found - kinds.begin());
}

// The smallest pleasant step of which three reach that high.
double stepFor(double highest) {
  if (!(highest > 0)) return 1;
  const double least = highest / gridSteps;
  const double unit = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 1.5, 2.0, 3.0, 5.0})
    if (factor * unit >= least * (1 - 1e-9)) return factor * unit;
  return 10 * unit;
}

QString axisText(double amount, double step, bool dollars) {
  const auto digits = [step](int wanted) {
    return std::abs(step * std::pow(10, wanted) - std::round(step * std::pow(10, wanted))) < 1e-6;
  };
  if (dollars) return u'$' + QString::number(amount, 'f', digits(0) ? 0 : digits(2) ? 2 : 3);
  return QLocale(QLocale::English, QLocale::UnitedStates).toString(amount, 'f', digits(0) ? 0 : 1);
}

std::vector<CostGridLine> linesFor(double highest, const account::Spend& spend) {
  const double unit = spend.ownKeyAllowed ? 1 : account::creditsPerDollar;
  const double step = stepFor(highest * unit);
  std::vector<CostGridLine> lines;
  for (int line = 0; line <= gridSteps; ++line)
    lines.push_back({line * step / unit, axisText(line * step, step, spend.ownKeyAllowed)});
  return lines;
}

void addUp(CostChart& chart, const account::CostBreakdown& breakdown, const Span& span, const account::Spend& spend) {
  std::vector<double> totals(chart.kinds.size(), 0);
  for (const account::CostPoint& point : breakdown.series) {
    const std::size_t kind = placeOf(chart.kinds, point.kind);
    const int place = std::clamp(span.place(dayOf(point.bucket)), 0, span.count() - 1);
    chart.columns[static_cast<std::size_t>(place)].values[kind] += point.total;
    totals[kind] += point.total;
  }
  for (CostColumn& column : chart.columns) {
    for (const double value : column.values) {
      column.total += value;
      column.texts.push_back(spend.text(value));
    }
    column.totalText = spend.text(column.total);
  }
  for (std::size_t kind = 0; kind < totals.size(); ++kind) chart.kinds[kind].totalText = spend.text(totals[kind]);
}

}  // namespace

QString costPeriodText(const std::vector<account::Charge>& charges, const CostQuestion& question) {
  const QDate today = dayOf(question.now);
  const auto interval = question.about.interval(question.now);
  if (!interval) return charges.empty() ? QString() : texts::costSince(QLocale().toString(dayOf(charges.back().date), u"d MMMM yyyy"_s));
  const QDate first = dayOf(interval->start);
  const QDate last = std::min(dayOf(interval->end - lastMinute), today);
  if (first == last) return dayName(first);
  if (monthOf(first) == monthOf(last)) return u"%1–%2"_s.arg(QString::number(first.day()), dayName(last));
  return u"%1 – %2"_s.arg(dayName(first), dayName(last));
}

CostChart costChart(const std::vector<account::Charge>& charges, const account::CostBreakdown& breakdown,
                    const CostQuestion& question) {
  const Span span = spanOf(charges, breakdown.byMonth, question);
  CostChart chart;
  chart.title = breakdown.byMonth ? account::texts::byMonth() : account::texts::byDay();
  chart.kinds = kindsOf(breakdown);
  chart.columns = emptyColumns(span, chart.kinds.size());
  addUp(chart, breakdown, span, question.spend);
  const auto most = std::ranges::max_element(chart.columns, {}, &CostColumn::total);
  chart.lines = linesFor(most->total, question.spend);
  if (!charges.empty() && dayOf(charges.back().date) < span.first && !question.about.interval(question.now))
    chart.columns.front().title = texts::costUntil(chart.columns.front().title);
  double total = 0;
  for (const CostColumn& column : chart.columns) total += column.total;
  chart.summary =
      texts::costSummary(question.spend.text(total), costPeriodText(charges, question), most->title, most->totalText);
  return chart;
}

}  // namespace sorvan::shell
