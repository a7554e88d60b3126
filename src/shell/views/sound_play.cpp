#include "shell/views/sound_play.h"

#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

SoundPlay::SoundPlay(MediaWall& wall, WallSource& source, QObject* parent)
    : QObject(parent), wall_(&wall), source_(source) {
  connect(&wall, &MediaWall::playPressed, this, &SoundPlay::toggle);
  connect(&source_, &WallSource::layoutChanged, this, [this] {
    if (!sound_.isNull() && source_.indexOf(sound_) < 0) stop();
  });
  connect(&player_, &media::Player::positionChanged, this, &SoundPlay::repaint);
  connect(&player_, &media::Player::ended, this, &SoundPlay::stop, Qt::QueuedConnection);
  connect(&player_, &media::Player::stateChanged, this, [this] {
    if (player_.state() == media::PlayerState::failed) stop();
  });
  wall.addOverlay(this);
}

SoundPlay::~SoundPlay() {
  if (wall_) wall_->removeOverlay(this);
}

void SoundPlay::repaint() {
  if (wall_ && !sound_.isNull()) wall_->updateCell(sound_);
}

void SoundPlay::stop() {
  player_.close();
  const QUuid left = std::exchange(sound_, QUuid());
  if (wall_ && !left.isNull()) wall_->updateCell(left);
}

void SoundPlay::toggle(QUuid sound) {
  const bool same = sound == sound_;
  stop();
  const int index = same ? -1 : source_.indexOf(sound);
  if (index < 0) return;
  sound_ = sound;
  player_.open(source_.cellAt(index).filePath);
  player_.play();
  repaint();
}

void SoundPlay::paint(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) {
  GalleryCell playing = cell;
  CellLook how = look;
  const double whole = player_.duration();
  how.played = whole > 0 ? player_.position() / whole : 0;
  if (whole > 0) playing.durationText = clockText(player_.position()) + u" / "_s + clockText(whole);
  paintMediaCell(painter, area, playing, how);
}

}  // namespace sorvan::views
