// Where marks lie on the pixel grid of a picture, and which patch around them a model can edit at full quality.
//
// Pure functions; any thread. Boxes are fractions of the upright picture, counted from its top left. Edges that the
// arithmetic missed by less than a millionth of a pixel are taken for the pixel edge that was meant.
#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// A rectangle of the original, in pixels, that is sent instead of the whole picture.
struct MarkedPatch {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  QString size;  ///< the size text that is asked for, such as "1024x1024"

  QRect rect() const { return {x, y, width, height}; }
  bool operator==(const MarkedPatch&) const = default;
};
BOOST_DESCRIBE_STRUCT(MarkedPatch, (), (x, y, width, height, size))

/// How a marked picture was sent. It is kept beside the job's result, so that the result lands where it was cut from.
struct MarkedRoute {
  int width = 0;                     ///< pixels of the whole original
  int height = 0;                    ///< pixels of the whole original
  std::optional<MarkedPatch> patch;  ///< none when the whole picture was sent, with the boxes drawn on it

  /// The part of the original that the result replaces.
  QRect target() const { return patch ? patch->rect() : QRect(0, 0, width, height); }
  bool operator==(const MarkedRoute&) const = default;
};
BOOST_DESCRIBE_STRUCT(MarkedRoute, (), (width, height, patch))

/// The patch around all boxes that a model with these size texts can edit; none when there are no boxes in the picture
/// or nothing fits.
std::optional<MarkedPatch> planPatch(const std::vector<MarkupBox>& boxes, QSize picture, const QStringList& sizes);

/// The boxes as fractions of a patch of the picture.
std::vector<MarkupBox> boxesInPatch(const std::vector<MarkupBox>& boxes, QSize picture, const QRect& patch);

/// A box in pixels of the picture; its width and height are never negative. None when a number of it is not finite.
std::optional<QRectF> pixelsOf(const MarkupBox& box, QSize picture);

/// The whole pixels that a rectangle touches, as far as they lie on the canvas; empty when there are none.
QRect touchedPixels(const QRectF& rectangle, QSize canvas);

}  // namespace sorvan::generation
