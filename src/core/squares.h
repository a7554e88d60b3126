// The light grey squares that show through a cut-out.
#pragma once

#include <QImage>

#include "core/room.h"

namespace sorvan::core {

/// Side of one square, pixels: a 28th of the longer side of the picture, or 8 below 224 pixels.
int squareSide(const QSize& picture);

/// The picture laid on squares, counted from the top left: opaque RGB32 of the same size. Null when there is no memory
/// for it. Any thread.
QImage onSquares(const QImage& picture);

}  // namespace sorvan::core
