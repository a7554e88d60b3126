#include "shell/views/asset_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStackedLayout>

#include "shell/views/accessible_role.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/mark_bar.h"
#include "shell/views/mark_layer.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/transport_bar.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kStripPicture = 46;
constexpr int kStripGap = 6;
constexpr int kBarMargin = 12;
}  // namespace

// Filmstrip

Filmstrip::Filmstrip(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), source_(source), thumbnails_(thumbnails) {
  setAccessibleName(texts::filmstrip());
  setFixedHeight(metrics().filmstrip);
  setMouseTracking(true);
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
    else if (cell.id == hovered_) paintRing(painter, QRectF(place.area).adjusted(-2, -2, 2, 2), 6, 1, colors().controlBorderStrong);
  }
}

void Filmstrip::mouseMoveEvent(QMouseEvent* event) {
  QUuid under;
  for (const Place& place : places())
    if (place.area.contains(event->position().toPoint())) under = source_.idAt(place.index);
  hoverOver(under);
}

void Filmstrip::leaveEvent(QEvent*) { hoverOver({}); }

void Filmstrip::hoverOver(QUuid item) {
  if (item == hovered_) return;
  hovered_ = item;
  setCursor(item.isNull() ? Qt::ArrowCursor : Qt::PointingHandCursor);
  update();
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
      player_(new PlayerView(thumbnails)),
      media_(new QStackedLayout),
      filmstrip_(new Filmstrip(source, thumbnails)),
      facts_(new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight)),
      place_(new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight)) {
  setFocusPolicy(Qt::StrongFocus);
  giveRole(*this, QAccessible::Graphic);
  words_ = new QWidget;
  auto* line = new QHBoxLayout(words_);
  line->setContentsMargins(28, 8, 28, 10);
  line->addWidget(facts_, 1);
  line->addWidget(place_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  media_->addWidget(canvas_);
  media_->addWidget(player_);
  column->addLayout(media_, 1);
  column->addWidget(words_);
  column->addWidget(filmstrip_);
  connect(filmstrip_, &Filmstrip::chosen, this, &AssetView::itemChosen);
  connect(&source_, &WallSource::layoutChanged, this, &AssetView::refresh);
  connect(canvas_, &PictureCanvas::zoomChanged, this, &AssetView::refreshFacts);
  connect(&player_->player(), &media::Player::stateChanged, this, &AssetView::refreshFacts);
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

void AssetView::show(QUuid item, Begin begin) {
  item_ = item;
  refresh();
  if (begin == Begin::playing && showsPlayer()) player_->player().play();
}

bool AssetView::showsPlayer() const { return media_->currentWidget() == player_; }

bool AssetView::showsClip() const {
  const int index = source_.indexOf(item_);
  return showsPlayer() && index >= 0 && source_.cellAt(index).kind == CellKind::video;
}

void AssetView::setImmersed(bool immersed) {
  words_->setVisible(!immersed);
  filmstrip_->setVisible(!immersed);
  player_->transport().setImmersed(immersed);
}

// What is not seen neither plays nor keeps its file open.
void AssetView::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) player_->close();
}

void AssetView::showMedia(const GalleryCell& cell) {
  const bool isPicture = cell.kind == CellKind::image;
  canvas_->setPicture(isPicture ? cell.filePath : QString(), cell.thumbnailPath, cell.fileName);
  media_->setCurrentWidget(isPicture ? static_cast<QWidget*>(canvas_) : player_);
  if (isPicture)
    player_->close();
  else
    player_->open({cell.filePath, cell.thumbnailPath, cell.fileName, cell.kind == CellKind::audio}, Begin::paused);
}

namespace {

// Jobs stand among the items and are stepped over, so they count for nothing.
QString placeAmongItems(const WallSource& source, int index) {
  int place = 0;
  int items = 0;
  for (int at = 0; at < source.count(); ++at) {
    if (source.isJobAt(at)) continue;
    ++items;
    if (at <= index) ++place;
  }
  return texts::placeOf(place, items);
}

}  // namespace

void AssetView::refresh() {
  const int index = source_.indexOf(item_);
  if (index < 0) return;
  const GalleryCell cell = source_.cellAt(index);
  showMedia(cell);
  setAccessibleName(cell.accessibleName.isEmpty() ? cell.fileName : cell.accessibleName);
  filmstrip_->setCurrent(item_);
  place_->setText(placeAmongItems(source_, index));
  refreshFacts();
}

// The size comes with the picture, a moment after its name.
void AssetView::refreshFacts() {
  const int index = source_.indexOf(item_);
  if (index < 0) return;
  const GalleryCell cell = source_.cellAt(index);
  const QSize size = showsPlayer() ? player_->player().facts().size : canvas_->pixels();
  const QString pixels = size.isEmpty() ? QString() : texts::pixelSize(size.width(), size.height());
  QStringList facts{pixels, cell.modelName, cell.durationText, cell.costText};
  facts.removeAll(QString());
  facts_->setText(facts.join(u"  ·  "_s));
}

void AssetView::contextMenuEvent(QContextMenuEvent* event) {
  if (item_.isNull()) return event->ignore();
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  Q_EMIT menuRequested(byKey ? mapToGlobal(rect().center()) : event->globalPos());
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
    case Qt::Key_Equal:  // the plus of keyboards that have it on the upper half of the key
      perform(ActionId::zoomIn);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

bool AssetView::perform(ActionId action) {
  return showsPlayer() ? performOnPlayer(action) : performOnPicture(action);
}

bool AssetView::performOnPicture(ActionId action) {
  switch (action) {
    case ActionId::zoomIn:
      canvas_->zoomIn();
      return true;
    case ActionId::zoomOut:
      canvas_->zoomOut();
      return true;
    case ActionId::toggleFit:
      canvas_->toggleFit();
      return true;
    default:
      return false;
  }
}

bool AssetView::performOnPlayer(ActionId action) {
  media::Player& player = player_->player();
  switch (action) {
    case ActionId::playPause:
      player.togglePlaying();
      return true;
    case ActionId::previousFrame:
      player.stepFrames(-1);
      return true;
    case ActionId::nextFrame:
      player.stepFrames(+1);
      return true;
    case ActionId::secondBack:
      player_->skip(-1);
      return true;
    case ActionId::secondForward:
      player_->skip(+1);
      return true;
    case ActionId::playerStart:
      player_->goToStart();
      return true;
    case ActionId::playerEnd:
      player_->goToEnd();
      return true;
    case ActionId::toggleMute:
      player.setMuted(!player.isMuted());
      return true;
    case ActionId::toggleLoop:
      player.setLooping(!player.isLooping());
      return true;
    default:
      return false;
  }
}

}  // namespace sorvan::views
