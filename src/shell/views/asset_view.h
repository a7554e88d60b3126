// One item large, with its neighbours below.
#pragma once

#include <QWidget>

#include "shell/actions.h"
#include "shell/views/picture_canvas.h"
#include "shell/views/player_view.h"
#include "shell/views/wall_source.h"

class QStackedLayout;

namespace sorvan::shell {
class MarkingPresenter;
}

namespace sorvan::views {

class ElidedLabel;
class MarkBar;
class MarkLayer;

// The row of small pictures; a press chooses.
class Filmstrip final : public QWidget {
  Q_OBJECT

 public:
  Filmstrip(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void setCurrent(QUuid id);

 Q_SIGNALS:
  void chosen(QUuid id);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  struct Place {
    int index;
    QRect area;
  };
  // The pictures that fit, with the current one in the middle.
  std::vector<Place> places() const;
  void hoverOver(QUuid item);

  WallSource& source_;
  ThumbnailStore& thumbnails_;
  QUuid current_;
  QUuid hovered_;
};

class AssetView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the view.
  AssetView(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // Lets areas be marked on the picture. The presenter outlives the view; called once.
  void setMarking(MarkingPresenter& marking);
  MarkLayer* marks() const { return marks_; }

  // A clip or sound opens with its first picture, or playing.
  void show(QUuid item, Begin begin = Begin::paused);
  QUuid item() const { return item_; }
  PictureCanvas& canvas() { return *canvas_; }
  PlayerView& playerView() { return *player_; }
  bool showsPlayer() const;
  // A clip with pictures is open.
  bool showsClip() const;
  // Only what is looked at, with its controls.
  void setImmersed(bool immersed);
  // Zooms or plays. False when the action is none of those.
  bool perform(ActionId action);
  // The next item in that direction, jobs left out; null at the end.
  QUuid neighbour(int direction) const;

 Q_SIGNALS:
  void stepRequested(int direction);
  void itemChosen(QUuid item);
  void closeRequested();
  // The menu of the item that is shown.
  void menuRequested(QPoint globalPosition);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  bool performOnPicture(ActionId action);
  bool performOnPlayer(ActionId action);
  void showMedia(const GalleryCell& cell);
  void refresh();
  void refreshFacts();
  void refreshMarking(const MarkingPresenter& marking);
  void placeBar();

  WallSource& source_;
  PictureCanvas* canvas_;
  PlayerView* player_;
  QStackedLayout* media_;
  MarkLayer* marks_ = nullptr;
  MarkBar* bar_ = nullptr;
  Filmstrip* filmstrip_;
  ElidedLabel* facts_;
  ElidedLabel* place_;
  QWidget* words_;  // facts and place
  QUuid item_;
};

}  // namespace sorvan::views
