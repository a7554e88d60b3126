// One cell of a wall, from its state to its strokes.
#pragma once

#include <QPainter>

#include <optional>

#include "shell/gallery_presenter.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// What the pointer is over inside a cell.
enum class CellPart { none, body, selectCircle, heart, more, play, action, details, dismiss };

struct CellLook {
  bool selected = false;
  bool several = false;  // one of several selected cells
  bool keyboardCurrent = false;
  bool hovered = false;
  CellPart hoveredPart = CellPart::none;
  std::optional<double> played;  // the share of a sound that was heard, while it plays in its cell
  ThumbnailStore::Answer thumbnail;
};

void paintMediaCell(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look);

// The selection ring and the keyboard's ring, which reach over the cell's edge.
void paintCellRings(QPainter& painter, const QRect& area, const CellLook& look);

// Where the parts of the cell lie that can be pressed.
CellPart partAt(const QRect& area, const GalleryCell& cell, QPoint point);

// A dark badge over a picture; answers its rectangle. `corner` is the corner of the cell that it keeps to.
QRect paintPictureBadge(QPainter& painter, const QRect& cell, Qt::Corner corner, const QString& iconName,
                        const QString& text, const QColor& dot = {});

}  // namespace sorvan::views
