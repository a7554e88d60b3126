// Asks for one text: a name, or a few lines.
#pragma once

#include <QDialog>

#include "shell/views/room.h"

class QLineEdit;
class QTextEdit;

namespace sorvan::views {

enum class TextSize { line, lines };

// Deletes itself when it is closed.
class TextDialog final : public QDialog {
  Q_OBJECT

 public:
  // `name` is what assistive technology calls the field, `verb` the button that accepts.
  TextDialog(const QString& title, const QString& name, const QString& verb, QWidget* parent,
             TextSize size = TextSize::line);

  void setText(const QString& text);
  QString text() const;

 Q_SIGNALS:
  // The person has accepted; a line that is blank is not accepted.
  void written(const QString& text);

 private:
  void accept() override;

  QLineEdit* line_ = nullptr;
  QTextEdit* lines_ = nullptr;
};

}  // namespace sorvan::views
