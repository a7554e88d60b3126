#include "shell/views/fields.h"

#include <QKeyEvent>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/style.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

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

void TextField::setKeyHint(const QString& keys) { keyHint_ = keys; }

void TextField::setInvalid(bool invalid) {
  setProperty(invalidProperty, invalid);
  setMargins();
  update();
}

bool TextField::isInvalid() const { return property(invalidProperty).toBool(); }

void TextField::setMargins() { setTextMargins(iconName_.isEmpty() ? 6 : 28, 0, isInvalid() ? 28 : 6, 0); }

void TextField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const Colors& c = colors();
  if (!iconName_.isEmpty()) paintIcon(painter, iconName_, QRectF(10, 0, 16, height()), 14, {c.textTertiary});
  if (isInvalid()) paintIcon(painter, u"circle-alert"_s, QRectF(width() - 25, 0, 16, height()), 14, {c.dangerText});
  if (keyHint_.isEmpty() || hasFocus() || !text().isEmpty()) return;
  const QFont font = fontFor(Type::caption);
  const int room = textWidth(keyHint_, font) + 10;
  const QRect box(width() - room - 9, (height() - 17) / 2, room, 17);
  paintPanel(painter, box, metrics().radiusSmall, {}, c.lineDefault);
  paintText(painter, box, {keyHint_, font, c.textTertiary, Qt::AlignCenter});
}

void TextField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && receivers(SIGNAL(escapePressed())) > 0) {
    Q_EMIT escapePressed();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

}  // namespace sorvan::views
