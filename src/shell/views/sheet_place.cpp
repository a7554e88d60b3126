#include "shell/views/sheet_place.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVariantAnimation>

#include "media/player.h"
#include "shell/sheet_texts.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/job_cell.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kInset = 4;    // around the picture, for the ring of the selection
constexpr int kRadius = 6;
constexpr int kFrame = 40;   // milliseconds between two pictures of what moves
constexpr int kIcon = 22;
constexpr int kLine = 3;
constexpr int kBadge = 22;  // the number, a square when it is short
constexpr int kBadgeInset = 8;
constexpr int kNarrow = 380;  // below it a model's name has too little room beside the marks
constexpr int kWordsBesideMarks = 46;
constexpr int kWordsOverMarks = 68;
constexpr int kMessage = 420;  // the widest a message is

bool hasAction(const JobDisplay& job) {
  return job.action != JobAction::none && job.action != JobAction::show && !job.actionTitle.isEmpty();
}

}  // namespace

PlacePicture::PlacePicture(ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractButton(parent),
      thumbnails_(thumbnails),
      action_(new Button({}, ButtonVariant::quiet, this)),
      landing_(new QVariantAnimation(this)) {
  setFocusPolicy(Qt::StrongFocus);
  setProperty(ownFocusProperty, true);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  action_->setControlSize(ControlSize::compact);
  action_->hide();
  landing_->setStartValue(0.0);
  landing_->setEndValue(1.0);
  connect(action_, &QAbstractButton::clicked, this, &PlacePicture::jobActionRequested);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  connect(&motion_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
  connect(landing_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

PlacePicture::~PlacePicture() = default;

void PlacePicture::show(const PlaceDisplay& place) {
  const bool landed = place_.id == place.id && place_.asset.isNull() && !place.asset.isNull();
  const bool another = place_.asset != place.asset;
  place_ = place;
  setAccessibleName(place.accessibleName);
  setAccessibleDescription(place.fileName);
  if (another) setPlaying(false);
  const bool work = place.asset.isNull();
  action_->setVisible(work && hasAction(place.job));
  action_->setText(place.job.actionTitle);
  action_->setVariant(place.job.action == JobAction::cancel ? ButtonVariant::quiet : ButtonVariant::secondary);
  action_->setAccessibleDescription(place.modelName);
  const bool moves = work && isMoving(place.job) && !Theme::instance().reducedMotion();
  if (moves && !motion_.isActive()) motion_.start(kFrame);
  if (!moves) motion_.stop();
  if (landed) land();
  placeAction();
  update();
}

// A result fades into its place.
void PlacePicture::land() {
  landing_->setDuration(Theme::instance().reducedMotion() ? metrics().motionFast : metrics().motionSlow);
  landing_->start();
}

void PlacePicture::setSelected(bool selected) {
  selected_ = selected;
  update();
}

void PlacePicture::setPlaying(bool playing) {
  if (playing == isPlaying() || (playing && place_.kind != CellKind::video)) return;
  if (!playing) {
    player_.reset();
    return update();
  }
  player_ = std::make_unique<media::Player>();
  player_->setMuted(true);
  player_->setLooping(true);
  player_->setFrameSize(size() * devicePixelRatioF());
  connect(player_.get(), &media::Player::frameChanged, this, qOverload<>(&QWidget::update));
  player_->open(place_.filePath);
  player_->play();
}

// Below the words, and inside a place that is low.
void PlacePicture::placeAction() {
  const QSize wanted = action_->sizeHint();
  const int lines = place_.job.message.isEmpty() ? 0 : 14;
  const int lowest = height() - kInset - 8 - wanted.height();
  const int top = std::min(height() / 2 + 44 + lines, lowest);
  action_->setGeometry(QRect(QPoint((width() - wanted.width()) / 2, top), wanted));
}

void PlacePicture::resizeEvent(QResizeEvent*) {
  placeAction();
  if (player_) player_->setFrameSize(size() * devicePixelRatioF());
}

// As large as the place, of the file itself where that is a picture.
ThumbnailStore::Answer PlacePicture::largePicture() const {
  const int side = qRound(std::max(width(), height()) * devicePixelRatioF());
  const QString own = place_.kind == CellKind::image ? place_.filePath : QString();
  return thumbnails_.picture(own.isEmpty() ? place_.thumbnailPath : own, place_.thumbnailPath, side);
}

QPixmap PlacePicture::picture() {
  if (player_ && !player_->frame().isNull()) return QPixmap::fromImage(player_->frame());
  const auto large = largePicture();
  if (large.state == ThumbnailStore::State::ready) return large.picture;
  return thumbnails_.picture(place_.thumbnailPath, {}, 256).picture;
}

void PlacePicture::paintItem(QPainter& painter, const QRect& area) {
  const Colors& c = colors();
  const QPixmap shown = picture();
  if (shown.isNull()) {
    const ThumbnailStore::State state = largePicture().state;
    if (state == ThumbnailStore::State::loading) return;
    const bool missing = state == ThumbnailStore::State::missing;
    paintIcon(painter, u"triangle-alert"_s, area.adjusted(0, -14, 0, -14), 20, {c.textTertiary});
    paintText(painter, area.adjusted(0, 22, 0, 22),
              {missing ? shell::texts::unreadablePicture : texts::pictureUnreadable(), fontFor(Type::small), c.textSecondary,
               Qt::AlignCenter});
    return;
  }
  const QSizeF size = QSizeF(shown.size()).scaled(QSizeF(area.size()), Qt::KeepAspectRatio);
  const QRectF place(QPointF(area.center()) - QPointF(size.width() / 2 - 0.5, size.height() / 2 - 0.5), size);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (landing_->state() == QAbstractAnimation::Running) painter.setOpacity(landing_->currentValue().toDouble());
  painter.drawPixmap(place, shown, QRectF(shown.rect()));
  painter.setOpacity(1);
}

// What the job says of itself, in the middle of where its result will be.
void PlacePicture::paintWork(QPainter& painter, const QRect& area) {
  const Colors& c = colors();
  const JobDisplay& job = place_.job;
  const bool failed = job.state == JobState::failed;
  const int middle = area.center().y();
  paintJobIcon(painter, QRectF(area.left(), middle - 56, area.width(), kIcon + 8), job.state, kIcon);
  const int width = std::min(area.width() - 24, kMessage);
  const QRect words(area.center().x() - width / 2, middle - 16, width, failed ? 60 : 20);
  const QString text = failed && !job.message.isEmpty() ? job.message : job.detail;
  if (failed)
    paintParagraph(painter, words, {text, fontFor(Type::small), c.textSecondary, Qt::AlignHCenter | Qt::AlignTop},
                   lineHeight(Type::small));
  else
    paintText(painter, words, {text, fontFor(Type::body), c.textPrimary, Qt::AlignCenter});
  if (!failed && !job.elapsedText.isEmpty())
    paintText(painter, words.translated(0, 22),
              {job.elapsedText, fontFor(Type::mono), c.textTertiary, Qt::AlignCenter});
  if (!isMoving(job)) return;
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  paintTravellingLine(painter, QRect(area.left(), area.bottom() - kLine + 1, area.width(), kLine));
  painter.restore();
}

// The key that leads here.
void PlacePicture::paintNumber(QPainter& painter, const QRect& area) const {
  const QString number = QString::number(place_.number);
  const QFont font = fontFor(Type::caption, Weight::semibold);
  const QRect badge(area.left() + kBadgeInset, area.top() + kBadgeInset, std::max(kBadge, textWidth(number, font) + 12),
                    kBadge);
  const bool onPicture = !place_.asset.isNull();
  paintPanel(painter, badge, metrics().radiusSmall, onPicture ? colors().pictureBadge : colors().statePressed);
  const QColor ink = onPicture ? colors().pictureBadgeText : colors().textSecondary;
  paintText(painter, badge, {number, font, ink, Qt::AlignCenter});
}

void PlacePicture::paintBadges(QPainter& painter, const QRect& area) {
  paintNumber(painter, area);
  if (place_.asset.isNull()) return;
  if (place_.markText != place_.statusText)
    paintPictureBadge(painter, area, Qt::TopRightCorner, u"check"_s, place_.markText);
  else if (!place_.markText.isEmpty())
    paintPictureBadge(painter, area, Qt::TopRightCorner, {}, place_.markText, statusColorOnPicture(place_.statusToken));
  if (!place_.durationText.isEmpty())
    paintPictureBadge(painter, area, Qt::BottomRightCorner, isPlaying() ? u"pause"_s : u"play"_s, place_.durationText);
}

void PlacePicture::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const QRect area = rect().adjusted(kInset, kInset, -kInset, -kInset);
  const bool work = place_.asset.isNull();
  const bool failed = work && place_.job.state == JobState::failed;
  paintPanel(painter, area, kRadius, work ? c.surfaceRaised : c.surfaceSurround,
             work ? (failed ? c.dangerText : c.lineDefault) : QColor());
  painter.save();
  QPainterPath corners;
  corners.addRoundedRect(area, kRadius, kRadius);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipPath(corners);
  if (work)
    paintWork(painter, area);
  else
    paintItem(painter, area);
  painter.restore();
  paintBadges(painter, area);
  if (underMouse() && !selected_) paintRing(painter, area, kRadius, 1, c.controlBorderStrong);
  if (selected_)
    paintRing(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius + 3, metrics().borderSelection,
              c.accentRing);
  if (!hasFocus() || !FocusRing::keyboardInUse()) return;
  // Around the place, or inside the ring of the selection.
  const double inset = selected_ ? metrics().borderSelection + 2.5 : 0.5;
  paintRing(painter, QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRadius + 3, metrics().borderFocus,
            c.accentRing);
}

void PlacePicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) {
    // The menu is for all that are selected, when this is one of them.
    if (!selected_) Q_EMIT selectRequested(Qt::NoModifier);
    return;
  }
  pressedAt_ = event->position().toPoint();
  pressed_ = true;
  dragging_ = false;
  setFocus(Qt::MouseFocusReason);
  Q_EMIT selectRequested(event->modifiers());
}

void PlacePicture::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton) || !pressed_ || place_.asset.isNull()) return;
  const int distance = (event->position().toPoint() - pressedAt_).manhattanLength();
  if (!dragging_ && distance < QApplication::startDragDistance()) return;
  if (!place_.movable) {
    endDrag();
    return Q_EMIT draggedOut();
  }
  dragging_ = true;
  setCursor(Qt::ClosedHandCursor);
  Q_EMIT dragged(event->globalPosition().toPoint());
}

void PlacePicture::endDrag() {
  pressed_ = false;
  dragging_ = false;
  unsetCursor();
}

void PlacePicture::mouseReleaseEvent(QMouseEvent* event) {
  const bool dropsHere = dragging_;
  endDrag();
  if (!dropsHere) return;
  Q_EMIT dropped(event->globalPosition().toPoint());
}

void PlacePicture::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT opened();
}

void PlacePicture::contextMenuEvent(QContextMenuEvent* event) { Q_EMIT menuRequested(event->globalPos()); }

// All keys belong to the sheet around it.
void PlacePicture::keyPressEvent(QKeyEvent* event) { event->ignore(); }

SheetPlace::SheetPlace(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent),
      picture_(new PlacePicture(thumbnails)),
      model_(new ElidedLabel(Type::body, &Colors::textPrimary, Qt::ElideRight)),
      facts_(new ElidedLabel(Type::small, &Colors::textTertiary, Qt::ElideRight)),
      stars_(new StarRow),
      heart_(new HeartButton),
      review_(new IconButton(u"circle-check"_s, shell::texts::reviewMark, u"P"_s)),
      remove_(new IconButton(u"x"_s, shell::texts::removeFromSheet)),
      more_(new IconButton(u"ellipsis"_s, shell::texts::moreActions)) {
  model_->setWeight(Weight::medium);
  review_->setCheckable(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(picture_, 1);
  column->addWidget(buildFoot());
  connect(stars_, &StarRow::chosen, this, &SheetPlace::ratingChosen);
  connect(heart_, &QAbstractButton::clicked, this, &SheetPlace::favoriteToggled);
  connect(review_, &QAbstractButton::clicked, this, &SheetPlace::reviewToggled);
  connect(remove_, &QAbstractButton::clicked, this, &SheetPlace::removeRequested);
  connect(more_, &QAbstractButton::clicked, this,
          [this] { Q_EMIT moreRequested(more_->mapToGlobal(more_->rect().bottomLeft())); });
}

QWidget* SheetPlace::buildFoot() {
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->setContentsMargins(0, 4, 0, 0);
  words->addWidget(model_);
  words->addWidget(facts_);
  words->addStretch(1);
  auto* marks = new QHBoxLayout;
  marks->setSpacing(2);
  marks->addWidget(stars_);
  marks->addWidget(heart_);
  for (IconButton* button : {review_, remove_, more_}) {
    button->setControlSize(ControlSize::compact);
    marks->addWidget(button);
  }
  foot_ = new QBoxLayout(QBoxLayout::LeftToRight);
  foot_->setContentsMargins(6, 2, 4, 0);
  foot_->setSpacing(2);
  foot_->addLayout(words, 1);
  foot_->addLayout(marks);
  auto* foot = new QWidget;
  foot->setLayout(foot_);
  return foot;
}

int SheetPlace::wordsHeight(int width) { return width < kNarrow ? kWordsOverMarks : kWordsBesideMarks; }

// What made the picture is what one compares: the marks make room for its name.
void SheetPlace::resizeEvent(QResizeEvent*) {
  const bool narrow = width() < kNarrow;
  foot_->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  foot_->itemAt(1)->setAlignment(narrow ? Qt::AlignLeft : Qt::Alignment());
  foot_->parentWidget()->setFixedHeight(wordsHeight(width()));
}

void SheetPlace::show(const PlaceDisplay& place) {
  place_ = place;
  picture_->show(place);
  model_->setText(place.modelName);
  QStringList facts{place.costText, place.tookText};
  facts.removeAll(QString());
  facts_->setText(facts.join(u" · "_s));
  facts_->setToolTip(place.fileName);
  const bool item = !place.asset.isNull();
  for (QWidget* control : std::initializer_list<QWidget*>{stars_, heart_, review_, remove_, more_})
    control->setVisible(item);
  stars_->setStars(place.rating);
  heart_->setChecked(place.favorite);
  review_->setChecked(!place.statusText.isEmpty());
  const QString state = place.statusText.isEmpty() ? shell::texts::reviewMark
                                                   : shell::texts::reviewMark + u": "_s + place.markText;
  review_->setName(state, u"P"_s);
  setAccessibleName(place.accessibleName);
}

}  // namespace sorvan::views
