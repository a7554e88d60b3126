#include "shell/views/hover_play.h"

#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr std::chrono::milliseconds kDelay{150};
constexpr int kLine = 3;  // pixels of the progress line
}  // namespace

HoverPlay::HoverPlay(MediaWall& wall, WallSource& source, QObject* parent)
    : QObject(parent), wall_(&wall), source_(source) {
  player_.setMuted(true);
  player_.setLooping(true);
  delay_.setSingleShot(true);
  delay_.setInterval(kDelay);
  connect(&delay_, &QTimer::timeout, this, &HoverPlay::begin);
  connect(&wall, &MediaWall::cellHovered, this, &HoverPlay::follow);
  connect(&source_, &WallSource::layoutChanged, this, [this] {
    if (source_.indexOf(hovered_) < 0) stop();
  });
  connect(&player_, &media::Player::frameChanged, this, [this] { if (wall_) wall_->updateCell(hovered_); });
  wall.addOverlay(this);
}

HoverPlay::~HoverPlay() {
  if (wall_) wall_->removeOverlay(this);
}

QUuid HoverPlay::cell() const { return player_.frame().isNull() ? QUuid() : hovered_; }

void HoverPlay::follow(QUuid cell, QRect area) {
  if (cell == hovered_) return;
  stop();
  if (Theme::instance().reducedMotion()) return;
  hovered_ = cell;
  area_ = area.size();
  if (!cell.isNull()) delay_.start();
}

void HoverPlay::stop() {
  delay_.stop();
  player_.close();
  if (const QUuid left = std::exchange(hovered_, QUuid()); wall_ && !left.isNull())
    wall_->updateCell(left);
}

void HoverPlay::begin() {
  const int index = source_.indexOf(hovered_);
  if (index < 0) return;
  const GalleryCell cell = source_.cellAt(index);
  if (cell.kind != CellKind::video) return;
  player_.setFrameSize(area_ * wall_->devicePixelRatioF());
  player_.open(cell.filePath);
  player_.play();
}

void HoverPlay::paint(QPainter& painter, const QRect& area, const GalleryCell&, const CellLook&) {
  paintCover(painter, area, metrics().radiusPicture, QPixmap::fromImage(player_.frame()));
  paintPictureBadge(painter, area, Qt::BottomLeftCorner, u"volume-x"_s, {});
  const QString time = clockText(player_.position()) + u" / "_s + clockText(player_.duration());
  paintPictureBadge(painter, area, Qt::BottomRightCorner, {}, time);
  if (player_.duration() <= 0) return;
  const double share = std::min(1.0, player_.position() / player_.duration());
  painter.fillRect(QRectF(area.left(), area.bottom() + 1 - kLine, area.width() * share, kLine),
                   colors().pictureBadgeText);
}

}  // namespace sorvan::views
