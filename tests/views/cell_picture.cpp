#include "views/cell_picture.h"

#include <QImage>

#include "shell/views/job_cell.h"

namespace sorvan::views {

namespace {
constexpr int kRing = 4;
}

CellPicture::CellPicture(GalleryCell shown, CellLook how, QWidget* parent)
    : QWidget(parent), cell(std::move(shown)), look(std::move(how)) {}

void CellPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = rect().adjusted(kRing, kRing, -kRing, -kRing);
  if (overlay)
    overlay(painter, area);
  else
    paintMediaCell(painter, area, cell, look);
  paintCellRings(painter, area, look);
}

CellLook lookWith(const QString& picture) {
  CellLook look;
  look.thumbnail.state = ThumbnailStore::State::ready;
  look.thumbnail.picture = QPixmap::fromImage(QImage(picture));
  return look;
}

}  // namespace sorvan::views
