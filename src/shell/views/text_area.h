// A field of several lines.
#pragma once

#include <QTextEdit>

#include "shell/views/room.h"

namespace sorvan::views {

// Plain text in the frame of a field of one line; Tab leaves it. It draws its focus itself. Main thread.
class TextArea final : public QTextEdit {
  Q_OBJECT

 public:
  explicit TextArea(const QString& name, const QString& placeholder = {}, QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void dress();
};

}  // namespace sorvan::views
