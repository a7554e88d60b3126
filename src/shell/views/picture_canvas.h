// A picture that fits its place or is looked at closely.
#pragma once

#include <QWidget>

#include "shell/views/large_picture.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// The wheel with Ctrl zooms at the pointer, a drag moves the picture, a double click goes to its own pixels and back.
// At 100 % a pixel of the picture is a pixel of the screen. A preview stands in until the full picture is read, which
// happens only when somebody looks closer than the preview can show.
class PictureCanvas final : public QWidget {
  Q_OBJECT

 public:
  explicit PictureCanvas(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // Shows the file; the second path (a thumbnail) stands in until it is read, or for what is no picture.
  void setPicture(const QString& path, const QString& standIn, const QString& accessibleName);
  // Whether it is for a picture at all; clips and sounds have a view of their own.
  bool hasPicture() const { return !path_.isEmpty(); }
  bool isFitted() const { return zoom_ <= 0; }
  void toggleFit();
  void fit();
  // Between the steps 5, 10, 25, 50, 100 … 800 percent.
  void zoomIn() { zoomStep(+1); }
  void zoomOut() { zoomStep(-1); }
  // Whether there is a larger or a smaller step.
  bool canZoomIn() const;
  bool canZoomOut() const;
  // Pixels of the screen for a pixel of the picture, in percent; 0 while nothing is known about it.
  int percent() const;
  // What stands in the picture's place; empty while there is something to see.
  QString problem() const;
  // Where the picture lies in the canvas; empty while there is none.
  QRectF picturePlace() const;
  // Moves the picture by so many logical pixels; one that is fitted stays.
  void panBy(QPointF pixels);
  // Of the file; empty until its head is read.
  QSize pixels() const { return file_.state() == LargePicture::State::ready ? file_.size() : QSize(); }
  // The pixels of the file are what is painted, not the preview.
  bool showsFullSize() const;

 Q_SIGNALS:
  void zoomChanged();
  // The picture lies elsewhere or in another size now.
  void viewChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPixmap preview() const;
  QSizeF pictureSize() const;
  double scale() const;
  double fitScale() const;
  void zoomStep(int direction);
  void setZoom(double zoom, QPointF point);
  void zoomAt(QPointF point, double factor) { setZoom(scale() * factor, point); }
  void viewMoved();
  void changed();
  void keepInside();
  void showCursor();
  void paintProblem(QPainter& painter) const;
  void paintPixels(QPainter& painter, const QRectF& place) const;

  ThumbnailStore& thumbnails_;
  LargePicture file_;
  QString path_;
  QString standIn_;
  double zoom_ = 0;  // logical pixels for a pixel of the picture; 0 fits
  QPointF centre_;   // what part of the picture is in the middle, 0 to 1
  QPointF dragFrom_;
};

}  // namespace sorvan::views
