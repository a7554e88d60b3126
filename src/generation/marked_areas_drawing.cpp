#include <QGuiApplication>
#include <QPainter>

#include <algorithm>

#include "base/sorvan_error.h"
#include "generation/marked_areas_pictures.h"
#include "generation/texts.h"
#include "platform/pictures.h"

namespace sorvan::generation {
namespace {

constexpr int longestEdge = 4096;  // pixels

/// Lengths in pixels that follow from the picture's longer side.
struct Strokes {
  explicit Strokes(QSize picture) {
    const double longest = std::max(picture.width(), picture.height());
    line = std::max(3.0, longest / 250);
    badge = std::max(22.0, longest / 32);
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans")});
    font.setStyleHint(QFont::SansSerif);
    font.setBold(true);
    font.setPixelSize(static_cast<int>(badge * 0.7));
  }
  double line = 0;
  double badge = 0;
  QFont font;
};

QColor red() { return QColor::fromRgbF(0.93F, 0.11F, 0.14F); }

void drawBox(QPainter& painter, const QRectF& box, const QString& number, const Strokes& strokes) {
  painter.setPen(QPen(red(), strokes.line, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(box);
  const double width = std::max(strokes.badge, painter.fontMetrics().horizontalAdvance(number) + strokes.badge * 0.4);
  const QRectF badge(box.topLeft(), QSizeF(width, strokes.badge));
  painter.fillRect(badge, red());
  painter.setPen(Qt::white);
  painter.drawText(badge, Qt::AlignCenter, number);
}

void drawBoxes(QImage& picture, const std::vector<MarkupBox>& boxes) {
  const Strokes strokes(picture.size());
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(strokes.font);
  for (size_t i = 0; i < boxes.size(); ++i)
    if (const auto box = pixelsOf(boxes[i], picture.size())) drawBox(painter, *box, QString::number(i + 1), strokes);
}

QImage decodedToDraw(const QString& path) {
  try {
    return decodeWithin(path, longestEdge);
  } catch (const SorvanError&) {
    throw SorvanError(texts::markedImageUnreadable());
  }
}

}  // namespace

QByteArray annotatedPicture(const QString& path, const std::vector<MarkupBox>& boxes) {
  QImage picture = decodedToDraw(path);
  // Without the fonts of a graphical program the numbers could not be drawn.
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
    throw SorvanError(texts::marksCannotBePrepared());
  drawBoxes(picture, boxes);
  try {
    return encodePng(picture);
  } catch (const SorvanError&) {
    throw SorvanError(texts::marksCannotBePrepared());
  }
}

}  // namespace sorvan::generation
