// The line under the toolbar that stays while it is true.
#pragma once

#include <QWidget>

#include "shell/views/room.h"
#include "shell/window_presenter.h"

namespace sorvan::views {

class Button;
class IconView;
class Paragraph;

class BannerBar final : public QWidget {
  Q_OBJECT

 public:
  explicit BannerBar(QWidget* parent = nullptr);
  // An empty text hides it.
  void show(const Banner& banner);

 Q_SIGNALS:
  void actionRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  IconView* icon_;
  Paragraph* text_;
  Button* action_;
  bool warns_ = true;
};

}  // namespace sorvan::views
