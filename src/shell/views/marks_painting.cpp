#include "shell/views/marks_painting.h"

#include "shell/views/painting.h"

namespace sorvan::views {

namespace {

constexpr double kBadgeHeight = 20;
constexpr double kBadgeWidth = 20;
constexpr double kLabelPadding = 5;
constexpr double kLabelHeight = 20;
constexpr double kLongestLabel = 300;
constexpr double kDash = 3;

QColor outline() { return colors().pictureBadge; }

}  // namespace

void paintMarkBox(QPainter& painter, const QRectF& area, bool dashed) {
  const double line = metrics().borderMark;
  const QRectF snapped(std::round(area.x()), std::round(area.y()), std::round(area.width()), std::round(area.height()));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(outline(), line + 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(snapped);
  QPen red(colors().mark, line, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
  if (dashed) red.setDashPattern({kDash, kDash});
  painter.setPen(red);
  painter.drawRect(snapped);
  painter.restore();
}

void paintMarkNumber(QPainter& painter, const QRectF& area, int number) {
  const QString text = QString::number(number);
  const QFont font = fontFor(Type::small, Weight::semibold);
  const double width = std::max(kBadgeWidth, textWidth(text, font) + 10.0);
  const double half = metrics().borderMark / 2.0;
  const QRectF plate(std::round(area.x()) - half, std::round(area.y()) - half, width, kBadgeHeight);
  painter.fillRect(plate, colors().mark);
  paintText(painter, plate.toRect(), {text, font, Qt::white, Qt::AlignCenter});
}

void paintMarkBadge(QPainter& painter, const QRectF& place, int number) {
  paintPanel(painter, place, metrics().radiusSmall, colors().mark);
  paintText(painter, place.toRect(),
            {QString::number(number), fontFor(Type::caption, Weight::semibold), Qt::white, Qt::AlignCenter});
}

QRectF paintMarkLabel(QPainter& painter, QPointF corner, const QString& text, const QFont& font, const QRectF& bounds) {
  const double most = std::max(kLabelHeight, std::min(kLongestLabel, bounds.width()));
  const double width = std::min<double>(most, textWidth(text, font) + 2 * kLabelPadding + 1);
  QRectF plate(corner, QSizeF(width, kLabelHeight));
  plate.moveLeft(std::clamp(plate.left(), bounds.left(), std::max(bounds.left(), bounds.right() - width)));
  plate.moveTop(std::clamp(plate.top(), bounds.top(), std::max(bounds.top(), bounds.bottom() - kLabelHeight)));
  paintPanel(painter, plate, metrics().radiusSmall, colors().pictureBadge);
  paintText(painter, plate.adjusted(kLabelPadding, 0, -kLabelPadding, 0).toRect(),
            {text, font, colors().pictureBadgeText, Qt::AlignLeft | Qt::AlignVCenter});
  return plate;
}

}  // namespace sorvan::views
