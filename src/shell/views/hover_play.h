// A clip that plays under the pointer.
#pragma once

#include <QPointer>
#include <QTimer>

#include "media/player.h"
#include "shell/views/media_wall.h"

namespace sorvan::views {

// Plays the clip on which the pointer rests, muted and over and over, in place of its picture; one at a time, and none
// while the desktop asks for less motion. Main thread.
class HoverPlay final : public QObject, public CellOverlay {
  Q_OBJECT

 public:
  // The source outlives it; the wall may go first.
  HoverPlay(MediaWall& wall, WallSource& source, QObject* parent = nullptr);
  ~HoverPlay() override;

  QUuid cell() const override;
  void paint(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) override;
  media::Player& player() { return player_; }
  // The file is let go of at once.
  void stop();

 private:
  void follow(QUuid cell, QRect area);
  void begin();

  QPointer<MediaWall> wall_;  // may go first
  WallSource& source_;
  media::Player player_;
  QTimer delay_;
  QUuid hovered_;
  QSize area_;
};

}  // namespace sorvan::views
