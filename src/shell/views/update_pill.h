// The news of a newer build, in the strip at the top of the window.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::shell {
class UpdatesPresenter;
}

namespace sorvan::views {

class Label;
class MenuStrip;

// “Sorvan 2.1 is available”, “Download”, “Later”; away while there is nothing new. The presenter outlives it.
class UpdatePill final : public QWidget {
  Q_OBJECT

 public:
  explicit UpdatePill(UpdatesPresenter& updates, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void refresh();

  UpdatesPresenter& updates_;
  Label* text_;
};

// Puts the pill behind the menu bar.
void addUpdatePill(MenuStrip& strip, UpdatesPresenter& updates);

}  // namespace sorvan::views
