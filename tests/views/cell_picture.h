// One cell of a wall, as a widget of its own.
#pragma once

#include <QWidget>

#include "shell/views/media_cell.h"

namespace sorvan::views {

// Paints the cell as a wall does, with what is laid over it. Main thread.
class CellPicture final : public QWidget {
 public:
  CellPicture(GalleryCell cell, CellLook look, QWidget* parent = nullptr);

  GalleryCell cell;
  CellLook look;
  // Paints in place of the cell, inside the rings.
  std::function<void(QPainter& painter, const QRect& area)> overlay;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A look with that picture ready.
CellLook lookWith(const QString& picture);

}  // namespace sorvan::views
