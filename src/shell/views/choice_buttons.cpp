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

void RatioButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  paintGround(painter);
  const QColor ink = !ratio_.offered ? c.textDisabled : (isChecked() ? c.accentText : c.textSecondary);
  const int side = (width() + 1) / 3;
  const QSizeF shape = QSizeF(ratio_.width, ratio_.height).scaled(side, side, Qt::KeepAspectRatio);
  const QPointF middle(width() / 2.0, (height() - kNameHeight - kFoot) / 2.0);
  paintRing(painter, QRectF(middle - QPointF(shape.width(), shape.height()) / 2, shape), 2, 1.5, ink);
  const QRect name(0, height() - kNameHeight - kFoot, width(), kNameHeight);
  paintText(painter, name, {ratio_.ratio, fontFor(Type::caption), ink, Qt::AlignCenter});
}

}  // namespace sorvan::views
