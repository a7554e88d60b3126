// The field in which a prompt is written.
#pragma once

#include <QPointer>
#include <QTextEdit>

#include "composer/mention_marks.h"
#include "shell/views/room.h"

namespace sorvan::views {

using composer::MentionMark;

// Plain text of two to eight lines, then it scrolls. Enter submits, Shift+Enter breaks the line, Tab moves on. While an
// input method composes, and for a key that is held down, Enter submits nothing. What is dropped is copied, so that
// another program keeps its text.
class PromptEdit final : public QTextEdit {
  Q_OBJECT

 public:
  explicit PromptEdit(const QString& name, QWidget* parent = nullptr);

  // Takes a text over without `edited`. Where it differs from the present one in part, only that part is replaced, so
  // that the cursor stays where it was and Undo knows the way back.
  void setDraft(const QString& text);
  // Pixels that the text needs at that width, within the smallest and the largest height of the editor.
  int wishedHeight(int width) const;

  // The mentions to paint, in their order.
  void setMarks(std::vector<MentionMark> marks);
  const std::vector<MentionMark>& marks() const { return marks_; }
  // Whether an input method has text under way that is not in the document yet.
  bool isComposing() const { return composing_; }
  // Where a character stands, in the viewport.
  QRect rectOf(int position) const;

 Q_SIGNALS:
  void edited(const QString& text);
  void submitted();
  void escapePressed();
  // The person has turned to the prompt, by key or by press.
  void focused();
  // Code put another text in place.
  void draftTaken();
  void composingChanged();
  // A text was not taken in, because the prompt would have had so many characters with it.
  void pasteRefused(qsizetype characters);
  // Pictures were pasted, as files or as a picture: the data lives as long as the call.
  void mediaPasted(const QMimeData& data);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  QMimeData* createMimeDataFromSelection() const override;

 private:
  void setLineDistance();
  void dress();
  void dressMarks();
  void replaceDifference(const QString& text);
  void breakLinesFor(const QString& text);
  void nameFontsFor(const QString& text);
  bool movesOwnText(const QDropEvent& event) const;
  void offerCopy(QDropEvent& event) const;
  void endDrag(const QDropEvent& event);
  void moveSelection(QPoint place);
  bool refuses(const QString& text, qsizetype replaced);
  void takeText(const QString& text);
  void keepGlyphs(int position, int removed, int added);
  std::vector<QRectF> areasOf(const MentionMark& mark, const QRectF& view) const;

  std::vector<MentionMark> marks_;
  int scripts_ = 0;  // those whose fonts are named
  bool composing_ = false;
  bool justComposed_ = false;  // until the event loop turns: an Enter that ended the composition comes in between
  mutable QPointer<QMimeData> taken_;  // what was made of the selection last, by which its own drag is known again
  mutable int heightRevision_ = -1;
  mutable int heightWidth_ = -1;
  mutable int height_ = 0;
};

}  // namespace sorvan::views
