#include "shell/views/feedback.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFrame = 40;           // milliseconds between two pictures of a spinner
constexpr double kLineShare = 0.34;  // how much of the track the travelling line covers
constexpr int kToastMargin = 20;     // room for the shadow
constexpr int kToastLift = 4;
constexpr int kBesideRoom = 110;     // what a toast holds beside its text and its action: icon, close, air

QColor softOf(AlertTone tone) {
  const Colors& c = colors();
  switch (tone) {
    case AlertTone::success:
      return c.successSoft;
    case AlertTone::warning:
      return c.warningSoft;
    case AlertTone::error:
      return c.dangerSoft;
    case AlertTone::information:
      break;
  }
  return c.infoSoft;
}

std::optional<qint64> heldAt;

// From one share of the track to another; what lies outside is not there.
void paintPartOfLine(QPainter& painter, const QRectF& area, double start, double end) {
  paintPanel(painter, area, 0, colors().controlTrack);
  const double left = area.left() + std::max(0.0, start) * area.width();
  const double right = area.left() + std::min(1.0, end) * area.width();
  if (right > left) painter.fillRect(QRectF(left, area.top(), right - left, area.height()), colors().accentFill);
}

}  // namespace

qint64 motionClock() {
  static const QElapsedTimer clock = [] {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }();
  if (heldAt) return *heldAt;
  return Theme::instance().reducedMotion() ? 0 : clock.elapsed();
}

void holdMotion(std::optional<qint64> milliseconds) { heldAt = milliseconds; }

double spinnerDegrees() { return static_cast<double>(motionClock() % 1000) * 0.36; }

void paintTravellingLine(QPainter& painter, const QRectF& area) {
  if (Theme::instance().reducedMotion()) return paintStillLine(painter, area);
  const double part = static_cast<double>(motionClock() % metrics().motionShimmer) / metrics().motionShimmer;
  const double start = part * (1 + kLineShare) - kLineShare;
  paintPartOfLine(painter, area, start, start + kLineShare);
}

void paintStillLine(QPainter& painter, const QRectF& area) { paintPartOfLine(painter, area, 0, 0.5); }

Spinner::Spinner(int side, QWidget* parent) : QWidget(parent), side_(side) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(&tick_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void Spinner::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintSpinner(painter, rect(), side_, colors().accentText, spinnerDegrees());
}

void Spinner::showEvent(QShowEvent*) {
  if (!Theme::instance().reducedMotion()) tick_.start(kFrame);
}

void Spinner::hideEvent(QHideEvent*) { tick_.stop(); }

QString iconOf(AlertTone tone) {
  switch (tone) {
    case AlertTone::success:
      return u"circle-check"_s;
    case AlertTone::warning:
      return u"triangle-alert"_s;
    case AlertTone::error:
      return u"circle-alert"_s;
    case AlertTone::information:
      break;
  }
  return u"info"_s;
}

ColorRole colorOf(AlertTone tone) {
  switch (tone) {
    case AlertTone::success:
      return &Colors::successText;
    case AlertTone::warning:
      return &Colors::warningText;
    case AlertTone::error:
      return &Colors::dangerText;
    case AlertTone::information:
      break;
  }
  return &Colors::infoText;
}

// NoticeBar

NoticeBar::NoticeBar(AlertTone tone, const QString& text, QWidget* parent) : QWidget(parent), tone_(tone) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(10, 5, 6, 5);
  layout->setSpacing(9);
  icon_ = new IconView(iconOf(tone), metrics().iconSmall, colorOf(tone));
  layout->addWidget(icon_, 0, Qt::AlignVCenter);
  auto* words = new Paragraph(text, Type::small);
  words->setMinimumWidth(40);
  layout->addWidget(words, 1, Qt::AlignVCenter);
  setMinimumHeight(32);
  setAccessibleName(text);
}

void NoticeBar::setIcon(const QString& name) { icon_->setIcon(name, colorOf(tone_)); }

void NoticeBar::setPlain() {
  plain_ = true;
  update();
}

Button* NoticeBar::addAction(const QString& title) {
  auto* button = new Button(title);
  button->setControlSize(ControlSize::compact);
  layout()->addWidget(button);
  return button;
}

void NoticeBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintPanel(painter, rect(), metrics().radiusCard, plain_ ? colors().stateHover : softOf(tone_));
}

// ToastCard

// A short word of what happened has its action in the same line; more text has it below.
static bool standsBeside(const Toast& toast) {
  if (toast.actionTitle.isEmpty() || !toast.secondLine.isEmpty()) return false;
  const int words = textWidth(toast.text, fontFor(Type::body));
  const int action = textWidth(toast.actionTitle, fontFor(Type::small, Weight::medium));
  return words + action + kBesideRoom <= metrics().toastWidth;
}

ToastCard::ToastCard(const Toast& toast, QWidget* parent) : QWidget(parent), id_(toast.id) {
  setFixedWidth(metrics().toastWidth + 2 * kToastMargin);
  setAccessibleName(toast.text);
  setAccessibleDescription(toast.secondLine);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kToastMargin + 12, kToastMargin + 11 - kToastLift, kToastMargin + 8, kToastMargin + 11);
  row->setSpacing(10);
  // The buttons are higher than a line of text: they begin above it, and the text a little below them.
  auto* mark = new QVBoxLayout;
  mark->setContentsMargins(0, kToastLift + 1, 0, 0);
  mark->addWidget(new IconView(iconOf(toast.tone), metrics().iconRegular, colorOf(toast.tone)), 0, Qt::AlignTop);
  row->addLayout(mark);
  auto* words = new QVBoxLayout;
  words->setContentsMargins(0, kToastLift, 0, 0);
  words->setSpacing(3);
  words->addWidget(new Paragraph(toast.text));
  if (!toast.secondLine.isEmpty())
    words->addWidget(new Paragraph(toast.secondLine, Type::small, &Colors::textSecondary));
  const bool beside = standsBeside(toast);
  if (!toast.actionTitle.isEmpty() && !beside) {
    auto* action = new Button(toast.actionTitle);
    action->setControlSize(ControlSize::compact);
    words->addSpacing(5);
    words->addWidget(action, 0, Qt::AlignLeft);
    connect(action, &Button::clicked, this, [this] { Q_EMIT actionRequested(id_); });
  }
  row->addLayout(words, 1);
  if (beside) {
    auto* action = new Button(toast.actionTitle, ButtonVariant::link);
    action->setControlSize(ControlSize::compact);
    row->addWidget(action, 0, Qt::AlignTop);
    connect(action, &Button::clicked, this, [this] { Q_EMIT actionRequested(id_); });
  }
  auto* close = new IconButton(u"x"_s, texts::dismiss());
  close->setControlSize(ControlSize::compact);
  close->setIconSide(metrics().iconSmall);
  row->addWidget(close, 0, Qt::AlignTop);
  connect(close, &IconButton::clicked, this, [this] { Q_EMIT dismissed(id_); });
  leave_.setSingleShot(true);
  leave_.setInterval(metrics().motionToastHold);
  connect(&leave_, &QTimer::timeout, this, [this] { Q_EMIT dismissed(id_); });
  leaves_ = toast.leavesByItself();
  for (QAbstractButton* button : findChildren<QAbstractButton*>()) button->installEventFilter(this);
  hold();
}

void ToastCard::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const QRect panel = rect().adjusted(kToastMargin, kToastMargin, -kToastMargin, -kToastMargin);
  paintShadow(painter, panel, metrics().radiusPanel, c.popoverShadow);
  paintPanel(painter, panel, metrics().radiusPanel, c.surfaceOverlay,
             Theme::instance().isDark() ? c.controlBorder : c.lineDefault);
}

void ToastCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  Q_EMIT dismissed(id_);
}

void ToastCard::enterEvent(QEnterEvent*) {
  hovered_ = true;
  hold();
}

void ToastCard::leaveEvent(QEvent*) {
  hovered_ = false;
  hold();
}

bool ToastCard::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
    focused_ = event->type() == QEvent::FocusIn;
    hold();
  }
  return QWidget::eventFilter(watched, event);
}

// Nothing goes from under the pointer or the keyboard.
void ToastCard::hold() {
  if (hovered_ || focused_ || !leaves_) return leave_.stop();
  if (!leave_.isActive()) leave_.start();
}

// Toaster

Toaster::Toaster(AlertsPresenter& alerts, QWidget* parent) : QWidget(parent), alerts_(alerts) {
  setAccessibleName(texts::messages());
  connect(&alerts_, &AlertsPresenter::toastsChanged, this, &Toaster::rebuild);
  rebuild();
}

void Toaster::setCorner(QPoint corner) {
  corner_ = corner;
  place();
}

void Toaster::rebuild() {
  const std::vector<Toast>& toasts = alerts_.toasts();
  const auto shown = [&toasts](quint64 id) {
    return std::any_of(toasts.begin(), toasts.end(), [id](const Toast& toast) { return toast.id == id; });
  };
  std::erase_if(cards_, [&](ToastCard* card) {
    if (shown(card->id())) return false;
    card->hide();
    card->deleteLater();
    return true;
  });
  for (const Toast& toast : toasts) {
    if (std::any_of(cards_.begin(), cards_.end(), [&](ToastCard* card) { return card->id() == toast.id; })) continue;
    auto* card = new ToastCard(toast, this);
    connect(card, &ToastCard::actionRequested, this, [this](quint64 id) { alerts_.performToastAction(id); });
    connect(card, &ToastCard::dismissed, this, [this](quint64 id) { alerts_.dismissToast(id); });
    card->show();
    cards_.push_back(card);
    QAccessibleEvent announcement(card, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
  }
  place();
}

void Toaster::place() {
  setVisible(!cards_.empty());
  const int width = metrics().toastWidth + 2 * kToastMargin;
  int y = 0;
  for (ToastCard* card : cards_) {
    card->setGeometry(0, y, width, card->layout()->heightForWidth(width));
    y = card->geometry().bottom() + 1 - 2 * kToastMargin + metrics().toastGap;  // the shadows overlap
  }
  const int height = cards_.empty() ? 0 : cards_.back()->geometry().bottom() + 1;
  setGeometry(QRect(corner_ + QPoint(kToastMargin - width, kToastMargin - height), QSize(width, height)));
  raise();
}

}  // namespace sorvan::views
