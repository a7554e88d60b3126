// Where several pictures are looked at in step.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include "shell/views/room.h"

namespace sorvan::views {

// One zoom and one place for all pictures: the same part of each is in the middle of its pane, however large each is.
// Values in, values out.
struct StepView {
  double zoom = 1;              // times the size at which a picture fits its pane
  QPointF centre{0.5, 0.5};     // what part of a picture is in the middle of its pane, 0 to 1

  static constexpr double mostZoom = 64;

  bool isFitted() const { return zoom == 1; }
  // Logical pixels for a pixel of the picture at which it fits the pane.
  static double fitScale(QSizeF picture, QSizeF pane);
  // Where the picture lies in the pane.
  QRectF placeOf(QSizeF picture, QSizeF pane) const;
  // What lies under `point` of the pane stays there, in all panes.
  StepView zoomedAt(QPointF point, double factor, QSizeF picture, QSizeF pane) const;
  // Moves the pictures by so many logical pixels of this pane; what fits stays in the middle.
  StepView pannedBy(QPointF pixels, QSizeF picture, QSizeF pane) const;
  // One pixel of this picture on one pixel of the screen.
  StepView atFullSize(QSizeF picture, QSizeF pane, double pixelRatio) const;
  // Pixels of the screen for a pixel of the picture, in percent.
  double percent(QSizeF picture, QSizeF pane, double pixelRatio) const;

  bool operator==(const StepView&) const = default;
};

}  // namespace sorvan::views
