// The field in which a prompt is written.
#pragma once

#include <QTextEdit>

#include "shell/views/room.h"

namespace sorvan::views {

// Plain text of two to eight lines, then it scrolls. Enter submits, Shift+Enter breaks the line, Tab moves on.
class PromptEdit final : public QTextEdit {
  Q_OBJECT

 public:
  explicit PromptEdit(const QString& name, QWidget* parent = nullptr);

  // Takes a text over without `edited`.
  void setDraft(const QString& text);
  // Pixels that the text needs at that width, within the smallest and the largest height of the editor.
  int wishedHeight(int width) const;

 Q_SIGNALS:
  void edited(const QString& text);
  void submitted();
  void escapePressed();
  // The person has turned to the prompt, by key or by press.
  void focused();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void setLineDistance();
  void dress();
};

}  // namespace sorvan::views
