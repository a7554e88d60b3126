#include "shell/views/item_drag.h"

#include <QMimeData>
#include <QPainter>
#include <QWidget>

#include "shell/views/painting.h"

namespace sorvan::views {

namespace {
constexpr QSize kPicture(112, 80);
constexpr QSize kCounter(30, 20);
}  // namespace

bool dragSelectedItems(QWidget& source, TransferPresenter& transfer, const QPixmap& picture,
                       const DragRunner& run) {
  std::unique_ptr<QMimeData> data = transfer.itemsToDrag();
  if (!data) return false;
  auto* drag = new QDrag(&source);  // the drag is deleted by the toolkit when the other side has had everything
  drag->setMimeData(data.release());
  drag->setPixmap(picture);
  drag->setHotSpot(QPoint(-8, -8));
  if (run)
    run(*drag, Qt::CopyAction);
  else
    drag->exec(Qt::CopyAction, Qt::CopyAction);
  return true;
}

QPixmap dragPicture(const QPixmap& thumbnail, qsizetype items, double pixelRatio) {
  const QSize size = thumbnail.isNull() ? kPicture : thumbnail.size().scaled(kPicture, Qt::KeepAspectRatio);
  QPixmap picture(size * pixelRatio);
  picture.setDevicePixelRatio(pixelRatio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  const QRect area(QPoint(), size);
  painter.setOpacity(0.85);
  if (thumbnail.isNull())
    paintPanel(painter, area, metrics().radiusPicture, colors().surfacePlaceholder);
  else
    paintCover(painter, area, metrics().radiusPicture, thumbnail);
  painter.setOpacity(1);
  if (items < 2) return picture;
  const QRect counter(QPoint(area.right() - kCounter.width() - 3, 4), kCounter);
  paintPanel(painter, counter, kCounter.height() / 2.0, colors().accentFill);
  paintText(painter, counter, {QString::number(items), fontFor(Type::caption, Weight::semibold), colors().textOnAccent,
                               Qt::AlignCenter, Qt::ElideNone});
  return picture;
}

}  // namespace sorvan::views
