// What stands where rows would stand, when there are none.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class IconView;
class Label;
class Paragraph;

// An icon, a title, a sentence and at most one button, centred.
class EmptyNote final : public QWidget {
  Q_OBJECT

 public:
  explicit EmptyNote(QWidget* parent = nullptr);

  struct Words {
    QString iconName;
    QString title;
    QString text;
    QString button;  // empty: none
  };
  void setWords(const Words& words);

 Q_SIGNALS:
  void pressed();

 private:
  IconView* icon_;
  Label* title_;
  Paragraph* text_;
  Button* button_;
};

}  // namespace sorvan::views
