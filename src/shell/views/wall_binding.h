// What people do on the gallery's wall, bound to the presenters.
#pragma once

#include <QObject>

#include "shell/presenters.h"
#include "shell/views/room.h"

namespace sorvan::views {

class MediaWall;

// Both outlive it. What only a window can do (opening an item, a menu) stays with the window.
class WallBinding final : public QObject {
  Q_OBJECT

 public:
  WallBinding(MediaWall& wall, Presenters presenters, QObject* parent);

 private:
  void drag();

  MediaWall& wall_;
  Presenters on_;
};

}  // namespace sorvan::views
