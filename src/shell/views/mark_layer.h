// The boxes over a picture: drawn, moved, resized and removed with the mouse or with keys.
#pragma once

#include <QWidget>

#include "shell/marking_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class PictureCanvas;

// Lies over a canvas while areas are marked on its picture. A drag on the picture draws a box, a press on a box selects
// it and a drag moves it, its eight handles resize it. Arrows move by a pixel of the picture (with Shift by ten),
// with Ctrl they resize, Tab goes from box to box, Delete removes, Ctrl+Z and Ctrl+Shift+Z step back and forth, Enter
// is done, Escape gives up a drag or leaves. To assistive technology it is a list of boxes.
class MarkLayer final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the layer; the canvas is its parent.
  MarkLayer(MarkingPresenter& marking, PictureCanvas& canvas);

  // Where a box stands, in the layer's coordinates.
  QRectF placeOf(int index) const;
  MarkingPresenter& marking() const { return marking_; }

 Q_SIGNALS:
  // Back to the note of this box.
  void noteRequested(int index);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  // What a press took hold of: a new box, a whole one, or some of its edges.
  struct Grip {
    enum class Kind { none, draw, move, resize, pan } kind = Kind::none;
    int index = -1;
    Qt::Edges edges;
  };

  void followPicture();
  QPointF toPicture(QPointF point) const;
  QRectF toLayer(const QRectF& fractions) const;
  Grip gripAt(QPointF point) const;
  Qt::Edges handleAt(QPointF point) const;
  int boxAt(QPointF point) const;
  QRectF draggedArea() const;
  void giveUpDrag();
  void showCursor(const Grip& grip);
  void paintNotes(QPainter& painter) const;
  void paintHandles(QPainter& painter, const QRectF& area) const;
  void paintDrag(QPainter& painter) const;
  bool moveByKey(QKeyEvent* event);
  bool editByKey(QKeyEvent* event);

  MarkingPresenter& marking_;
  PictureCanvas& canvas_;
  QRectF picture_;  // where the picture lies on the canvas
  Grip grip_;
  QPointF pressed_;  // where the button went down
  QPointF now_;      // where the pointer is
};

}  // namespace sorvan::views
