#include "shell/views/balance_badge.h"

#include <QPainter>

#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kRollTime = 900;
constexpr int kHeight = 24;
}  // namespace

RollingBalance::RollingBalance(QObject* parent) : QObject(parent) {
  roll_.setDuration(kRollTime);
  roll_.setEasingCurve(QEasingCurve::OutCubic);
  connect(&roll_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) { take(value.toDouble()); });
}

void RollingBalance::setTarget(double microcredits) {
  const bool grows = known_ && microcredits > shown_;
  if (known_ && roll_.state() == QAbstractAnimation::Running && roll_.endValue().toDouble() == microcredits) return;
  roll_.stop();
  known_ = true;
  if (!grows || Theme::instance().reducedMotion()) return take(microcredits);
  roll_.setStartValue(shown_);
  roll_.setEndValue(microcredits);
  roll_.start();
}

void RollingBalance::take(double microcredits) {
  if (microcredits == shown_) return;
  shown_ = microcredits;
  Q_EMIT changed();
}

BalanceBadge::BalanceBadge(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setProperty(roundProperty, true);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setVisible(false);
  connect(&balance_, &RollingBalance::changed, this, [this] {
    setText(AccountPresenter::creditsText(balance_.shown()));
    updateGeometry();
    update();
  });
}

void BalanceBadge::show(const BadgeDisplay& display) {
  setVisible(display.shown);
  if (!display.shown) return;
  balance_.setTarget(static_cast<double>(display.microcredits));
  setText(AccountPresenter::creditsText(balance_.shown()));
  setAccessibleName(display.help);
  setToolTip(display.help);
  updateGeometry();
}

QSize BalanceBadge::sizeHint() const {
  return {textWidth(text(), fontFor(Type::small, Weight::medium)) + 38, kHeight};
}

void BalanceBadge::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool touched = underMouse() || isDown();
  if (touched) paintPanel(painter, rect(), height() / 2.0, isDown() ? c.statePressed : c.stateHover);
  const QColor ink = touched ? c.textPrimary : c.textSecondary;
  paintIcon(painter, u"coins"_s, QRectF(9, 0, 14, height()), 14, {ink});
  paintText(painter, rect().adjusted(29, 0, -4, 0), {text(), fontFor(Type::small, Weight::medium), ink});
}

}  // namespace sorvan::views
