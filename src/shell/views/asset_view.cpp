#include "shell/views/asset_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/accessible_role.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/mark_bar.h"
#include "shell/views/mark_layer.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kCanvasPadding = 24;
constexpr int kLargePicture = 2560;  // device pixels of the long side
constexpr double kMostZoom = 8;
constexpr double kLeastZoom = 0.05;
constexpr int kStripPicture = 46;
constexpr int kStripGap = 6;
constexpr int kBarMargin = 12;
}  // namespace

// PictureCanvas

PictureCanvas::PictureCanvas(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), centre_(0.5, 0.5) {
  connect(&thumbnails_, &ThumbnailStore::loaded, this, &PictureCanvas::viewMoved);
  setCursor(Qt::ArrowCursor);
}

void PictureCanvas::setPicture(const QString& path, const QString& standIn, const QString& accessibleName) {
  if (path == path_ && standIn == standIn_ && accessibleName == this->accessibleName()) return;
  path_ = path;
  standIn_ = standIn;
  zoom_ = 0;
  centre_ = QPointF(0.5, 0.5);
  setAccessibleName(accessibleName);
  viewMoved();
}

void PictureCanvas::viewMoved() {
  update();
  Q_EMIT viewChanged();
}

void PictureCanvas::resizeEvent(QResizeEvent*) { viewMoved(); }

QPixmap PictureCanvas::current() const {
  ThumbnailStore::Answer large;
  if (!path_.isEmpty()) large = thumbnails_.picture(path_, {}, kLargePicture);
  if (large.state == ThumbnailStore::State::ready && !path_.isEmpty()) return large.picture;
  return thumbnails_.picture(standIn_, {}, 640).picture;
}

double PictureCanvas::fitScale(const QSizeF& picture) const {
  const QSizeF room(std::max(1, width() - 2 * kCanvasPadding), std::max(1, height() - 2 * kCanvasPadding));
  return std::min({room.width() / picture.width(), room.height() / picture.height(), 4.0});
}

void PictureCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceSurround);
  const QPixmap picture = current();
  if (picture.isNull()) return paintIcon(painter, u"image"_s, rect(), 32, {colors().textTertiary});
  const QSizeF size = picture.size();
  const QRectF place = placeOf(size);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, place.width() < 3 * size.width());
  painter.drawPixmap(place, picture, QRectF(QPointF(), size));
}

QRectF PictureCanvas::placeOf(const QSizeF& picture) const {
  const QSizeF shown = picture * (isFitted() ? fitScale(picture) : zoom_);
  const QPointF centre = isFitted() ? QPointF(0.5, 0.5) : centre_;
  return {width() / 2.0 - centre.x() * shown.width(), height() / 2.0 - centre.y() * shown.height(), shown.width(),
          shown.height()};
}

QRectF PictureCanvas::picturePlace() const {
  const QPixmap picture = current();
  return picture.isNull() ? QRectF() : placeOf(picture.size());
}

void PictureCanvas::toggleFit() {
  zoom_ = isFitted() ? 1 / devicePixelRatioF() : 0;
  centre_ = QPointF(0.5, 0.5);
  viewMoved();
  Q_EMIT zoomChanged();
}

// What lies under the pointer stays there.
void PictureCanvas::zoomAt(QPointF point, double factor) {
  const QPixmap picture = current();
  if (picture.isNull()) return;
  const QSizeF size = picture.size();
  const double before = isFitted() ? fitScale(size) : zoom_;
  const double after = std::clamp(before * factor, kLeastZoom, kMostZoom);
  const QPointF away = point - QPointF(width() / 2.0, height() / 2.0);
  const QPointF under = centre_ + QPointF(away.x() / (size.width() * before), away.y() / (size.height() * before));
  zoom_ = after;
  centre_ = under - QPointF(away.x() / (size.width() * after), away.y() / (size.height() * after));
  viewMoved();
  Q_EMIT zoomChanged();
}

void PictureCanvas::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
  zoomAt(event->position(), std::pow(1.0015, event->angleDelta().y()));
}

void PictureCanvas::mousePressEvent(QMouseEvent* event) { dragFrom_ = event->position(); }

void PictureCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return;
  panBy(event->position() - dragFrom_);
  dragFrom_ = event->position();
}

void PictureCanvas::panBy(QPointF pixels) {
  const QSizeF shown = QSizeF(current().size()) * zoom_;
  if (isFitted() || shown.isEmpty()) return;
  centre_ -= QPointF(pixels.x() / shown.width(), pixels.y() / shown.height());
  viewMoved();
}

void PictureCanvas::mouseDoubleClickEvent(QMouseEvent*) { toggleFit(); }

// Filmstrip

Filmstrip::Filmstrip(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), source_(source), thumbnails_(thumbnails) {
  setAccessibleName(texts::filmstrip());
  setFixedHeight(metrics().filmstrip);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  connect(&source_, &WallSource::layoutChanged, this, qOverload<>(&QWidget::update));
}

void Filmstrip::setCurrent(QUuid id) {
  current_ = id;
  update();
}

std::vector<Filmstrip::Place> Filmstrip::places() const {
  std::vector<Place> result;
  const int now = source_.indexOf(current_);
  if (now < 0) return result;
  const auto widthOf = [this](int index) {
    return std::clamp(qRound(source_.aspectRatioAt(index) * kStripPicture), 24, 110);
  };
  const int top = (height() - kStripPicture) / 2;
  const int middle = width() / 2 - widthOf(now) / 2;
  for (int index = now, x = middle; index < source_.count() && x < width(); ++index) {
    if (source_.isJobAt(index)) continue;
    result.push_back({index, QRect(x, top, widthOf(index), kStripPicture)});
    x += widthOf(index) + kStripGap;
  }
  for (int index = now - 1, x = middle; index >= 0 && x > 0; --index) {
    if (source_.isJobAt(index)) continue;
    x -= widthOf(index) + kStripGap;
    result.push_back({index, QRect(x, top, widthOf(index), kStripPicture)});
  }
  return result;
}

void Filmstrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, 0, width(), 1), colors().lineSubtle);
  for (const Place& place : places()) {
    const GalleryCell cell = source_.cellAt(place.index);
    const auto answer =
        thumbnails_.picture(cell.thumbnailPath, cell.kind == CellKind::image ? cell.filePath : QString(), 256);
    if (answer.state == ThumbnailStore::State::ready)
      paintCover(painter, place.area, metrics().radiusPicture, answer.picture);
    else
      paintPanel(painter, place.area, metrics().radiusPicture, colors().surfacePlaceholder);
    if (cell.id == current_) paintRing(painter, QRectF(place.area).adjusted(-3, -3, 3, 3), 6, 2, colors().accentRing);
  }
}

void Filmstrip::mousePressEvent(QMouseEvent* event) {
  for (const Place& place : places()) {
    if (place.area.contains(event->position().toPoint())) {
      Q_EMIT chosen(source_.idAt(place.index));
      return;
    }
  }
}

// AssetView

AssetView::AssetView(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent),
      source_(source),
      canvas_(new PictureCanvas(thumbnails)),
      filmstrip_(new Filmstrip(source, thumbnails)),
      facts_(new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight)),
      place_(new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight)) {
  setFocusPolicy(Qt::StrongFocus);
  giveRole(*this, QAccessible::Graphic);
  auto* line = new QHBoxLayout;
  line->setContentsMargins(28, 8, 28, 10);
  line->addWidget(facts_, 1);
  line->addWidget(place_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(canvas_, 1);
  column->addLayout(line);
  column->addWidget(filmstrip_);
  connect(filmstrip_, &Filmstrip::chosen, this, &AssetView::itemChosen);
  connect(&source_, &WallSource::layoutChanged, this, &AssetView::refresh);
}

void AssetView::setMarking(MarkingPresenter& marking) {
  marks_ = new MarkLayer(marking, *canvas_);
  bar_ = new MarkBar(marking, canvas_);
  connect(canvas_, &PictureCanvas::viewChanged, this, &AssetView::placeBar);
  connect(&marking, &MarkingPresenter::markingChanged, this, [this, &marking] { refreshMarking(marking); });
  refreshMarking(marking);
}

void AssetView::refreshMarking(const MarkingPresenter& marking) {
  marks_->setVisible(marking.isMarking());
  bar_->setVisible(marking.isMarking());
  bar_->raise();
  setFocusProxy(marking.isMarking() ? marks_ : nullptr);
  placeBar();
}

void AssetView::placeBar() {
  if (!bar_) return;
  const int width = std::min(bar_->sizeHint().width(), canvas_->width() - 2 * kBarMargin);
  bar_->setGeometry((canvas_->width() - width) / 2, kBarMargin, width, bar_->sizeHint().height());
}

void AssetView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceSurround); }

void AssetView::show(QUuid item) {
  item_ = item;
  refresh();
}

void AssetView::refresh() {
  const int index = source_.indexOf(item_);
  if (index < 0) return;
  const GalleryCell cell = source_.cellAt(index);
  canvas_->setPicture(cell.kind == CellKind::image ? cell.filePath : QString(), cell.thumbnailPath, cell.fileName);
  setAccessibleName(cell.accessibleName.isEmpty() ? cell.fileName : cell.accessibleName);
  filmstrip_->setCurrent(item_);
  QStringList facts;
  for (const QString& fact : {cell.modelName, cell.durationText, cell.costText}) {
    if (!fact.isEmpty()) facts.append(fact);
  }
  facts_->setText(facts.join(u"  ·  "_s));
  place_->setText(texts::placeOf(index + 1, source_.count()));
}

QUuid AssetView::neighbour(int direction) const {
  for (int index = source_.indexOf(item_) + direction; index >= 0 && index < source_.count(); index += direction) {
    if (!source_.isJobAt(index)) return source_.idAt(index);
  }
  return {};
}

void AssetView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      Q_EMIT stepRequested(-1);
      return;
    case Qt::Key_Right:
      Q_EMIT stepRequested(+1);
      return;
    case Qt::Key_Escape:
    case Qt::Key_Space:
      Q_EMIT closeRequested();
      return;
    case Qt::Key_Z:
      canvas_->toggleFit();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace sorvan::views
