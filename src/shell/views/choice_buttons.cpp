#include "shell/views/choice_buttons.h"

#include <QKeyEvent>
#include <QPainter>

#include "shell/views/painting.h"
#include "shell/views/theme.h"
#include "shell/views/touch.h"
#include "shell/views/typography.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kNameHeight = 14;
constexpr int kFoot = 4;
constexpr double kStroke = 1.5;

}  // namespace

ChoiceButton::ChoiceButton(const QString& name, bool chosen, QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setChecked(chosen);
  setAutoExclusive(true);
  setAccessibleName(name);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void ChoiceButton::setChosen(bool chosen) {
  setAutoExclusive(false);
  setChecked(chosen);
  setAutoExclusive(true);
}

void ChoiceButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QAbstractButton::keyPressEvent(event);
}

void ChoiceButton::paintGround(QPainter& painter) const {
  if (isChecked()) paintPanel(painter, rect(), metrics().radiusControl, colors().stateSelected);
  paintTouch(painter, rect(), metrics().radiusControl, *this);
}

RatioButton::RatioButton(const RatioChoice& ratio, QSize size, QWidget* parent)
    : ChoiceButton(ratio.ratio + u", "_s + ratio.name, ratio.chosen, parent), ratio_(ratio), size_(size) {
  setToolTip(ratio.name);
}

QColor RatioButton::ink() const {
  const Colors& c = colors();
  if (isDown()) return c.textPrimary;
  if (!ratio_.offered) return c.textTertiary;
  return isChecked() ? c.accentText : c.textSecondary;
}

void RatioButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintGround(painter);
  const int side = (width() + 1) / 3;
  const QSizeF size = QSizeF(ratio_.width, ratio_.height).scaled(side, side, Qt::KeepAspectRatio);
  const QPointF middle(width() / 2.0, (height() - kNameHeight - kFoot) / 2.0);
  const QRectF shape(middle - QPointF(size.width(), size.height()) / 2, size);
  paintRing(painter, shape, 2, kStroke, ink());
  if (!ratio_.offered) {
    // It can still be chosen, so it stays readable and is struck through.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink(), kStroke));
    painter.drawLine(shape.bottomLeft(), shape.topRight());
  }
  const QRect name(0, height() - kNameHeight - kFoot, width(), kNameHeight);
  paintText(painter, name, {ratio_.ratio, fontFor(Type::caption), ink(), Qt::AlignCenter});
}

}  // namespace sorvan::views
