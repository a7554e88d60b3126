#include "shell/views/text_area.h"

#include <QEvent>
#include <QPainter>

#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"

namespace sorvan::views {

namespace {
constexpr QMargins kInside(6, 3, 4, 3);
}

TextArea::TextArea(const QString& name, const QString& placeholder, QWidget* parent) : QTextEdit(parent) {
  setAccessibleName(name);
  setPlaceholderText(placeholder);
  setProperty(ownFocusProperty, true);
  setAcceptRichText(false);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
  setAttribute(Qt::WA_Hover);
  setFont(fontFor(Type::body));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setViewportMargins(kInside);
  viewport()->setAutoFillBackground(false);
  dress();
  connect(&Theme::instance(), &Theme::changed, this, &TextArea::dress);
}

// The field's own panel shows through.
void TextArea::dress() {
  QPalette own = palette();
  own.setColor(QPalette::Base, Qt::transparent);
  own.setColor(QPalette::Text, colors().textPrimary);
  own.setColor(QPalette::Disabled, QPalette::Text, colors().textDisabled);
  own.setColor(QPalette::PlaceholderText, colors().textTertiary);
  setPalette(own);
}

bool TextArea::event(QEvent* event) {
  if (event->type() != QEvent::Paint) return QTextEdit::event(event);
  const Colors& c = colors();
  QPainter painter(this);
  QColor line = underMouse() ? c.textSecondary : c.controlFieldBorder;
  if (!isEnabled()) line = c.lineDefault;
  paintPanel(painter, rect(), metrics().radiusControl, c.surfaceInset, line);
  if (hasFocus()) paintRing(painter, rect(), metrics().radiusControl, metrics().borderFocus, c.accentRing);
  return true;
}

void TextArea::focusInEvent(QFocusEvent* event) {
  QTextEdit::focusInEvent(event);
  update();
}

void TextArea::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  update();
}

}  // namespace sorvan::views
