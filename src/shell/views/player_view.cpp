#include "shell/views/player_view.h"

#include <QPainter>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/transport_bar.h"
#include "shell/views/viewer_texts.h"
#include "shell/views/wave_strip.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kPadding = 24;
constexpr double kBeforeEnd = 1e-3;  // seconds
}  // namespace

// FrameView

FrameView::FrameView(media::Player& player, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), player_(player), thumbnails_(thumbnails) {
  connect(&player_, &media::Player::frameChanged, this, qOverload<>(&QWidget::update));
  connect(&player_, &media::Player::stateChanged, this, qOverload<>(&QWidget::update));
  connect(&player_, &media::Player::ended, this, qOverload<>(&QWidget::update));
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

void FrameView::setPoster(const QString& thumbnailPath) {
  poster_ = thumbnailPath;
  update();
}

QSizeF FrameView::shownSize() const {
  if (player_.facts().hasPicture) return QSizeF(player_.facts().size);
  return QSizeF(thumbnails_.picture(poster_, {}, 640).picture.size());
}

QRectF FrameView::picturePlace() const {
  const QSizeF room(std::max(1, width() - 2 * kPadding), std::max(1, height() - 2 * kPadding));
  const QSizeF size = shownSize();
  if (size.isEmpty()) return {};
  const QSizeF fitted = size.scaled(room, Qt::KeepAspectRatio);
  return {(width() - fitted.width()) / 2, (height() - fitted.height()) / 2, fitted.width(), fitted.height()};
}

void FrameView::resizeEvent(QResizeEvent*) { player_.setFrameSize(size() * devicePixelRatioF()); }

void FrameView::mousePressEvent(QMouseEvent*) { Q_EMIT pressed(); }

void FrameView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceSurround);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QRectF place = picturePlace();
  if (!player_.frame().isNull()) {
    painter.drawImage(place, player_.frame());
  } else if (!place.isEmpty()) {
    const QPixmap poster = thumbnails_.picture(poster_, {}, 640).picture;
    painter.drawPixmap(place, poster, QRectF(poster.rect()));
  }
  paintWords(painter);
}

void FrameView::paintWords(QPainter& painter) const {
  const Colors& c = colors();
  const bool failed = player_.state() == media::PlayerState::failed;
  const QString words = failed ? player_.problem() : (player_.endsEarly() ? texts::endsEarly() : QString());
  if (words.isEmpty()) return;
  const int half = textWidth(words, fontFor(Type::body)) / 2 + 28;
  const int middle = failed ? height() / 2 : height() - 70;
  paintPanel(painter, QRectF(width() / 2.0 - half, middle - 42, 2 * half, 84), metrics().radiusPanel, c.surfaceOverlay);
  paintIcon(painter, u"triangle-alert"_s, QRect(0, middle - 32, width(), 26), 22, {c.warningText});
  paintText(painter, QRect(16, middle + 2, width() - 32, 24),
            {words, fontFor(Type::body), c.textPrimary, Qt::AlignCenter});
}

// PlayerView

PlayerView::PlayerView(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent),
      pages_(new QStackedLayout),
      frame_(new FrameView(player_, thumbnails)),
      wave_(new WaveStrip),
      transport_(new TransportBar(player_)) {
  pages_->addWidget(frame_);
  pages_->addWidget(wave_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(pages_, 1);
  column->addWidget(transport_);
  connect(frame_, &FrameView::pressed, &player_, &media::Player::togglePlaying);
  connect(wave_, &WaveStrip::placeChosen, &player_, &media::Player::seek);
  for (const auto signal : {&media::Player::positionChanged, &media::Player::stateChanged})
    connect(&player_, signal, this, &PlayerView::follow);
}

void PlayerView::open(const Subject& subject, Begin begin) {
  if (subject.path != player_.path() || player_.state() == media::PlayerState::failed) {
    setAccessibleName(subject.name);
    frame_->setPoster(subject.thumbnailPath);
    frame_->setAccessibleName(subject.name);
    player_.setLooping(false);
    player_.open(subject.path);
    wave_->setSound(subject.isSound ? subject.path : QString());
    pages_->setCurrentWidget(subject.isSound ? static_cast<QWidget*>(wave_) : frame_);
  }
  if (begin == Begin::playing) player_.play();
}

void PlayerView::close() {
  if (player_.state() == media::PlayerState::empty) return;
  player_.close();
  wave_->setSound({});
}

void PlayerView::goToEnd() {
  player_.pause();
  player_.seek(player_.duration() - kBeforeEnd);
}

// A sound that cannot be read tells so where clips do.
void PlayerView::follow() {
  if (player_.state() == media::PlayerState::failed) pages_->setCurrentWidget(frame_);
  wave_->setTimes(player_.position(), player_.duration());
}

}  // namespace sorvan::views
