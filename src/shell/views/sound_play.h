// A sound that plays in its cell.
#pragma once

#include <QPointer>

#include "media/player.h"
#include "shell/views/media_wall.h"

namespace sorvan::views {

// Plays the sound whose badge is pressed, once, with a playhead over its wave; a second press, another sound or its end
// stops it. It goes on while the pointer is elsewhere. Main thread.
class SoundPlay final : public QObject, public CellOverlay {
  Q_OBJECT

 public:
  // The source outlives it; the wall may go first.
  SoundPlay(MediaWall& wall, WallSource& source, QObject* parent = nullptr);
  ~SoundPlay() override;

  QUuid cell() const override { return sound_; }
  void paint(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) override;
  media::Player& player() { return player_; }
  // The file is let go of at once.
  void stop();

 private:
  void toggle(QUuid sound);
  void repaint();

  QPointer<MediaWall> wall_;  // may go first
  WallSource& source_;
  media::Player player_;
  QUuid sound_;  // null while none plays
};

}  // namespace sorvan::views
