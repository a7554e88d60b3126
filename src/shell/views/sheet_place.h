// One place of a contact sheet: its picture or its work, and what can be done with it.
#pragma once

#include <QAbstractButton>

#include "shell/sheet_display.h"
#include "shell/views/thumbnail_store.h"

class QBoxLayout;
class QVariantAnimation;

namespace sorvan::media {
class Player;
}

namespace sorvan::views {

class Button;
class ElidedLabel;
class HeartButton;
class IconButton;
class StarRow;

// The picture of a place, whole, on a dark ground; or how the work on it goes. A press selects.
class PlacePicture final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit PlacePicture(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  ~PlacePicture() override;

  void show(const PlaceDisplay& place);
  using QWidget::show;
  void setSelected(bool selected);
  // A clip plays muted, over and over; a place without one does nothing.
  void setPlaying(bool playing);
  bool isPlaying() const { return player_ != nullptr; }
  // Null while nothing plays here.
  const media::Player* player() const { return player_.get(); }
  // What it shows now, of any size; null while that is being read.
  QPixmap picture();
  // What follows of a press and a drag is not for this place any more.
  void endDrag();

 Q_SIGNALS:
  void selectRequested(Qt::KeyboardModifiers modifiers);
  void opened();
  void jobActionRequested();
  void menuRequested(QPoint globalPosition);
  // The picture is being dragged to another place.
  void dragged(QPoint globalPosition);
  void dropped(QPoint globalPosition);
  // The picture is being dragged, and has no other place here to go to.
  void draggedOut();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  ThumbnailStore::Answer largePicture() const;
  void paintItem(QPainter& painter, const QRect& area);
  void paintWork(QPainter& painter, const QRect& area);
  void paintNumber(QPainter& painter, const QRect& area) const;
  void paintBadges(QPainter& painter, const QRect& area);
  void land();
  void placeAction();

  ThumbnailStore& thumbnails_;
  PlaceDisplay place_;
  std::unique_ptr<media::Player> player_;
  Button* action_;  // Cancel, Retry, Save Result
  QTimer motion_;
  QVariantAnimation* landing_;
  bool selected_ = false;
  bool pressed_ = false;
  bool dragging_ = false;
  QPoint pressedAt_;
};

// The place with its words and marks below the picture.
class SheetPlace final : public QWidget {
  Q_OBJECT

 public:
  explicit SheetPlace(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const PlaceDisplay& place);
  using QWidget::show;
  const PlaceDisplay& place() const { return place_; }
  PlacePicture& picture() { return *picture_; }
  // What a place of this width takes below its picture, in pixels: a narrow one has its marks below its words.
  static int wordsHeight(int width);

 Q_SIGNALS:
  void ratingChosen(int stars);
  void favoriteToggled();
  void reviewToggled();
  void removeRequested();
  void moreRequested(QPoint globalPosition);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* buildFoot();

  PlaceDisplay place_;
  PlacePicture* picture_;
  ElidedLabel* model_;
  ElidedLabel* facts_;
  StarRow* stars_;
  HeartButton* heart_;
  IconButton* review_;
  IconButton* remove_;
  IconButton* more_;
  QBoxLayout* foot_ = nullptr;  // the words, and the marks beside or below them
};

}  // namespace sorvan::views
