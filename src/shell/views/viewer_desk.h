// What a window does to look at media closely: the large view, hover play and quick look.
#pragma once

#include <QTimer>

#include "shell/actions.h"
#include "shell/presenters.h"
#include "shell/views/hover_play.h"
#include "shell/views/ordered_items.h"
#include "shell/views/quick_look.h"
#include "shell/views/sound_play.h"

namespace sorvan::views {

class LibraryView;

// Binds the presenters to those views. Everything passed in outlives it. Main thread.
class ViewerDesk final : public QObject {
  Q_OBJECT

 public:
  ViewerDesk(Presenters presenters, WallSource& source, LibraryView& library, QObject* parent = nullptr);

  // False when the action belongs to somebody else.
  bool perform(ActionId action);
  QuickLook& quickLook() { return *look_; }

 Q_SIGNALS:
  void openRequested(QUuid item);

 private:
  void bindVolume();
  void bindQuickLook();
  void look();
  void openSelected();
  void openItem(QUuid item);
  void refresh();
  media::Player& player();

  Presenters on_;
  WallSource& source_;
  LibraryView& library_;
  HoverPlay* hover_;
  SoundPlay* sound_;  // in a cell of the wall
  QuickLook* look_;
  OrderedItems* order_;  // of the page that is looked at
  QTimer volumePause_;  // writes down a volume once it stays
};

}  // namespace sorvan::views
