#include "shell/views/picture_canvas.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kPadding = 24;
constexpr int kPreviewSide = 2560;  // device pixels of the long side
constexpr double kMostEnlarged = 4;
constexpr double kMostZoom = 8;
constexpr double kLeastZoom = 0.02;
constexpr int kSquare = 8;  // logical pixels of the squares behind what is see-through
// Device pixels for a pixel of the picture.
constexpr double kSteps[] = {0.02, 0.05, 0.1, 0.25, 0.33, 0.5, 0.67, 1, 1.5, 2, 3, 4, 6, 8};

void paintSquares(QPainter& painter, const QRectF& area) {
  static const QPixmap tile = [] {
    QPixmap made(2 * kSquare, 2 * kSquare);
    made.fill(QColor(0xF5, 0xF5, 0xF5));
    QPainter squares(&made);
    squares.fillRect(0, 0, kSquare, kSquare, QColor(0xCC, 0xCC, 0xCC));
    squares.fillRect(kSquare, kSquare, kSquare, kSquare, QColor(0xCC, 0xCC, 0xCC));
    return made;
  }();
  painter.drawTiledPixmap(area, tile);
}
}  // namespace

PictureCanvas::PictureCanvas(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), centre_(0.5, 0.5) {
  connect(&thumbnails_, &ThumbnailStore::loaded, this, &PictureCanvas::changed);
  connect(&file_, &LargePicture::changed, this, &PictureCanvas::changed);
}

void PictureCanvas::setPicture(const QString& path, const QString& standIn, const QString& accessibleName) {
  if (path == path_ && standIn == standIn_ && accessibleName == this->accessibleName()) return;
  path_ = path;
  standIn_ = standIn;
  file_.open(path);
  setAccessibleName(accessibleName);
  fit();
}

void PictureCanvas::changed() {
  viewMoved();
  Q_EMIT zoomChanged();
}

void PictureCanvas::viewMoved() {
  keepInside();
  showCursor();
  update();
  Q_EMIT viewChanged();
}

void PictureCanvas::resizeEvent(QResizeEvent*) { changed(); }

QPixmap PictureCanvas::preview() const {
  ThumbnailStore::Answer large;
  if (!path_.isEmpty()) large = thumbnails_.picture(path_, {}, kPreviewSide);
  if (large.state == ThumbnailStore::State::ready && !path_.isEmpty()) return large.picture;
  return thumbnails_.picture(standIn_, {}, 640).picture;
}

// The picture's own pixels; until they are counted, those of what stands in.
QSizeF PictureCanvas::pictureSize() const {
  return file_.state() == LargePicture::State::ready ? QSizeF(file_.size()) : QSizeF(preview().size());
}

double PictureCanvas::fitScale() const {
  const QSizeF size = pictureSize();
  if (size.isEmpty()) return 1;
  const QSizeF room(std::max(1, width() - 2 * kPadding), std::max(1, height() - 2 * kPadding));
  return std::min({room.width() / size.width(), room.height() / size.height(), kMostEnlarged});
}

double PictureCanvas::scale() const { return isFitted() ? fitScale() : zoom_; }

int PictureCanvas::percent() const {
  if (file_.state() != LargePicture::State::ready) return 0;
  return std::max(1, qRound(scale() * devicePixelRatioF() * 100));
}

QString PictureCanvas::problem() const {
  if (file_.state() == LargePicture::State::missing) return texts::originalIsMissing();
  return file_.state() == LargePicture::State::unreadable ? texts::imageUnreadable() : QString();
}

QRectF PictureCanvas::picturePlace() const {
  const QSizeF size = pictureSize();
  if (size.isEmpty()) return {};
  const QSizeF shown = size * scale();
  const QPointF centre = isFitted() ? QPointF(0.5, 0.5) : centre_;
  return {width() / 2.0 - centre.x() * shown.width(), height() / 2.0 - centre.y() * shown.height(), shown.width(),
          shown.height()};
}

bool PictureCanvas::showsFullSize() const { return !file_.pixels().isNull(); }

void PictureCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceSurround);
  const QPixmap shown = preview();
  const QRectF place = picturePlace();
  if (place.isEmpty()) return paintProblem(painter);
  const double wanted = place.width() * devicePixelRatioF();
  const bool previewDue =
      path_.isEmpty() || thumbnails_.picture(path_, {}, kPreviewSide).state == ThumbnailStore::State::loading;
  if (!previewDue && wanted > shown.width() * 1.01 && file_.size().width() > shown.width()) file_.wantPixels();
  if (shown.hasAlphaChannel()) paintSquares(painter, place.intersected(QRectF(rect())));
  painter.setRenderHint(QPainter::SmoothPixmapTransform, scale() * devicePixelRatioF() < 3);
  if (showsFullSize() && wanted > shown.width())
    paintPixels(painter, place);
  else if (!shown.isNull())
    painter.drawPixmap(place, shown, QRectF(QPointF(), QSizeF(shown.size())));
  if (!problem().isEmpty()) paintProblem(painter);
}

// Only what is visible is drawn from the full picture, however large it is.
void PictureCanvas::paintPixels(QPainter& painter, const QRectF& place) const {
  const double factor = place.width() / file_.pixels().width();
  const QRectF visible = place.intersected(QRectF(rect()));
  const QRectF source((visible.x() - place.x()) / factor, (visible.y() - place.y()) / factor, visible.width() / factor,
                      visible.height() / factor);
  painter.drawImage(visible, file_.pixels(), source);
}

void PictureCanvas::paintProblem(QPainter& painter) const {
  const Colors& c = colors();
  const QString words = problem();
  if (words.isEmpty()) return paintIcon(painter, u"image"_s, rect(), 32, {c.textTertiary});
  const int middle = height() / 2;
  const int half = textWidth(words, fontFor(Type::body)) / 2 + 28;
  paintPanel(painter, QRectF(width() / 2.0 - half, middle - 44, 2 * half, 84), metrics().radiusPanel, c.surfaceOverlay);
  paintIcon(painter, u"triangle-alert"_s, QRect(0, middle - 34, width(), 28), 24, {c.warningText});
  paintText(painter, QRect(16, middle + 2, width() - 32, 24),
            {words, fontFor(Type::body), c.textPrimary, Qt::AlignCenter});
}

void PictureCanvas::fit() {
  zoom_ = 0;
  centre_ = QPointF(0.5, 0.5);
  changed();
}

void PictureCanvas::toggleFit() {
  if (!isFitted()) return fit();
  setZoom(1 / devicePixelRatioF(), QPointF(width() / 2.0, height() / 2.0));
}

bool PictureCanvas::canZoomIn() const { return percent() > 0 && scale() * devicePixelRatioF() < kMostZoom * 0.999; }

bool PictureCanvas::canZoomOut() const { return percent() > 0 && scale() * devicePixelRatioF() > kLeastZoom * 1.001; }

void PictureCanvas::zoomStep(int direction) {
  const double now = scale() * devicePixelRatioF();
  double next = direction > 0 ? kMostZoom : kLeastZoom;
  for (const double step : kSteps) {
    if (direction > 0 && step > now * 1.02) {
      next = step;
      break;
    }
    if (direction < 0 && step < now * 0.98) next = step;
  }
  setZoom(next / devicePixelRatioF(), QPointF(width() / 2.0, height() / 2.0));
}

// What lies under the point stays there.
void PictureCanvas::setZoom(double zoom, QPointF point) {
  const QSizeF size = pictureSize();
  if (size.isEmpty()) return;
  const double before = scale();
  const double ratio = devicePixelRatioF();
  const double after = std::clamp(zoom, kLeastZoom / ratio, kMostZoom / ratio);
  const QPointF away = point - QPointF(width() / 2.0, height() / 2.0);
  const QPointF centre = isFitted() ? QPointF(0.5, 0.5) : centre_;
  const QPointF under = centre + QPointF(away.x() / (size.width() * before), away.y() / (size.height() * before));
  zoom_ = after;
  centre_ = under - QPointF(away.x() / (size.width() * after), away.y() / (size.height() * after));
  changed();
}

// A picture cannot be pushed out of sight.
void PictureCanvas::keepInside() {
  const QSizeF shown = pictureSize() * zoom_;
  if (isFitted() || shown.isEmpty()) return;
  const double slackX = shown.width() <= width() ? 0 : (shown.width() - width()) / 2 / shown.width() + 0.05;
  const double slackY = shown.height() <= height() ? 0 : (shown.height() - height()) / 2 / shown.height() + 0.05;
  centre_ = QPointF(std::clamp(centre_.x(), 0.5 - slackX, 0.5 + slackX),
                    std::clamp(centre_.y(), 0.5 - slackY, 0.5 + slackY));
}

void PictureCanvas::showCursor() {
  const QRectF place = picturePlace();
  const bool movable = !isFitted() && (place.width() > width() || place.height() > height());
  setCursor(movable ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void PictureCanvas::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
  zoomAt(event->position(), std::pow(1.0015, event->angleDelta().y()));
}

void PictureCanvas::mousePressEvent(QMouseEvent* event) {
  dragFrom_ = event->position();
  if (cursor().shape() == Qt::OpenHandCursor) setCursor(Qt::ClosedHandCursor);
}

void PictureCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return;
  panBy(event->position() - dragFrom_);
  dragFrom_ = event->position();
  if (!isFitted()) setCursor(Qt::ClosedHandCursor);
}

void PictureCanvas::mouseReleaseEvent(QMouseEvent*) { showCursor(); }

void PictureCanvas::panBy(QPointF pixels) {
  const QSizeF shown = pictureSize() * zoom_;
  if (isFitted() || shown.isEmpty()) return;
  centre_ -= QPointF(pixels.x() / shown.width(), pixels.y() / shown.height());
  viewMoved();
}

void PictureCanvas::mouseDoubleClickEvent(QMouseEvent*) { toggleFit(); }

}  // namespace sorvan::views
