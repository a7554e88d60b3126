#include "shell/views/cost_chart.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "shell/cost_texts.h"
#include "shell/views/cost_chart_accessible.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kGap = 1.5;     // between two kinds of one column
constexpr double kRadius = 2;    // of a bar's corners
constexpr double kBarShare = 0.6;  // of a column's width
constexpr double kWidestBar = 34;
constexpr double kLeastBar = 1;  // a small amount can still be seen
constexpr int kAxisGap = 10;
constexpr int kLabelRow = 22;
constexpr int kTopRoom = 8;
constexpr int kCardPadding = 12;
constexpr int kCardHeight = 52;
constexpr int kCardGap = 12;
constexpr int kSwatch = 10;
constexpr int kBetweenKinds = 16;

QColor colorOf(const CostKind& kind) {
  const std::vector<QColor>& palette = colors().chart;
  return palette.empty() ? colors().accentFill : palette[static_cast<std::size_t>(kind.color) % palette.size()];
}

QFont amountFont() { return fontFor(Type::mono); }

}  // namespace

CostChartView::CostChartView(QWidget* parent) : QWidget(parent) {
  setAccessibleName(shell::texts::costSpending);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  describeCostChart(*this);
}

void CostChartView::setChart(const CostChart& chart) {
  chart_ = chart;
  setAccessibleDescription(chart.summary);
  const int last = static_cast<int>(chart_.columns.size()) - 1;
  hovered_ = std::min(hovered_, last);
  current_ = std::min(current_, last);
  update();
}

int CostChartView::shownColumn() const {
  if (hovered_ >= 0) return hovered_;
  return hasFocus() && FocusRing::keyboardInUse() ? current_ : -1;
}

QString CostChartView::columnName(int column) const {
  const CostColumn& shown = chart_.columns.at(static_cast<std::size_t>(column));
  QStringList parts{shown.title};
  for (std::size_t kind = 0; kind < chart_.kinds.size(); ++kind)
    if (shown.values[kind] > 0) parts << chart_.kinds[kind].name + u' ' + shown.texts[kind];
  if (parts.size() == 1) parts << shown.totalText;
  return parts.join(u", "_s);
}

int CostChartView::axisWidth() const {
  int widest = 0;
  for (const CostGridLine& line : chart_.lines)
    widest = std::max(widest, textWidth(line.text, fontFor(Type::mono)) + 2);
  return widest;
}

QRect CostChartView::plot() const {
  return rect().adjusted(axisWidth() + kAxisGap, kTopRoom, 0, -kLabelRow);
}

double CostChartView::top() const { return chart_.lines.empty() ? 1 : std::max(chart_.lines.back().value, 1e-9); }

QRect CostChartView::columnRect(int column) const {
  const QRect area = plot();
  const double width = chart_.columns.empty() ? area.width() : area.width() / static_cast<double>(chart_.columns.size());
  const int left = area.left() + static_cast<int>(std::lround(column * width));
  return {left, area.top(), std::max(1, area.left() + static_cast<int>(std::lround((column + 1) * width)) - left),
          area.height()};
}

int CostChartView::columnAt(QPoint point) const {
  const QRect area = plot();
  if (chart_.columns.empty() || !area.adjusted(0, 0, 0, kLabelRow).contains(point)) return -1;
  const auto count = static_cast<int>(chart_.columns.size());
  return std::clamp((point.x() - area.left()) * count / std::max(1, area.width()), 0, count - 1);
}

void CostChartView::mouseMoveEvent(QMouseEvent* event) {
  hovered_ = columnAt(event->position().toPoint());
  update();
}

void CostChartView::leaveEvent(QEvent*) {
  hovered_ = -1;
  update();
}

void CostChartView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  // The last column in which anything was spent is the one that is asked for first.
  if (current_ < 0)
    for (std::size_t at = 0; at < chart_.columns.size(); ++at)
      if (chart_.columns[at].total > 0) current_ = static_cast<int>(at);
  goTo(std::max(current_, 0));
}

void CostChartView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void CostChartView::goTo(int column) {
  if (chart_.columns.empty()) return;
  current_ = std::clamp(column, 0, static_cast<int>(chart_.columns.size()) - 1);
  hovered_ = -1;
  update();
  announceCostColumn(*this, current_);
}

void CostChartView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return goTo(current_ - 1);
    case Qt::Key_Right:
      return goTo(current_ + 1);
    case Qt::Key_Home:
      return goTo(0);
    case Qt::Key_End:
      return goTo(static_cast<int>(chart_.columns.size()) - 1);
    default:
      return QWidget::keyPressEvent(event);
  }
}

void CostChartView::paintGrid(QPainter& painter) const {
  const QRect area = plot();
  for (const CostGridLine& line : chart_.lines) {
    const int y = area.bottom() - static_cast<int>(std::lround(line.value / top() * (area.height() - 1)));
    painter.fillRect(QRect(area.left(), y, area.width(), 1), colors().chartGrid);
    paintText(painter, QRect(0, y - 8, axisWidth(), 16),
              {line.text, fontFor(Type::mono), colors().textTertiary, Qt::AlignRight | Qt::AlignVCenter});
  }
}

// Each kind stands on those before it, and gives up the gap at its upper end unless nothing stands on it.
void CostChartView::paintColumn(QPainter& painter, int column) const {
  const CostColumn& shown = chart_.columns[static_cast<std::size_t>(column)];
  const QRect slot = columnRect(column);
  const double width = std::max(1.0, std::min(kWidestBar, slot.width() * kBarShare));
  const double left = slot.left() + (slot.width() - width) / 2;
  double bottom = slot.bottom();
  double reached = 0;
  for (std::size_t kind = 0; kind < shown.values.size(); ++kind) {
    if (!(shown.values[kind] > 0)) continue;
    reached += shown.values[kind];
    const double upper = slot.bottom() - reached / top() * (slot.height() - 1);
    const double height = std::max(kLeastBar, bottom - upper - (reached < shown.total ? kGap : 0));
    paintPanel(painter, QRectF(left, bottom - height, width, height), std::min(kRadius, height / 2),
               colorOf(chart_.kinds[kind]));
    bottom = std::min(bottom - height - kGap, upper);
  }
}

// A word that would touch the one before it is left out.
void CostChartView::paintLabels(QPainter& painter) const {
  const QFont font = fontFor(Type::mono);
  int free = 0;
  for (std::size_t at = 0; at < chart_.columns.size(); ++at) {
    const QString& label = chart_.columns[at].label;
    if (label.isEmpty()) continue;
    const QRect slot = columnRect(static_cast<int>(at));
    const int width = textWidth(label, font) + 2;
    const int left = std::min(slot.center().x() - width / 2, rect().right() - width);
    if (left < free) continue;
    paintText(painter, QRect(left, slot.bottom() + 6, width, 16),
              {label, font, colors().textTertiary, Qt::AlignCenter, Qt::ElideNone});
    free = left + width + 6;
  }
}

void CostChartView::paintCard(QPainter& painter, int column) const {
  const CostColumn& shown = chart_.columns[static_cast<std::size_t>(column)];
  const QFont words = fontFor(Type::small);
  struct Part {
    QString name;
    QString amount;
    int width;
  };
  std::vector<Part> parts;
  const auto add = [&](const QString& name, const QString& amount) {
    parts.push_back({name, amount, textWidth(name, words) + 5 + textWidth(amount, amountFont())});
  };
  for (std::size_t kind = 0; kind < chart_.kinds.size(); ++kind)
    if (shown.values[kind] > 0) add(chart_.kinds[kind].name, shown.texts[kind]);
  if (parts.empty()) add(shell::texts::costTotal, shown.totalText);
  int inside = 0;
  for (const Part& part : parts) inside += part.width + (inside > 0 ? kBetweenKinds : 0);
  const QFont title = fontFor(Type::small, Weight::semibold);
  const int width = std::max(inside, textWidth(shown.title, title)) + 2 * kCardPadding + 2;
  const QRect slot = columnRect(column);
  int left = slot.right() + kCardGap;
  if (left + width > rect().right()) left = std::max(0, slot.left() - kCardGap - width);
  const QRect card(left, plot().top() + 6, width, kCardHeight);
  paintShadow(painter, card, metrics().radiusCard, colors().popoverShadow);
  paintPanel(painter, card, metrics().radiusCard, colors().surfaceOverlay, colors().lineDefault);
  paintText(painter, QRect(card.left() + kCardPadding, card.top() + 8, width - 2 * kCardPadding, 16),
            {shown.title, title, colors().textPrimary});
  int x = card.left() + kCardPadding;
  for (const Part& part : parts) {
    const QRect line(x, card.top() + 28, part.width + 2, 16);
    const int name = textWidth(part.name, words);
    paintText(painter, QRect(line.left(), line.top(), name + 2, 16), {part.name, words, colors().textSecondary});
    paintText(painter, line.adjusted(name + 5, 0, 0, 0), {part.amount, amountFont(), colors().textPrimary});
    x += part.width + kBetweenKinds;
  }
}

void CostChartView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int shown = shownColumn();
  const bool known = shown >= 0 && shown < static_cast<int>(chart_.columns.size());
  if (known) painter.fillRect(columnRect(shown), colors().statePressed);
  paintGrid(painter);
  for (int column = 0; column < static_cast<int>(chart_.columns.size()); ++column) paintColumn(painter, column);
  paintLabels(painter);
  if (known) paintCard(painter, shown);
}

CostLegend::CostLegend(QWidget* parent) : QWidget(parent) { setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); }

void CostLegend::setKinds(const std::vector<CostKind>& kinds) {
  kinds_ = kinds;
  updateGeometry();
  update();
}

QSize CostLegend::sizeHint() const {
  int width = 0;
  for (const CostKind& kind : kinds_)
    width += kSwatch + 6 + textWidth(kind.name, fontFor(Type::small)) + 6 + textWidth(kind.totalText, amountFont()) +
             kBetweenKinds;
  return {std::max(0, width - kBetweenKinds) + 4, 20};
}

// From the right, so that what has no room is missing at the left.
void CostLegend::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  int right = width();
  for (auto kind = kinds_.rbegin(); kind != kinds_.rend(); ++kind) {
    const int amount = textWidth(kind->totalText, amountFont()) + 2;
    const int name = textWidth(kind->name, fontFor(Type::small)) + 2;
    const int left = right - amount - 6 - name - 6 - kSwatch;
    if (left < 0) return;
    paintPanel(painter, QRectF(left, (height() - kSwatch) / 2.0, kSwatch, kSwatch), kRadius, colorOf(*kind));
    paintText(painter, QRect(left + kSwatch + 6, 0, name, height()),
              {kind->name, fontFor(Type::small), colors().textPrimary});
    paintText(painter, QRect(right - amount, 0, amount, height()),
              {kind->totalText, amountFont(), colors().textTertiary});
    right = left - kBetweenKinds;
  }
}

}  // namespace sorvan::views
