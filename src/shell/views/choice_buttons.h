// Buttons of which one is on: in the popovers behind the composer's chips and in its settings strip.
#pragma once

#include <QAbstractButton>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

class QPainter;

namespace sorvan::views {

// Answers Enter like Space, which a plain button would not.
class ChoiceButton : public QAbstractButton {
  Q_OBJECT

 public:
  ChoiceButton(const QString& name, bool chosen, QWidget* parent = nullptr);
  // Also where none of its neighbours is on.
  void setChosen(bool chosen);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintGround(QPainter& painter) const;
};

// A ratio drawn to scale above its name.
class RatioButton final : public ChoiceButton {
  Q_OBJECT

 public:
  RatioButton(const RatioChoice& ratio, QSize size, QWidget* parent = nullptr);
  QSize sizeHint() const override { return size_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor ink() const;

  RatioChoice ratio_;
  QSize size_;
};

}  // namespace sorvan::views
