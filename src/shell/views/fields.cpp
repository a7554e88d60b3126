#include "shell/views/fields.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/style.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kInnerInset = 2;  // between a control in the field and the field's edge
}  // namespace

TextField::TextField(const QString& name, const QString& placeholder, QWidget* parent) : QLineEdit(parent) {
  setAccessibleName(name);
  setPlaceholderText(placeholder);
  setFixedHeight(metrics().field);
  setFont(fontFor(Type::body));
  setMargins();
}

void TextField::setIconName(const QString& iconName) {
  iconName_ = iconName;
  setMargins();
}

void TextField::setKeyHint(const QString& keys) {
  keyHint_ = keys;
  setMargins();
}

void TextField::setInnerControl(QWidget* control) {
  inner_ = control;
  control->setParent(this);
  control->setCursor(Qt::ArrowCursor);
  control->resize(control->sizeHint());
  control->show();
  setMargins();
}

void TextField::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  if (inner_) inner_->move(width() - inner_->width() - kInnerInset, (height() - inner_->height()) / 2);
}

void TextField::setInvalid(bool invalid) {
  setProperty(invalidProperty, invalid);
  setMargins();
  update();
}

bool TextField::isInvalid() const { return property(invalidProperty).toBool(); }

void TextField::setMargins() {
  const int end = inner_ ? inner_->width() : isInvalid() || !keyHint_.isEmpty() ? 28 : 6;
  setTextMargins(iconName_.isEmpty() ? 6 : 28, 0, end, 0);
}

bool TextField::offersClear() const { return !keyHint_.isEmpty() && !text().isEmpty() && isEnabled() && !isReadOnly(); }

void TextField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const Colors& c = colors();
  if (!iconName_.isEmpty()) paintIcon(painter, iconName_, QRectF(10, 0, 16, height()), 14, {c.textTertiary});
  if (isInvalid()) paintIcon(painter, u"circle-alert"_s, QRectF(width() - 25, 0, 16, height()), 14, {c.dangerText});
  if (offersClear()) paintIcon(painter, u"x"_s, QRectF(width() - 25, 0, 16, height()), 14, {c.textSecondary});
  if (!keyHint_.isEmpty() && !hasFocus() && text().isEmpty()) paintKeyHint(painter);
}

void TextField::paintKeyHint(QPainter& painter) const {
  const Colors& c = colors();
  const QFont font = fontFor(Type::caption);
  const int room = textWidth(keyHint_, font) + 10;
  const QRect box(width() - room - 9, (height() - 17) / 2, room, 17);
  paintPanel(painter, box, metrics().radiusSmall, {}, c.lineDefault);
  paintText(painter, box, {keyHint_, font, isEnabled() ? c.textTertiary : c.textDisabled, Qt::AlignCenter});
}

void TextField::mouseMoveEvent(QMouseEvent* event) {
  const bool onCross = offersClear() && clearArea().contains(event->position().toPoint());
  setCursor(onCross ? Qt::ArrowCursor : Qt::IBeamCursor);
  QLineEdit::mouseMoveEvent(event);
}

void TextField::mousePressEvent(QMouseEvent* event) {
  if (!offersClear() || !clearArea().contains(event->position().toPoint())) return QLineEdit::mousePressEvent(event);
  clear();
  Q_EMIT textEdited({});
}

void TextField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && receivers(SIGNAL(escapePressed())) > 0) {
    Q_EMIT escapePressed();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

}  // namespace sorvan::views
