#include "shell/views/step_view.h"

#include <algorithm>

namespace sorvan::views {

namespace {

constexpr double kLeastZoom = 1.0 / 16;
constexpr double kPercent = 100;

// A picture that is no larger than its pane stands in the middle; a larger one always covers the middle.
double heldCentre(double centre, double shown, double room) {
  if (shown <= room) return 0.5;
  const double half = room / shown / 2;
  return std::clamp(centre, half, 1 - half);
}

QPointF heldCentre(QPointF centre, QSizeF shown, QSizeF pane) {
  return {heldCentre(centre.x(), shown.width(), pane.width()), heldCentre(centre.y(), shown.height(), pane.height())};
}

}  // namespace

double StepView::fitScale(QSizeF picture, QSizeF pane) {
  if (picture.isEmpty() || pane.isEmpty()) return 1;
  return std::min(pane.width() / picture.width(), pane.height() / picture.height());
}

QRectF StepView::placeOf(QSizeF picture, QSizeF pane) const {
  const QSizeF shown = picture * fitScale(picture, pane) * zoom;
  const QPointF held = heldCentre(centre, shown, pane);
  return {QPointF(pane.width() / 2 - held.x() * shown.width(), pane.height() / 2 - held.y() * shown.height()), shown};
}

StepView StepView::zoomedAt(QPointF point, double factor, QSizeF picture, QSizeF pane) const {
  const QRectF before = placeOf(picture, pane);
  if (before.isEmpty()) return *this;
  const QPointF under((point.x() - before.x()) / before.width(), (point.y() - before.y()) / before.height());
  StepView after = *this;
  after.zoom = std::clamp(zoom * factor, kLeastZoom, mostZoom);
  const QSizeF shown = before.size() * (after.zoom / zoom);
  after.centre = QPointF(under.x() - (point.x() - pane.width() / 2) / shown.width(),
                         under.y() - (point.y() - pane.height() / 2) / shown.height());
  after.centre = heldCentre(after.centre, shown, pane);
  return after;
}

StepView StepView::pannedBy(QPointF pixels, QSizeF picture, QSizeF pane) const {
  const QSizeF shown = placeOf(picture, pane).size();
  if (shown.isEmpty()) return *this;
  StepView after = *this;
  after.centre = heldCentre(heldCentre(centre, shown, pane) -
                                QPointF(pixels.x() / shown.width(), pixels.y() / shown.height()),
                            shown, pane);
  return after;
}

StepView StepView::atFullSize(QSizeF picture, QSizeF pane, double pixelRatio) const {
  StepView after = *this;
  after.zoom = std::clamp(1 / pixelRatio / fitScale(picture, pane), kLeastZoom, mostZoom);
  return after;
}

double StepView::percent(QSizeF picture, QSizeF pane, double pixelRatio) const {
  return kPercent * zoom * fitScale(picture, pane) * pixelRatio;
}

}  // namespace sorvan::views
