#include "torture/marked_picture.h"

#include <QImage>
#include <QRectF>
#include <vector>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

std::vector<QRect> pixelsOf(const QJsonArray& boxes, QSize size) {
  std::vector<QRect> areas;
  for (const QJsonValue& box : boxes)
    areas.push_back(QRectF(box[0].toDouble() * size.width(), box[1].toDouble() * size.height(),
                           box[2].toDouble() * size.width(), box[3].toDouble() * size.height())
                        .toAlignedRect());
  return areas;
}

bool isInside(const std::vector<QRect>& areas, int x, int y) {
  return std::any_of(areas.begin(), areas.end(), [=](const QRect& area) { return area.contains(x, y); });
}

}  // namespace

QString faultOfMarkedPicture(const QString& file, const QString& original, const QJsonArray& boxes) {
  const QImage result = QImage(file).convertToFormat(QImage::Format_ARGB32);
  const QImage before = QImage(original).convertToFormat(QImage::Format_ARGB32);
  if (result.isNull() || before.isNull()) return u"it cannot be read"_s;
  if (result.size() != before.size()) return u"it has another size"_s;
  const std::vector<QRect> areas = pixelsOf(boxes, before.size());
  bool changed = false;
  for (int y = 0; y < before.height(); ++y)
    for (int x = 0; x < before.width(); ++x) {
      const bool same = result.pixel(x, y) == before.pixel(x, y);
      if (!same && !isInside(areas, x, y)) return u"it differs outside the marks"_s;
      changed = changed || !same;
    }
  return changed ? QString() : u"nothing in it changed"_s;
}

}  // namespace sorvan::torture
