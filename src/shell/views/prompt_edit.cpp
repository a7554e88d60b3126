#include "shell/views/prompt_edit.h"

#include <QAbstractTextDocumentLayout>
#include <QGlyphRun>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QRawFont>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimer>
#include <QToolTip>

#include "generation/texts.h"
#include "shell/composer_presenter.h"
#include "shell/views/dropped_media.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"
#include "shell/views/theme.h"
#include "shell/views/typography.h"

namespace sorvan::views {

namespace {

// Looking for a place between words costs the square of such a run, breaking it anywhere costs its length.
constexpr qsizetype kLongestUnbrokenRun = 10'000;

bool hasEndlessRun(const QString& text) {
  qsizetype run = 0;
  for (const QChar character : text) {
    run = character.isSpace() ? 0 : run + 1;
    if (run > kLongestUnbrokenRun) return true;
  }
  return false;
}

// Where most of a text may need a font that is not the interface's own.
enum Script { han = 1, kana = 2, hangul = 4 };

int scriptOf(QChar character) {
  const char16_t code = character.unicode();
  if (code >= 0x4e00 && code <= 0x9fff) return han;
  if (code >= 0x3040 && code <= 0x30ff) return kana;
  return code >= 0xac00 && code <= 0xd7af ? hangul : 0;
}

// A name that stands for something is a pill; one that does not is underlined like a word that is spelt wrong.
void paintMark(QPainter& painter, const QRectF& area, bool attached) {
  if (attached) return paintPanel(painter, area.adjusted(-3, 1, 3, -1), metrics().radiusSmall, colors().accentSoft);
  QPen dots(colors().dangerText, 2, Qt::CustomDashLine, Qt::RoundCap);
  dots.setDashPattern({0.01, 2});
  painter.setPen(dots);
  painter.drawLine(QPointF(area.left() + 1, area.bottom() - 2), QPointF(area.right() - 1, area.bottom() - 2));
}

// The family that the toolkit found for a character; empty when it has none.
QString familyThatDraws(QChar character, const QFont& font) {
  QTextLayout layout(character, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  return runs.isEmpty() ? QString() : runs.front().rawFont().familyName();
}

}  // namespace

PromptEdit::PromptEdit(const QString& name, QWidget* parent) : QTextEdit(parent) {
  setAccessibleName(name);
  // It stands in a dock of its own that people type in all the time: the caret shows that it has the keyboard.
  setProperty(ownFocusProperty, true);
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
  keepGlyphs(0, 0, 0);
  connect(document(), &QTextDocument::contentsChange, this, &PromptEdit::keepGlyphs);
  connect(this, &QTextEdit::textChanged, this, [this] {
    const QString text = toPlainText();
    breakLinesFor(text);
    nameFontsFor(text);
    Q_EMIT edited(text);
  });
}

void PromptEdit::dress() {
  QPalette own = palette();
  own.setColor(QPalette::Base, Qt::transparent);
  own.setColor(QPalette::Text, colors().textPrimary);
  own.setColor(QPalette::Disabled, QPalette::Text, colors().textDisabled);
  own.setColor(QPalette::PlaceholderText, colors().textTertiary);
  own.setColor(QPalette::Highlight, colors().accentFill);
  own.setColor(QPalette::HighlightedText, colors().textOnAccent);
  setPalette(own);
  dressMarks();
}

// New lines take their distance from the line before, so that it is enough to set it where text is replaced.
void PromptEdit::setLineDistance() {
  QTextCursor all(document());
  all.select(QTextCursor::Document);
  QTextBlockFormat format;
  format.setLineHeight(lineHeight(Type::prompt), QTextBlockFormat::FixedHeight);
  all.mergeBlockFormat(format);
}

// A paragraph would be shaped anew for each question about a place in it, and again to be painted: of a long one that
// is a hundred times what the key itself costs.
void PromptEdit::keepGlyphs(int position, int, int added) {
  QTextBlock block = document()->findBlock(position);
  for (; block.isValid() && block.position() <= position + added; block = block.next())
    block.layout()->setCacheEnabled(true);
}

// Set only where it differs, because it lays everything out anew.
void PromptEdit::breakLinesFor(const QString& text) {
  const auto wished = hasEndlessRun(text) ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere;
  if (wordWrapMode() != wished) setWordWrapMode(wished);
}

// A font that is only found for want of another is looked for again at each character, fifty times as long as the
// character takes otherwise. So the one that was found is named.
void PromptEdit::nameFontsFor(const QString& text) {
  QFont wished = font();
  QStringList families = wished.families();
  for (const QChar character : text) {
    const int script = scriptOf(character);
    if ((script & ~scripts_) == 0) continue;
    scripts_ |= script;
    const QString family = familyThatDraws(character, wished);
    if (!family.isEmpty() && !families.contains(family)) families << family;
  }
  if (families == wished.families()) return;
  wished.setFamilies(families);
  setFont(wished);
}

void PromptEdit::setDraft(const QString& text) {
  const QString present = toPlainText();
  if (text == present) return;
  breakLinesFor(text);
  nameFontsFor(text);
  {
    const QSignalBlocker quiet(this);
    if (text.isEmpty() || present.isEmpty()) {
      setPlainText(text);
      setLineDistance();
      moveCursor(QTextCursor::End);
    } else {
      replaceDifference(text);
    }
  }
  Q_EMIT draftTaken();
}

void PromptEdit::replaceDifference(const QString& text) {
  const QString present = toPlainText();
  const auto shorter = std::min(present.size(), text.size());
  qsizetype front = 0;
  while (front < shorter && present[front] == text[front]) ++front;
  // Never between the two halves of one character.
  if (front > 0 && present[front - 1].isHighSurrogate()) --front;
  qsizetype back = 0;
  while (back < shorter - front && present[present.size() - 1 - back] == text[text.size() - 1 - back]) ++back;
  if (back > 0 && present[present.size() - back].isLowSurrogate()) --back;
  QTextCursor edit(document());
  edit.setPosition(static_cast<int>(front));
  edit.setPosition(static_cast<int>(present.size() - back), QTextCursor::KeepAnchor);
  edit.insertText(text.sliced(front, text.size() - front - back));
}

// Asked several times for each key, so it lays nothing out twice.
int PromptEdit::wishedHeight(int width) const {
  const int revision = document()->revision();
  if (heightRevision_ == revision && heightWidth_ == width) return height_;
  const double ownWidth = document()->textWidth();
  double wished = document()->size().height();
  // A long prompt scrolls, beside a scroll bar and so in narrower lines: it is too high at any width like this one.
  const bool scrolls = ownWidth > 0 && ownWidth <= width &&
                       wished * ownWidth / width > metrics().composerEditorMax + 2 * lineHeight(Type::prompt);
  if (!scrolls && !qFuzzyCompare(ownWidth, static_cast<double>(width))) {
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->setTextWidth(width);
    wished = copy->size().height();
  }
  heightRevision_ = revision;
  heightWidth_ = width;
  height_ = std::clamp(static_cast<int>(std::ceil(wished)), metrics().composerEditorMin, metrics().composerEditorMax);
  return height_;
}

// ---- Mentions

void PromptEdit::setMarks(std::vector<MentionMark> marks) {
  if (marks == marks_) return;
  marks_ = std::move(marks);
  dressMarks();
  viewport()->update();
}

// The colour of the letters of those that stand for something; it belongs to the painting and not to the document, so that Undo knows nothing of it.
void PromptEdit::dressMarks() {
  QList<ExtraSelection> coloured;
  for (const MentionMark& mark : marks_) {
    if (!mark.attached) continue;
    ExtraSelection selection;
    selection.cursor = QTextCursor(document());
    selection.cursor.setPosition(mark.start);
    selection.cursor.setPosition(mark.start + mark.length, QTextCursor::KeepAnchor);
    selection.format.setForeground(colors().accentText);
    coloured << selection;
  }
  setExtraSelections(coloured);
}

// One area for each line in sight that the mention stands on.
std::vector<QRectF> PromptEdit::areasOf(const MentionMark& mark, const QRectF& view) const {
  std::vector<QRectF> areas;
  const QTextBlock block = document()->findBlock(mark.start);
  const QTextLayout* layout = block.isValid() ? block.layout() : nullptr;
  if (!layout || mark.start + mark.length > block.position() + block.length()) return areas;
  // What an input method has under way stands in the lines, and not in the text.
  const auto inLayout = [&](int position) {
    const int composed = static_cast<int>(layout->preeditAreaText().size());
    return position > layout->preeditAreaPosition() ? position + composed : position;
  };
  const int from = inLayout(mark.start - block.position());
  const int to = inLayout(mark.start + mark.length - block.position());
  const QPointF origin = document()->documentLayout()->blockBoundingRect(block).topLeft();
  const QPointF scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
  for (int index = 0; index < layout->lineCount(); ++index) {
    const QTextLine line = layout->lineAt(index);
    const int first = std::max(from, line.textStart());
    const int last = std::min(to, line.textStart() + line.textLength());
    if (first >= last) continue;
    const double top = origin.y() + line.y() - scrolled.y();
    if (top > view.bottom() || top + line.height() < view.top()) continue;
    const double left = line.cursorToX(first);
    const double right = line.cursorToX(last);
    areas.emplace_back(origin.x() + std::min(left, right) - scrolled.x(), top, std::abs(right - left), line.height());
  }
  return areas;
}

QRect PromptEdit::rectOf(int position) const {
  QTextCursor at(document());
  at.setPosition(std::clamp(position, 0, std::max(0, document()->characterCount() - 1)));
  return cursorRect(at);
}

void PromptEdit::paintEvent(QPaintEvent* event) {
  if (!marks_.empty()) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const MentionMark& mark : marks_)
      for (const QRectF& area : areasOf(mark, viewport()->rect())) paintMark(painter, area, mark.attached);
  }
  QTextEdit::paintEvent(event);
}

bool PromptEdit::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTextEdit::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int position = cursorForPosition(help->pos()).position();
  for (const MentionMark& mark : marks_) {
    if (mark.attached || position < mark.start || position > mark.start + mark.length) continue;
    const QString name = toPlainText().mid(mark.start + 1, mark.length - 1);
    QToolTip::showText(help->globalPos(), generation::texts::notAttached(name), this);
    return true;
  }
  QToolTip::hideText();
  return true;
}

// ---- Keys

void PromptEdit::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !event->modifiers().testFlag(Qt::ShiftModifier)) {
    if (!composing_ && !justComposed_ && !event->isAutoRepeat()) Q_EMIT submitted();
    return;
  }
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT escapePressed();
    return;
  }
  QTextEdit::keyPressEvent(event);
}

void PromptEdit::inputMethodEvent(QInputMethodEvent* event) {
  const bool was = composing_;
  QTextEdit::inputMethodEvent(event);
  composing_ = !event->preeditString().isEmpty();
  if (was == composing_) return;
  if (was) {
    justComposed_ = true;
    QTimer::singleShot(0, this, [this] { justComposed_ = false; });
  }
  Q_EMIT composingChanged();
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

// ---- What is pasted and dropped

QMimeData* PromptEdit::createMimeDataFromSelection() const {
  taken_ = QTextEdit::createMimeDataFromSelection();
  return taken_;
}

bool PromptEdit::movesOwnText(const QDropEvent& event) const {
  const bool ownText = taken_ && event.mimeData() == taken_ && textCursor().hasSelection();
  return ownText && event.proposedAction() == Qt::MoveAction;
}

// Whoever is told that its text was moved deletes it.
void PromptEdit::offerCopy(QDropEvent& event) const {
  if (event.isAccepted() && !movesOwnText(event)) event.setDropAction(Qt::CopyAction);
}

void PromptEdit::dragEnterEvent(QDragEnterEvent* event) {
  QTextEdit::dragEnterEvent(event);
  offerCopy(*event);
}

void PromptEdit::dragMoveEvent(QDragMoveEvent* event) {
  QTextEdit::dragMoveEvent(event);
  offerCopy(*event);
}

void PromptEdit::dropEvent(QDropEvent* event) {
  if (movesOwnText(*event)) {
    endDrag(*event);
    moveSelection(event->position().toPoint());
    return event->acceptProposedAction();
  }
  const QMimeData& data = *event->mimeData();
  if (data.hasText() && !pastesMedia(data) && refuses(data.text(), 0)) {
    endDrag(*event);
    event->setDropAction(Qt::IgnoreAction);
    return event->ignore();
  }
  QTextEdit::dropEvent(event);
  offerCopy(*event);
}

// The editor takes a drop of nothing for the end of what it shows of a drag.
void PromptEdit::endDrag(const QDropEvent& event) {
  const QMimeData nothing;
  QDropEvent end(event.position(), event.possibleActions(), &nothing, event.buttons(), event.modifiers());
  QTextEdit::dropEvent(&end);
}

// Nothing is added, so no prompt is too long for it; the editor would take the text out and insert what is then
// refused.
void PromptEdit::moveSelection(QPoint place) {
  QTextCursor from = textCursor();
  QTextCursor to = cursorForPosition(place);
  if (to.position() >= from.selectionStart() && to.position() <= from.selectionEnd()) return;
  const QString text = from.selectedText();
  from.beginEditBlock();
  from.removeSelectedText();
  to.insertText(text);
  from.endEditBlock();
  setTextCursor(to);
}

bool PromptEdit::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasText() || holdsMedia(*source);
}

void PromptEdit::insertFromMimeData(const QMimeData* source) {
  if (pastesMedia(*source)) {
    Q_EMIT mediaPasted(*source);
  } else if (source->hasText()) {
    takeText(source->text());
  }
}

// Whether the prompt would become too long with a text in the place of so many characters; then it says so.
bool PromptEdit::refuses(const QString& text, qsizetype replaced) {
  const qsizetype present = toPlainText().size();
  const qsizetype characters = present - replaced + text.size();
  if (characters <= longestPastedPrompt || characters <= present) return false;
  Q_EMIT pasteRefused(characters);
  return true;
}

void PromptEdit::takeText(const QString& text) {
  if (refuses(text, textCursor().selectedText().size())) return;
  breakLinesFor(toPlainText() + text);
  nameFontsFor(text);
  insertPlainText(text);
}

}  // namespace sorvan::views
