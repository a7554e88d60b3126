#include "shell/views/style_controls.h"

#include <QWidget>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/style.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kKnobHalo = 2;

bool has(const QStyleOption& option, QStyle::StateFlag flag) { return option.state.testFlag(flag); }
bool hovered(const QStyleOption& option) { return has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled); }

QColor fieldLine(const QStyleOption& option, bool invalid) {
  const Colors& c = colors();
  if (!has(option, QStyle::State_Enabled)) return c.lineDefault;
  if (invalid) return c.dangerText;
  return hovered(option) ? c.textSecondary : c.controlFieldBorder;
}

// The fill of what is on.
QColor chosenFill(const QStyleOption& option) {
  const Colors& c = colors();
  if (!has(option, QStyle::State_Enabled)) return c.controlTrack;
  if (has(option, QStyle::State_Sunken)) return c.accentFillPressed;
  return hovered(option) ? c.accentFillHover : c.accentFill;
}

QColor chosenInk(const QStyleOption& option) {
  return has(option, QStyle::State_Enabled) ? colors().textOnAccent : colors().textDisabled;
}

// What is off: an outline that answers the pointer.
void paintOutline(QPainter& painter, const QStyleOption& option, const QRectF& box, double radius) {
  const Colors& c = colors();
  if (!has(option, QStyle::State_Enabled)) return paintRing(painter, box, radius, 1.5, c.lineDefault);
  if (has(option, QStyle::State_Sunken)) paintPanel(painter, box, radius, c.statePressed);
  const bool touched = hovered(option) || has(option, QStyle::State_Sunken);
  paintRing(painter, box, radius, 1.5, touched ? c.textSecondary : c.controlBorderStrong);
}

QRectF boxOf(const QStyleOption& option) { return QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5); }

}  // namespace

void paintField(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  if (widget && widget->property(bareProperty).toBool()) return;
  const Colors& c = colors();
  const int radius = metrics().radiusControl;
  const bool invalid = widget && widget->property(invalidProperty).toBool();
  const bool fixed = has(option, QStyle::State_ReadOnly);
  paintPanel(painter, option.rect, radius, fixed ? QColor() : c.surfaceInset,
             fixed ? c.lineDefault : fieldLine(option, invalid));
  if (has(option, QStyle::State_HasFocus))
    paintRing(painter, option.rect, radius, metrics().borderFocus, invalid ? c.dangerText : c.accentRing);
}

void paintTick(QPainter& painter, const QStyleOption& option) {
  const QRectF box = boxOf(option);
  if (!has(option, QStyle::State_On)) return paintOutline(painter, option, box, metrics().radiusSmall);
  paintPanel(painter, box, metrics().radiusSmall, chosenFill(option));
  paintCheck(painter, box, 11, chosenInk(option));
}

void paintRadio(QPainter& painter, const QStyleOption& option) {
  const QRectF box = boxOf(option);
  const double radius = box.width() / 2;
  if (!has(option, QStyle::State_On)) return paintOutline(painter, option, box, radius);
  paintPanel(painter, box, radius, chosenFill(option));
  paintPanel(painter, box.adjusted(4.5, 4.5, -4.5, -4.5), radius, chosenInk(option));
}

QRect sliderKnob(const QStyleOptionSlider& option) {
  const int side = metrics().sliderKnob;
  const int span = option.rect.width() - side;
  const int at =
      QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition, span, option.upsideDown);
  return QRect(option.rect.left() + at, option.rect.center().y() - side / 2 + 1, side, side);
}

void paintSlider(QPainter& painter, const QStyleOptionSlider& option) {
  const Colors& c = colors();
  const QRectF knob = sliderKnob(option);
  const QRectF groove(option.rect.left() + 1, option.rect.center().y() - 1, option.rect.width() - 2,
                      metrics().sliderTrack);
  paintPanel(painter, groove, 2, c.controlTrack);
  QRectF filled = groove;
  filled.setRight(knob.center().x());
  const bool enabled = has(option, QStyle::State_Enabled);
  paintPanel(painter, filled, 2, enabled ? chosenFill(option) : c.controlBorderStrong);
  const bool touched = hovered(option) || has(option, QStyle::State_Sunken);
  if (enabled && touched) {
    const QRectF halo = knob.adjusted(-kKnobHalo, -kKnobHalo, kKnobHalo, kKnobHalo);
    paintPanel(painter, halo, halo.width() / 2, has(option, QStyle::State_Sunken) ? c.accentRing : c.accentSoft);
  }
  paintPanel(painter, knob, knob.width() / 2, enabled ? c.controlKnob : c.textDisabled, QColor(0, 0, 0, 70));
}

}  // namespace sorvan::views
