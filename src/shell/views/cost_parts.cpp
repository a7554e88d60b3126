#include "shell/views/cost_parts.h"

#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/accessible_role.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTilePadding = 16;
constexpr int kBarRow = 36;
constexpr int kBar = 6;
constexpr int kAmountGap = 16;

class BarRow final : public QWidget {
 public:
  BarRow() {
    setFixedHeight(kBarRow);
    giveRole(*this, QAccessible::StaticText);
  }
  void setBar(const CostBar& bar) {
    bar_ = bar;
    QStringList words{bar.name, bar.countText, bar.totalText};
    words.removeAll({});
    setAccessibleName(words.join(u", "_s));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Colors& c = colors();
    const QFont digits = fontFor(Type::mono);
    const int amount = std::max(64, textWidth(bar_.totalText, digits) + 2);
    const int line = height() - kBar - 8;
    paintText(painter, QRect(width() - amount, 2, amount, line),
              {bar_.totalText, digits, c.textPrimary, Qt::AlignRight | Qt::AlignVCenter});
    const int right = width() - amount - kAmountGap;
    // The name comes first; the count has what it leaves, or a third.
    const int rest = right - 8 - textWidth(bar_.name, fontFor(Type::small));
    const int count = bar_.countText.isEmpty()
                          ? 0
                          : std::min(textWidth(bar_.countText, fontFor(Type::small)) + 2, std::max(rest, right / 3));
    paintText(painter, QRect(right - count, 2, count, line),
              {bar_.countText, fontFor(Type::small), c.textTertiary, Qt::AlignRight | Qt::AlignVCenter});
    paintText(painter, QRect(0, 2, std::max(20, right - count - 8), line), {bar_.name, fontFor(Type::small), c.textPrimary});
    const QRectF track(0, line + 4, width(), kBar);
    paintPanel(painter, track, kBar / 2.0, c.controlTrack);
    if (bar_.share <= 0) return;
    paintPanel(painter, QRectF(track.left(), track.top(), std::max<double>(kBar, track.width() * bar_.share), kBar),
               kBar / 2.0, c.chart.empty() ? c.accentFill : c.chart.front());
  }

 private:
  CostBar bar_;
};

}  // namespace

CostTileCard::CostTileCard() {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  giveRole(*this, QAccessible::StaticText);
}

void CostTileCard::setTile(const CostTile& tile) {
  tile_ = tile;
  setAccessibleName(QStringList{tile.title, tile.value, tile.detail}.join(u", "_s));
  setToolTip(tile.detail);
  update();
}

void CostTileCard::paintEvent(QPaintEvent* event) {
  CostCard::paintEvent(event);
  QPainter painter(this);
  const Colors& c = colors();
  const int width = this->width() - 2 * kTilePadding;
  paintText(painter, QRect(kTilePadding, 12, width, 18), {tile_.title, fontFor(Type::small), c.textTertiary});
  // An amount is read whole: a long one is written smaller.
  QFont figure = fontFor(Type::display);
  for (const Type smaller : {Type::large, Type::title, Type::body})
    if (textWidth(tile_.value, figure) > width) figure = fontFor(smaller);
  paintText(painter, QRect(kTilePadding, 30, width, 36), {tile_.value, figure, c.textPrimary});
  paintText(painter, QRect(kTilePadding, 66, width, 18), {tile_.detail, fontFor(Type::small), c.textSecondary});
}

CostBars::CostBars(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::StrongFocus);
  giveRole(*this, QAccessible::List);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 12, 0);
  column->setSpacing(0);
  column->addStretch(1);
  setWidget(content);
  viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
}

void CostBars::setBars(const QString& name, const std::vector<CostBar>& bars) {
  setAccessibleName(name);
  auto* column = static_cast<QVBoxLayout*>(widget()->layout());
  while (rows_.size() > bars.size()) {
    delete rows_.back();
    rows_.pop_back();
  }
  while (rows_.size() < bars.size()) {
    rows_.push_back(new BarRow);
    column->insertWidget(column->count() - 1, rows_.back());
  }
  for (std::size_t at = 0; at < bars.size(); ++at) static_cast<BarRow*>(rows_[at])->setBar(bars[at]);
}

}  // namespace sorvan::views
