#include "core/squares.h"

#include <QPainter>

namespace sorvan::core {
namespace {

constexpr int squaresAcross = 28;
constexpr int smallestSquare = 8;
constexpr int smallPicture = squaresAcross * smallestSquare;
constexpr QRgb lightGrey = qRgb(245, 245, 245);  // 0.96
constexpr QRgb darkGrey = qRgb(204, 204, 204);   // 0.8

void paintSquares(QPainter& painter, QSize size, int side) {
  for (int row = 0; row <= size.height() / side; ++row)
    for (int column = 0; column <= size.width() / side; ++column)
      if ((row + column) % 2 == 1) painter.fillRect(column * side, row * side, side, side, QColor(darkGrey));
}

}  // namespace

int squareSide(const QSize& picture) {
  const int longer = std::max(picture.width(), picture.height());
  return longer < smallPicture ? smallestSquare : longer / squaresAcross;
}

QImage onSquares(const QImage& picture) {
  QImage result(picture.size(), QImage::Format_RGB32);
  if (result.isNull()) return result;
  result.fill(lightGrey);
  QPainter painter(&result);
  paintSquares(painter, picture.size(), squareSide(picture.size()));
  painter.drawImage(QRect(QPoint(), picture.size()), picture);
  return result;
}

}  // namespace sorvan::core
