#include "shell/views/controls.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kFaded = 0.45;     // of a switch that cannot be thrown
constexpr int kPressedDanger = 118;  // percent darker: the tokens have no colour of its own for it

int heightOf(ControlSize size) {
  const Metrics& m = metrics();
  return size == ControlSize::compact ? m.controlCompact
                                      : (size == ControlSize::large ? m.controlLarge : m.controlRegular);
}

void prepare(QAbstractButton& button) {
  button.setAttribute(Qt::WA_Hover);
  button.setFocusPolicy(Qt::StrongFocus);
  QObject::connect(&Theme::instance(), &Theme::changed, &button, [&button] { button.updateGeometry(); });
}

}  // namespace

// Button

Button::Button(const QString& text, ButtonVariant variant, QWidget* parent)
    : QPushButton(text, parent), variant_(variant) {
  prepare(*this);
  // Enter presses the button that has the keyboard; by itself the toolkit does so in dialogs only.
  setAutoDefault(true);
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void Button::setVariant(ButtonVariant variant) {
  if (variant_ == variant) return;
  variant_ = variant;
  updateGeometry();
  update();
}

void Button::setControlSize(ControlSize size) {
  size_ = size;
  updateGeometry();
}

void Button::setSnug() {
  snug_ = true;
  updateGeometry();
}

void Button::setIconName(const QString& name) {
  iconName_ = name;
  updateGeometry();
  update();
}

void Button::setTrailingIconName(const QString& name) {
  trailingIconName_ = name;
  updateGeometry();
  update();
}

QFont Button::textFont() const {
  const bool strong = variant_ == ButtonVariant::primary || variant_ == ButtonVariant::destructive;
  return fontFor(size_ == ControlSize::compact ? Type::small : Type::body, strong ? Weight::semibold : Weight::medium);
}

int Button::padding() const {
  if (snug_) return metrics().controlRegular / 5;
  if (variant_ == ButtonVariant::link) return 4;
  return size_ == ControlSize::compact ? 9 : (size_ == ControlSize::large ? 18 : 12);
}

int Button::iconSide() const {
  return size_ == ControlSize::compact ? metrics().iconSmall : metrics().iconRegular;
}

QSize Button::sizeHint() const {
  int width = textWidth(text(), textFont()) + 2 * padding() + 2;
  if (!iconName_.isEmpty()) width += iconSide() + gap();
  if (!trailingIconName_.isEmpty()) width += metrics().iconSmall + gap();
  return {width, heightOf(size_)};
}

QColor Button::textColor() const {
  const Colors& c = colors();
  if (!isEnabled()) return c.textDisabled;
  switch (variant_) {
    case ButtonVariant::primary:
      return c.textOnAccent;
    case ButtonVariant::destructive:
      return c.textOnDanger;
    case ButtonVariant::link:
      return c.accentText;
    case ButtonVariant::quiet:
      return underMouse() ? c.textPrimary : c.textSecondary;
    case ButtonVariant::secondary:
      break;
  }
  return c.textPrimary;
}

void Button::paintGround(QPainter& painter) const {
  const Colors& c = colors();
  const bool hover = underMouse() && isEnabled();
  const double radius = metrics().radiusControl;
  if (variant_ == ButtonVariant::quiet || variant_ == ButtonVariant::link) {
    return paintTouch(painter, rect(), radius, *this);
  }
  if (variant_ == ButtonVariant::secondary) {
    const QColor fill = isDown() ? c.controlFillPressed : (hover ? c.controlFillHover : c.controlFill);
    return paintPanel(painter, rect(), radius, isEnabled() ? fill : QColor(),
                      isEnabled() ? c.controlBorder : c.lineDefault);
  }
  if (!isEnabled()) return paintPanel(painter, rect(), radius, c.controlTrack);
  if (variant_ == ButtonVariant::destructive)
    return paintPanel(painter, rect(), radius,
                      isDown() ? c.dangerFill.darker(kPressedDanger) : (hover ? c.dangerFillHover : c.dangerFill));
  paintPanel(painter, rect(), radius, isDown() ? c.accentFillPressed : (hover ? c.accentFillHover : c.accentFill));
}

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintGround(painter);
  const int icon = iconSide();
  const int trailing = metrics().iconSmall;
  const int extra = (iconName_.isEmpty() ? 0 : icon + gap()) + (trailingIconName_.isEmpty() ? 0 : trailing + gap());
  const int room = width() - 2 * std::min(padding(), 6);
  const int words = std::min(textWidth(text(), textFont()), room - extra);
  int x = (width() - words - extra) / 2;
  if (!iconName_.isEmpty()) {
    paintIcon(painter, iconName_, QRectF(x, 0, icon, height()), icon, {textColor()});
    x += icon + gap();
  }
  paintText(painter, QRect(x, 0, words + 1, height()), {text(), textFont(), textColor()});
  if (trailingIconName_.isEmpty()) return;
  painter.setOpacity(0.72);
  paintIcon(painter, trailingIconName_, QRectF(x + words + gap(), 0, trailing, height()), trailing, {textColor()});
}

// IconButton

IconButton::IconButton(const QString& iconName, const QString& name, const QString& keys, QWidget* parent)
    : QAbstractButton(parent), iconName_(iconName), side_(metrics().iconButton), iconSide_(metrics().iconRegular) {
  prepare(*this);
  setName(name, keys);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconButton::setIconName(const QString& iconName) {
  iconName_ = iconName;
  update();
}

void IconButton::setName(const QString& name, const QString& keys) {
  setAccessibleName(name);
  setToolTip(keys.isEmpty() ? name : name + u"  "_s + keys);
}

void IconButton::setControlSize(ControlSize size) {
  side_ = size == ControlSize::compact ? metrics().controlCompact : metrics().iconButton;
  updateGeometry();
}

void IconButton::setIconSide(int pixels) {
  iconSide_ = pixels;
  update();
}

QSize IconButton::sizeHint() const { return {side_, side_}; }

void IconButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool hover = underMouse() && isEnabled();
  if (isChecked()) paintPanel(painter, rect(), metrics().radiusControl, c.stateSelected);
  paintTouch(painter, rect(), metrics().radiusControl, *this);
  QColor ink = isChecked() ? c.accentText : (hover ? c.textPrimary : c.textSecondary);
  if (!isEnabled()) ink = c.textDisabled;
  paintIcon(painter, iconName_, rect(), iconSide_, {ink});
}

// Chip

namespace {
constexpr int kChipPadding = 10;
constexpr int kChipGap = 6;
constexpr int kChipShortestText = 36;
constexpr int kChipEnd = 12;  // the chevron or the cross
}  // namespace

Chip::Chip(const QString& iconName, QWidget* parent) : QAbstractButton(parent), iconName_(iconName) {
  prepare(*this);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  setProperty(roundProperty, true);
}

void Chip::setLabel(const QString& text, const QString& value) {
  setText(text);
  value_ = value;
  updateGeometry();
  update();
}

void Chip::setTone(ChipTone tone) {
  tone_ = tone;
  update();
}

void Chip::setChevron(bool shown) {
  chevron_ = shown;
  updateGeometry();
}

void Chip::setClearable(bool clearable) {
  if (clearable_ == clearable) return;
  clearable_ = clearable;
  update();
}

// Where the chevron or the cross stands.
QRect Chip::endArea() const {
  return {width() - kChipPadding - kChipEnd, 0, kChipEnd, height()};
}

void Chip::setWordsShown(bool shown) {
  if (words_ == shown) return;
  words_ = shown;
  updateGeometry();
  update();
}

int Chip::widthWithoutValue() const {
  return sizeHint().width() - (value_.isEmpty() ? 0 : kChipGap + textWidth(value_, fontFor(Type::small)));
}

QSize Chip::sizeHint() const {
  if (!words_) return {metrics().chip + 6, metrics().chip};
  int width = 2 * kChipPadding + 2 + textWidth(text(), fontFor(Type::small, Weight::medium));
  if (!iconName_.isEmpty()) width += metrics().iconSmall + kChipGap;
  if (!value_.isEmpty()) width += kChipGap + textWidth(value_, fontFor(Type::small));
  if (chevron_) width += kChipGap + kChipEnd;
  return {width, metrics().chip};
}

QSize Chip::minimumSizeHint() const {
  const int words = textWidth(text(), fontFor(Type::small, Weight::medium));
  const int values = value_.isEmpty() ? 0 : kChipGap + textWidth(value_, fontFor(Type::small));
  return {sizeHint().width() - words - values + std::min(words, kChipShortestText), metrics().chip};
}

void Chip::paintGround(QPainter& painter) const {
  const Colors& c = colors();
  const double radius = height() / 2.0;
  const bool hover = underMouse() && isEnabled();
  if (tone_ == ChipTone::active) {
    paintPanel(painter, rect(), radius, c.stateSelected);
    return paintTouch(painter, rect(), radius, *this);
  }
  if (tone_ == ChipTone::quiet) {
    const QColor fill = isDown() ? c.statePressed : (hover ? c.stateHover : QColor());
    return paintPanel(painter, rect(), radius, fill, c.lineDefault);
  }
  QColor line = tone_ == ChipTone::attention ? c.warningText : c.controlBorder;
  if (!isEnabled()) return paintPanel(painter, rect(), radius, QColor(), c.lineDefault);
  paintPanel(painter, rect(), radius, isDown() ? c.controlFillPressed : (hover ? c.controlFillHover : c.controlFill), line);
}

void Chip::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  paintGround(painter);
  const QColor active = isDown() ? c.textPrimary : c.accentText;  // which is too faint under a press
  QColor ink = tone_ == ChipTone::active ? active : (tone_ == ChipTone::quiet ? c.textSecondary : c.textPrimary);
  QColor dim = tone_ == ChipTone::active ? active : c.textTertiary;
  if (!isEnabled()) ink = dim = c.textDisabled;
  if (!words_) return paintIcon(painter, iconName_, rect(), metrics().iconSmall, {dim});
  QRect inner = rect().adjusted(kChipPadding, 0, -kChipPadding, 0);
  const int side = metrics().iconSmall;
  if (!iconName_.isEmpty()) {
    paintIcon(painter, iconName_, QRect(inner.left(), 0, side, height()), side, {dim});
    inner.setLeft(inner.left() + side + kChipGap);
  }
  if (chevron_) {
    paintIcon(painter, clearable_ ? u"x"_s : u"chevron-down"_s, endArea(), kChipEnd, {dim});
    inner.setRight(endArea().left() - kChipGap);
  }
  const int used = paintText(painter, inner.adjusted(0, 0, 1, 0), {text(), fontFor(Type::small, Weight::medium), ink});
  inner.setLeft(inner.left() + used + kChipGap);
  const QColor valueInk = isEnabled() ? c.textSecondary : c.textDisabled;
  if (!value_.isEmpty()) paintText(painter, inner.adjusted(0, 0, 1, 0), {value_, fontFor(Type::small), valueInk});
}

void Chip::keyPressEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                     (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier);
  if (opens) return click();
  const bool clears = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
  if (clearable_ && clears) return Q_EMIT clearRequested();
  QAbstractButton::keyPressEvent(event);
}

void Chip::mouseReleaseEvent(QMouseEvent* event) {
  const QRect cross = endArea().adjusted(-kChipGap / 2, 0, kChipPadding, 0);
  if (!clearable_ || !isDown() || !cross.contains(event->position().toPoint()))
    return QAbstractButton::mouseReleaseEvent(event);
  setDown(false);
  Q_EMIT clearRequested();
}

// TileButton

TileButton::TileButton(const QString& iconName, const QString& text, QWidget* parent)
    : QAbstractButton(parent), iconName_(iconName) {
  setText(text);
  prepare(*this);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize TileButton::sizeHint() const { return {70, 50}; }

void TileButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool hover = underMouse() && isEnabled();
  paintPanel(painter, rect(), 7, isChecked() ? c.stateSelected : c.stateHover);
  paintTouch(painter, rect(), 7, *this);
  QColor ink = isChecked() && !isDown() ? c.accentText : (hover || isDown() ? c.textPrimary : c.textSecondary);
  if (!isEnabled()) ink = c.textDisabled;
  paintIcon(painter, iconName_, QRectF(0, 7, width(), 18), metrics().iconRegular, {ink});
  paintText(painter, QRect(2, 28, width() - 4, 15), {text(), fontFor(Type::caption), ink, Qt::AlignCenter});
}

// Switch

Switch::Switch(const QString& name, QWidget* parent) : QAbstractButton(parent) {
  prepare(*this);
  setCheckable(true);
  setAccessibleName(name);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Switch::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  if (!isEnabled()) painter.setOpacity(kFaded);
  const QRectF track(0, (height() - 20) / 2.0, 34, 20);
  paintPanel(painter, track, 10, isChecked() ? c.accentFill : c.controlTrack);
  paintTouch(painter, track, 10, *this);
  const QColor knob = isChecked() && Theme::instance().isDark() ? c.textOnAccent : c.controlKnob;
  paintPanel(painter, QRectF(isChecked() ? 16 : 2, track.top() + 2, 16, 16), 8, knob);
}

}  // namespace sorvan::views
