// The frame round what would take what is being dragged.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

// Lies over its parent while it is shown; the pointer goes through it. Main thread.
class DropFrame final : public QWidget {
  Q_OBJECT

 public:
  explicit DropFrame(QWidget* parent);
  // Over all of the parent.
  void open();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace sorvan::views
