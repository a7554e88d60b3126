// One picture that is looked at in step with others, or two of them laid over each other.
#pragma once

#include <QAbstractButton>

#include "shell/compared_picture.h"
#include "shell/views/large_pictures.h"
#include "shell/views/step_view.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// A press chooses it; a drag moves all pictures, Ctrl and the wheel zoom them. Main thread.
class CompareCanvas final : public QAbstractButton {
  Q_OBJECT

 public:
  struct Pictures {
    LargePictures& large;
    ThumbnailStore& thumbnails;
  };
  CompareCanvas(Pictures pictures, QWidget* parent = nullptr);

  void setPicture(const ComparedPicture& picture, int number);
  const ComparedPicture& picture() const { return first_; }
  // The second picture lies to the right of the divider; nothing takes it away.
  void setSecond(const std::optional<ComparedPicture>& picture);
  // What differs, in place of the picture; a null image shows `text` until it is there.
  void setDifference(const std::optional<QImage>& difference, const QString& text);
  void setDivider(double share);
  void setView(const StepView& view);
  // Without a ring: the only picture there is.
  void setAlone(bool alone);
  // The size that counts for zooming, in pixels of the file.
  QSizeF pictureSize() const;
  // Where the picture lies now, in this widget.
  QRectF picturePlace() const { return view_.placeOf(pictureSize(), size()); }

 Q_SIGNALS:
  void zoomRequested(QPointF point, double factor);
  void panRequested(QPointF pixels);
  void dividerMoved(double share);
  void fitToggled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void paintPicture(QPainter& painter, const ComparedPicture& picture);
  void paintDivided(QPainter& painter);
  void paintFrame(QPainter& painter);
  int dividerX() const { return qRound(divider_ * width()); }

  Pictures pictures_;
  ComparedPicture first_;
  std::optional<ComparedPicture> second_;
  std::optional<QImage> difference_;
  QString text_;
  StepView view_;
  double divider_ = 0.5;
  int number_ = 1;
  bool alone_ = false;
  bool draggingDivider_ = false;
  QPointF dragFrom_;
};

}  // namespace sorvan::views
