// One item large, with its neighbours below.
#pragma once

#include <QWidget>

#include "shell/views/thumbnail_store.h"
#include "shell/views/wall_source.h"

namespace sorvan::shell {
class MarkingPresenter;
}

namespace sorvan::views {

class ElidedLabel;
class MarkBar;
class MarkLayer;

// A picture that fits its place or is looked at closely: the wheel with Ctrl zooms at the pointer, a drag moves it.
class PictureCanvas final : public QWidget {
  Q_OBJECT

 public:
  explicit PictureCanvas(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // Shows the file; the second path (a thumbnail) stands in until it is read, or for what is no picture.
  void setPicture(const QString& path, const QString& standIn, const QString& accessibleName);
  bool isFitted() const { return zoom_ <= 0; }
  void toggleFit();
  // Where the picture lies in the canvas; empty while there is none.
  QRectF picturePlace() const;
  // Moves the picture by so many logical pixels; one that is fitted stays.
  void panBy(QPointF pixels);

 Q_SIGNALS:
  void zoomChanged();
  // The picture lies elsewhere or in another size now.
  void viewChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPixmap current() const;
  double fitScale(const QSizeF& picture) const;
  QRectF placeOf(const QSizeF& picture) const;
  void viewMoved();
  void zoomAt(QPointF point, double factor);

  ThumbnailStore& thumbnails_;
  QString path_;
  QString standIn_;
  double zoom_ = 0;  // logical pixels for a pixel of the picture; 0 fits
  QPointF centre_;   // what part of the picture is in the middle, 0 to 1
  QPointF dragFrom_;
};

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

 private:
  struct Place {
    int index;
    QRect area;
  };
  // The pictures that fit, with the current one in the middle.
  std::vector<Place> places() const;

  WallSource& source_;
  ThumbnailStore& thumbnails_;
  QUuid current_;
};

class AssetView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the view.
  AssetView(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // Lets areas be marked on the picture. The presenter outlives the view; called once.
  void setMarking(MarkingPresenter& marking);
  MarkLayer* marks() const { return marks_; }

  void show(QUuid item);
  QUuid item() const { return item_; }
  // The next item in that direction, jobs left out; null at the end.
  QUuid neighbour(int direction) const;

 Q_SIGNALS:
  void stepRequested(int direction);
  void itemChosen(QUuid item);
  void closeRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void refresh();
  void refreshMarking(const MarkingPresenter& marking);
  void placeBar();

  WallSource& source_;
  PictureCanvas* canvas_;
  MarkLayer* marks_ = nullptr;
  MarkBar* bar_ = nullptr;
  Filmstrip* filmstrip_;
  ElidedLabel* facts_;
  ElidedLabel* place_;
  QUuid item_;
};

}  // namespace sorvan::views
