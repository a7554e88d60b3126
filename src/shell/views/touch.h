// How a control answers the pointer, over whatever ground it has.
#pragma once

#include <QAbstractButton>
#include <QPainter>

#include "shell/views/room.h"

namespace sorvan::views {

// A light shade while the pointer is on the button, a stronger one while it is pressed, none while it is disabled.
void paintTouch(QPainter& painter, const QRectF& area, double radius, const QAbstractButton& button);

}  // namespace sorvan::views
