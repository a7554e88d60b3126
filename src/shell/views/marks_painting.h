// How a marked area looks: red with a dark line around it, so that it holds on any picture, and its number.
#pragma once

#include <QPainter>
#include <QRectF>

#include "shell/views/room.h"

namespace sorvan::views {

// The box around an area in device independent pixels; `dashed` while it is being drawn.
void paintMarkBox(QPainter& painter, const QRectF& area, bool dashed = false);

// The number at the box's upper left corner, 20 pixels high; smaller where the box is small on the screen.
void paintMarkNumber(QPainter& painter, const QRectF& area, int number);

// A number on its own, in a list.
void paintMarkBadge(QPainter& painter, const QRectF& place, int number);

// Words on a dark plate with its upper left corner there, pushed into `bounds`. Answers the plate.
QRectF paintMarkLabel(QPainter& painter, QPointF corner, const QString& text, const QFont& font, const QRectF& bounds);

}  // namespace sorvan::views
