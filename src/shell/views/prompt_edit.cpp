#include "shell/views/prompt_edit.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include "shell/views/theme.h"
#include "shell/views/typography.h"

namespace sorvan::views {

PromptEdit::PromptEdit(const QString& name, QWidget* parent) : QTextEdit(parent) {
  setAccessibleName(name);
  setAcceptRichText(false);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
  setFont(fontFor(Type::prompt));
  document()->setDocumentMargin(0);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  viewport()->setCursor(Qt::IBeamCursor);
  setLineDistance();
  dress();
  connect(&Theme::instance(), &Theme::changed, this, &PromptEdit::dress);
  connect(this, &QTextEdit::textChanged, this, [this] { Q_EMIT edited(toPlainText()); });
}

void PromptEdit::dress() {
  QPalette own = palette();
  own.setColor(QPalette::Base, Qt::transparent);
  own.setColor(QPalette::Text, colors().textPrimary);
  own.setColor(QPalette::PlaceholderText, colors().textTertiary);
  own.setColor(QPalette::Highlight, colors().accentFill);
  own.setColor(QPalette::HighlightedText, colors().textOnAccent);
  setPalette(own);
}

// New lines take their distance from the line before, so that it is enough to set it where text is replaced.
void PromptEdit::setLineDistance() {
  QTextCursor all(document());
  all.select(QTextCursor::Document);
  QTextBlockFormat format;
  format.setLineHeight(lineHeight(Type::prompt), QTextBlockFormat::FixedHeight);
  all.mergeBlockFormat(format);
}

void PromptEdit::setDraft(const QString& text) {
  if (text == toPlainText()) return;
  const QSignalBlocker quiet(this);
  setPlainText(text);
  setLineDistance();
  moveCursor(QTextCursor::End);
}

int PromptEdit::wishedHeight(int width) const {
  const std::unique_ptr<QTextDocument> copy(document()->clone());
  copy->setTextWidth(width);
  return std::clamp(static_cast<int>(std::ceil(copy->size().height())), metrics().composerEditorMin,
                    metrics().composerEditorMax);
}

void PromptEdit::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !event->modifiers().testFlag(Qt::ShiftModifier)) {
    Q_EMIT submitted();
    return;
  }
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT escapePressed();
    return;
  }
  QTextEdit::keyPressEvent(event);
}

void PromptEdit::focusInEvent(QFocusEvent* event) {
  QTextEdit::focusInEvent(event);
  // A window that comes back to the front returns the keyboard; nobody has asked for the prompt then.
  const bool asked = event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
  if (asked) Q_EMIT focused();
}

void PromptEdit::mousePressEvent(QMouseEvent* event) {
  QTextEdit::mousePressEvent(event);
  Q_EMIT focused();
}

void PromptEdit::insertFromMimeData(const QMimeData* source) {
  if (source->hasText()) insertPlainText(source->text());
}

}  // namespace sorvan::views
