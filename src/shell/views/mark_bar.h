// What stands over the picture while areas are marked on it.
#pragma once

#include <QWidget>

#include "shell/marking_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;

// Says what a drag does, clears the marks, and ends marking. Its owner places it.
class MarkBar final : public QWidget {
  Q_OBJECT

 public:
  // The presenter outlives the bar.
  explicit MarkBar(MarkingPresenter& marking, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Button* clear_;
};

}  // namespace sorvan::views
