#include "shell/views/compare_canvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

#include "shell/sheet_texts.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/media_cell.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kZoomPerStep = 1.0015;
constexpr int kGrip = 9;       // pixels to each side of the divider in which it can be taken
constexpr double kPlain = 3;   // enlarged more than this, pixels are shown as they are
constexpr int kThumbnail = 640;

}  // namespace

CompareCanvas::CompareCanvas(Pictures pictures, QWidget* parent) : QAbstractButton(parent), pictures_(pictures) {
  setCheckable(true);
  setAutoExclusive(false);
  setFocusPolicy(Qt::StrongFocus);
  setProperty(ownFocusProperty, true);
  setMouseTracking(true);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(&pictures_.large, &LargePictures::arrived, this, qOverload<>(&QWidget::update));
  connect(&pictures_.thumbnails, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

void CompareCanvas::setPicture(const ComparedPicture& picture, int number) {
  first_ = picture;
  number_ = number;
  QStringList words{QString::number(number), picture.title, picture.detail, picture.statusText};
  words.removeAll(QString());
  setAccessibleName(words.join(u", "_s));
  update();
}

void CompareCanvas::setSecond(const std::optional<ComparedPicture>& picture) {
  second_ = picture;
  update();
}

void CompareCanvas::setDifference(const std::optional<QImage>& difference, const QString& text) {
  difference_ = difference;
  text_ = text;
  update();
}

void CompareCanvas::setDivider(double share) {
  divider_ = share;
  update();
}

void CompareCanvas::setView(const StepView& view) {
  if (view_ == view) return;
  view_ = view;
  update();
}

void CompareCanvas::setAlone(bool alone) {
  alone_ = alone;
  update();
}

QSizeF CompareCanvas::pictureSize() const {
  const QSize read = pictures_.large.sizeOf(first_.path);
  if (!read.isEmpty()) return read;
  return first_.size.isEmpty() ? QSizeF(1, 1) : QSizeF(first_.size);
}

void CompareCanvas::paintPicture(QPainter& painter, const ComparedPicture& picture) {
  const QRectF place = picturePlace();
  const double shown = std::max(place.width(), place.height()) * devicePixelRatioF();
  QImage image = shown <= LargePictures::enoughFor ? pictures_.large.smallPicture(picture.path)
                                                   : pictures_.large.picture(picture.path);
  if (image.isNull() && !pictures_.large.isMissing(picture.path))
    image = pictures_.thumbnails.picture(picture.thumbnailPath, {}, kThumbnail).picture.toImage();
  if (image.isNull()) {
    if (!pictures_.large.isMissing(picture.path)) return;
    paintIcon(painter, u"triangle-alert"_s, rect().adjusted(0, -14, 0, -14), 24, {colors().textTertiary});
    paintText(painter, rect().adjusted(0, 22, 0, 22),
              {shell::texts::unreadablePicture, fontFor(Type::small), colors().textTertiary, Qt::AlignCenter});
    return;
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform, place.width() < kPlain * image.width());
  painter.drawImage(place, image, QRectF(image.rect()));
}

void CompareCanvas::paintDivided(QPainter& painter) {
  const int x = dividerX();
  painter.save();
  painter.setClipRect(QRect(0, 0, x, height()));
  paintPicture(painter, first_);
  painter.setClipRect(QRect(x, 0, width() - x, height()));
  paintPicture(painter, *second_);
  painter.restore();
  painter.fillRect(QRect(x - 1, 0, 2, height()), colors().accentRing);
  const QRect grip(x - kGrip, height() / 2 - 18, 2 * kGrip, 36);
  paintPanel(painter, grip, kGrip, colors().pictureBadge, colors().accentRing);
  paintIcon(painter, u"grip-vertical"_s, grip, 14, {colors().textOnPicture});
  paintPictureBadge(painter, rect(), Qt::TopLeftCorner, {}, first_.title);
  paintPictureBadge(painter, rect(), Qt::TopRightCorner, {}, second_->title);
}

void CompareCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceSurround);
  if (difference_) {
    if (difference_->isNull()) {
      paintText(painter, rect(), {text_, fontFor(Type::body), colors().textSecondary, Qt::AlignCenter});
    } else {
      const QRectF place = picturePlace();
      painter.setRenderHint(QPainter::SmoothPixmapTransform, place.width() < kPlain * difference_->width());
      painter.drawImage(place, *difference_, QRectF(difference_->rect()));
    }
  } else if (second_) {
    paintDivided(painter);
  } else {
    paintPicture(painter, first_);
    paintPictureBadge(painter, rect(), Qt::TopLeftCorner, {}, QString::number(number_));
    if (!first_.statusText.isEmpty())
      paintPictureBadge(painter, rect(), Qt::TopRightCorner, {}, first_.statusText,
                        statusColorOnPicture(first_.statusToken));
  }
  paintFrame(painter);
}

void CompareCanvas::paintFrame(QPainter& painter) {
  const bool keyboard = hasFocus() && FocusRing::keyboardInUse();
  if (!keyboard && (!isChecked() || alone_)) {
    if (underMouse() && !alone_) paintRing(painter, rect(), metrics().radiusPicture, 1, colors().controlBorderStrong);
    return;
  }
  const double width = isChecked() && !alone_ ? metrics().borderSelection : metrics().borderFocus;
  paintRing(painter, QRectF(rect()), metrics().radiusPicture, width, colors().accentRing);
}

void CompareCanvas::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    Q_EMIT zoomRequested(event->position(), std::pow(kZoomPerStep, event->angleDelta().y()));
    return;
  }
  const QPointF turned = event->pixelDelta().isNull() ? QPointF(event->angleDelta()) / 2 : QPointF(event->pixelDelta());
  Q_EMIT panRequested(event->modifiers().testFlag(Qt::ShiftModifier) ? QPointF(turned.y(), turned.x()) : turned);
}

void CompareCanvas::mousePressEvent(QMouseEvent* event) {
  dragFrom_ = event->position();
  draggingDivider_ = second_ && std::abs(event->position().x() - dividerX()) <= kGrip;
  QAbstractButton::mousePressEvent(event);
}

void CompareCanvas::mouseMoveEvent(QMouseEvent* event) {
  const bool overDivider = second_ && std::abs(event->position().x() - dividerX()) <= kGrip;
  setCursor(overDivider || draggingDivider_ ? Qt::SplitHCursor : Qt::ArrowCursor);
  if (!(event->buttons() & Qt::LeftButton)) return;
  if (draggingDivider_)
    Q_EMIT dividerMoved(std::clamp(event->position().x() / std::max(1, width()), 0.0, 1.0));
  else
    Q_EMIT panRequested(event->position() - dragFrom_);
  dragFrom_ = event->position();
}

void CompareCanvas::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT fitToggled(); }

// All keys belong to the view around it.
void CompareCanvas::keyPressEvent(QKeyEvent* event) { event->ignore(); }

}  // namespace sorvan::views
