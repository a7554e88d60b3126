#include "shell/views/quick_look.h"

#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPainter>
#include <QPropertyAnimation>

#include "shell/views/controls.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/media_cell.h"
#include "shell/views/painting.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kMargin = 56;
constexpr int kGap = 20;
constexpr int kCaption = 30;
constexpr int kPicture = 2560;  // device pixels of the long side
constexpr int kFade = 120;      // milliseconds

// The ground is dark in both looks, and so is the button on it.
class CloseButton final : public IconButton {
 public:
  using IconButton::IconButton;

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& dark = Theme::instance().colorsOf(Look::dark);
    QPainter painter(this);
    const bool touched = underMouse() || isDown();
    paintPanel(painter, rect(), metrics().radiusControl, dark.pictureBadge, touched ? dark.pictureBadgeText : QColor());
    paintIcon(painter, u"x"_s, rect(), metrics().iconRegular, {dark.pictureBadgeText});
  }
};

}  // namespace

// QuickLookPane

QuickLookPane::QuickLookPane(ThumbnailStore& thumbnails, GalleryCell cell, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), cell_(std::move(cell)) {
  setAccessibleName(cell_.accessibleName.isEmpty() ? cell_.fileName : cell_.accessibleName);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  if (cell_.kind == CellKind::image) return;
  player_ = new media::Player(this);
  player_->setMuted(cell_.kind == CellKind::video);
  player_->setLooping(cell_.kind == CellKind::video);
  const auto moves = cell_.kind == CellKind::video ? &media::Player::frameChanged : &media::Player::positionChanged;
  for (const auto signal : {moves, &media::Player::stateChanged, &media::Player::volumeChanged})
    connect(player_, signal, this, qOverload<>(&QWidget::update));
}

void QuickLookPane::setCurrent(bool current) {
  current_ = current;
  update();
}

QRect QuickLookPane::pictureArea() const { return rect().adjusted(4, 4, -4, -kCaption); }

void QuickLookPane::resizeEvent(QResizeEvent*) {
  if (player_) player_->setFrameSize(pictureArea().size() * devicePixelRatioF());
}

QPixmap QuickLookPane::picture() const {
  if (player_ && !player_->frame().isNull()) return QPixmap::fromImage(player_->frame());
  if (cell_.kind == CellKind::image) {
    const auto large = thumbnails_.picture(cell_.filePath, {}, kPicture);
    if (large.state == ThumbnailStore::State::ready) return large.picture;
  }
  return thumbnails_.picture(cell_.thumbnailPath, {}, 640).picture;
}

QString QuickLookPane::problem() const {
  if (player_) return player_->state() == media::PlayerState::failed ? player_->problem() : QString();
  const auto large = thumbnails_.picture(cell_.filePath, {}, kPicture);
  if (large.state == ThumbnailStore::State::missing) return texts::originalIsMissing();
  return large.state == ThumbnailStore::State::unreadable ? texts::originalUnreadable() : QString();
}

void QuickLookPane::paintEvent(QPaintEvent*) {
  const Colors& dark = Theme::instance().colorsOf(Look::dark);
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPixmap shown = picture();
  QRect place = pictureArea();
  if (!shown.isNull()) {
    QSizeF size = QSizeF(shown.size()).scaled(QSizeF(place.size()), Qt::KeepAspectRatio);
    const QSize fitted = size.toSize();
    place = QRect(place.center() - QPoint(fitted.width() / 2, fitted.height() / 2), fitted);
    painter.drawPixmap(place, shown);
  } else {
    paintPanel(painter, place, metrics().radiusPicture, dark.surfacePlaceholder);
  }
  if (current_) paintRing(painter, QRectF(place).adjusted(-3, -3, 3, 3), 6, 2, dark.accentRing);
  if (player_) paintTime(painter, place);
  const QString words = problem();
  if (!words.isEmpty()) {
    paintPanel(painter, QRect(place.left(), place.center().y() - 22, place.width(), 44), 0, dark.pictureBadge);
    paintText(painter, QRect(place.left() + 8, place.center().y() - 22, place.width() - 16, 44),
              {words, fontFor(Type::small), dark.pictureBadgeText, Qt::AlignCenter});
  }
  paintText(painter, QRect(4, height() - kCaption, width() - 8, kCaption),
            {cell_.fileName, fontFor(Type::small), dark.textPrimary, Qt::AlignCenter, Qt::ElideMiddle});
}

void QuickLookPane::paintTime(QPainter& painter, const QRect& place) const {
  if (player_->duration() <= 0) return;
  const double share = std::min(1.0, player_->position() / player_->duration());
  if (cell_.kind == CellKind::audio)
    painter.fillRect(QRectF(place.left() + place.width() * share, place.top(), 1.5, place.height()), Qt::white);
  else
    painter.fillRect(QRectF(place.left(), place.bottom() - 2, place.width() * share, 3), Qt::white);
  paintPictureBadge(painter, place, Qt::BottomLeftCorner, player_->isMuted() ? u"volume-x"_s : u"volume-2"_s, {});
  paintPictureBadge(painter, place, Qt::BottomRightCorner, {},
                    clockText(player_->position()) + u" / "_s + clockText(player_->duration()));
}

void QuickLookPane::mousePressEvent(QMouseEvent*) { Q_EMIT chosen(); }

void QuickLookPane::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT opened(); }

// QuickLook

QuickLook::QuickLook(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent),
      thumbnails_(thumbnails),
      close_(new CloseButton(u"x"_s, texts::closeQuickLook(), u"Space"_s, this)) {
  setFocusPolicy(Qt::StrongFocus);
  setProperty(ownFocusProperty, true);
  hide();
  parent->installEventFilter(this);
  connect(close_, &IconButton::clicked, this, &QuickLook::close);
}

void QuickLook::open(const QSet<QUuid>& items, const WallSource& source) {
  std::vector<int> places;
  for (const QUuid& item : items) {
    const int index = source.indexOf(item);
    if (index >= 0 && !source.isJobAt(index)) places.push_back(index);
  }
  std::sort(places.begin(), places.end());
  if (places.size() > size_t(mostItems)) places.resize(size_t(mostItems));
  if (places.empty()) return;
  source_ = &source;
  std::vector<QUuid> shown;
  for (const int place : places) shown.push_back(source_->idAt(place));
  fill(shown);
  setGeometry(parentWidget()->rect());
  show();
  raise();
  setFocus(Qt::OtherFocusReason);
  fadeIn();
}

void QuickLook::close() {
  if (!isOpen()) return;
  fill({});
  hide();
  Q_EMIT closed();
}

void QuickLook::fill(const std::vector<QUuid>& items) {
  for (QuickLookPane* pane : panes_) pane->hide(), pane->deleteLater();
  panes_.clear();
  for (const QUuid& item : items) {
    auto* pane = new QuickLookPane(thumbnails_, source_->cellAt(source_->indexOf(item)), this);
    const int index = int(panes_.size());
    connect(pane, &QuickLookPane::chosen, this, [this, index] { makeCurrent(index); });
    connect(pane, &QuickLookPane::opened, this, [this, item] { Q_EMIT itemOpened(item); });
    panes_.push_back(pane);
    pane->show();
  }
  close_->raise();
  current_ = 0;
  if (panes_.empty()) return;
  arrange();
  makeCurrent(0);
  for (QuickLookPane* pane : panes_) {
    if (!pane->player() || (panes_.size() > 1 && pane->cell().kind == CellKind::audio)) continue;
    pane->player()->open(pane->cell().filePath);
    pane->player()->play();
  }
}

// All of one height, in as many rows as let them be largest.
void QuickLook::arrange() {
  close_->setGeometry(width() - 48, 16, 30, 30);
  const int count = int(panes_.size());
  const QSize room(width() - 2 * kMargin, height() - 2 * kMargin);
  int bestRows = 1;
  double best = 0;
  const auto perRow = [count](int rows) { return (count + rows - 1) / rows; };
  const auto heightIn = [&](int rows) {
    double tall = double(room.height() - (rows - 1) * kGap) / rows - kCaption;
    for (int first = 0; first < count; first += perRow(rows)) {
      double shape = 0;
      const int last = std::min(count, first + perRow(rows));
      for (int index = first; index < last; ++index) shape += panes_[size_t(index)]->aspectRatio();
      tall = std::min(tall, (room.width() - (last - first - 1) * kGap) / shape);
    }
    return tall;
  };
  for (int rows = 1; rows <= count; ++rows) {
    if (heightIn(rows) > best) best = heightIn(rows), bestRows = rows;
  }
  const int columns = perRow(bestRows);
  const double rowHeight = best + kCaption;
  double y = (height() - (rowHeight * bestRows + kGap * (bestRows - 1))) / 2;
  for (int first = 0; first < count; first += columns, y += rowHeight + kGap) {
    const int last = std::min(count, first + columns);
    double wide = double(last - first - 1) * kGap;
    for (int index = first; index < last; ++index) wide += panes_[size_t(index)]->aspectRatio() * best;
    double x = (width() - wide) / 2;
    for (int index = first; index < last; ++index) {
      const double paneWidth = panes_[size_t(index)]->aspectRatio() * best;
      panes_[size_t(index)]->setGeometry(QRectF(x, y, paneWidth, rowHeight).toRect());
      x += paneWidth + kGap;
    }
  }
}

void QuickLook::fadeIn() {
  if (Theme::instance().reducedMotion()) return;
  auto* effect = new QGraphicsOpacityEffect(this);
  setGraphicsEffect(effect);
  auto* fade = new QPropertyAnimation(effect, "opacity", effect);
  fade->setDuration(kFade);
  fade->setStartValue(0.0);
  fade->setEndValue(1.0);
  connect(fade, &QPropertyAnimation::finished, this, [this] { setGraphicsEffect(nullptr); });
  fade->start();
}

QUuid QuickLook::current() const { return panes_.empty() ? QUuid() : panes_[size_t(current_)]->cell().id; }

void QuickLook::makeCurrent(int index) {
  current_ = index;
  for (int pane = 0; pane < int(panes_.size()); ++pane)
    panes_[size_t(pane)]->setCurrent(panes_.size() > 1 && pane == index);
  setAccessibleName(texts::quickLookOf(panes_[size_t(index)]->cell().fileName));
}

void QuickLook::step(int direction) {
  if (panes_.size() > 1) return makeCurrent(std::clamp(current_ + direction, 0, int(panes_.size()) - 1));
  for (int index = source_->indexOf(current()) + direction; index >= 0 && index < source_->count(); index += direction) {
    if (source_->isJobAt(index)) continue;
    fill({source_->idAt(index)});
    Q_EMIT stepped(current());
    return;
  }
}

// With a sound on, the others fall silent.
void QuickLook::toggleMute() {
  media::Player* player = panes_[size_t(current_)]->player();
  if (!player) return;
  const bool mute = !player->isMuted();
  for (QuickLookPane* pane : panes_) {
    if (pane->player()) pane->player()->setMuted(true);
  }
  player->setMuted(mute);
}

void QuickLook::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      return step(-1);
    case Qt::Key_Right:
    case Qt::Key_Down:
      return step(+1);
    case Qt::Key_M:
      return toggleMute();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT itemOpened(current());
      return;
    case Qt::Key_Space:
    case Qt::Key_Escape:
      return close();
    default:
      QWidget::keyPressEvent(event);
  }
}

void QuickLook::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor scrim = Theme::instance().colorsOf(Look::dark).surfaceSurround;
  scrim.setAlphaF(0.92F);
  painter.fillRect(rect(), scrim);
}

void QuickLook::resizeEvent(QResizeEvent*) {
  if (isOpen()) arrange();
}

void QuickLook::mousePressEvent(QMouseEvent*) { close(); }

bool QuickLook::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize && isOpen()) setGeometry(parentWidget()->rect());
  return QWidget::eventFilter(watched, event);
}

// The keyboard stays in here while it is open.
bool QuickLook::focusNextPrevChild(bool) {
  QWidget* other = close_->hasFocus() ? static_cast<QWidget*>(this) : close_;
  other->setFocus(Qt::TabFocusReason);
  return true;
}

}  // namespace sorvan::views
