#include "shell/views/transport_bar.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <cmath>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kSteps = 2'000;  // of the position's slider
constexpr int kVolumeWidth = 76;
}  // namespace

// PressSlider

int PressSlider::valueAt(double x) const {
  const int knob = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
  return QStyle::sliderValueFromPosition(minimum(), maximum(), qRound(x) - knob / 2, std::max(1, width() - knob));
}

void PressSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(true);
  setSliderPosition(valueAt(event->position().x()));
}

void PressSlider::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) setSliderPosition(valueAt(event->position().x()));
}

void PressSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) setSliderDown(false);
}

// TransportBar

TransportBar::TransportBar(media::Player& player, QWidget* parent)
    : QWidget(parent),
      player_(player),
      position_(new PressSlider),
      time_(new Label({}, Type::mono, &Colors::textSecondary)),
      back_(new IconButton(u"chevron-left"_s, texts::previousFrame(), u","_s)),
      play_(new IconButton(u"play"_s, texts::play(), u"Space"_s)),
      forward_(new IconButton(u"chevron-right"_s, texts::nextFrame(), u"."_s)),
      loop_(new IconButton(u"repeat"_s, texts::loop())),
      mute_(new IconButton(u"volume-2"_s, texts::mute(), u"M"_s)),
      volume_(new PressSlider),
      screen_(new IconButton(u"maximize"_s, texts::fullScreenClip(), u"F11"_s)) {
  setAccessibleName(texts::player());
  position_->setRange(0, kSteps);
  position_->setSingleStep(kSteps / 100);
  position_->setAccessibleName(texts::playingPosition());
  volume_->setRange(0, 100);
  volume_->setFixedWidth(kVolumeWidth);
  volume_->setAccessibleName(texts::volume());
  volume_->setToolTip(texts::volume());
  loop_->setCheckable(true);
  time_->setMinimumWidth(150);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(16, 0, 16, 4);
  row->setSpacing(4);
  row->addWidget(time_);
  row->addStretch(1);
  for (IconButton* button : {back_, play_, forward_}) row->addWidget(button);
  row->addStretch(1);
  for (QWidget* end : std::initializer_list<QWidget*>{loop_, mute_, volume_, screen_}) row->addWidget(end);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 2, 0, 0);
  column->setSpacing(0);
  auto* line = new QHBoxLayout;
  line->setContentsMargins(12, 0, 12, 0);
  line->addWidget(position_);
  column->addLayout(line);
  column->addLayout(row);
  connect(position_, &QSlider::valueChanged, this,
          [this](int step) { player_.seek(player_.duration() * step / kSteps); });
  connect(volume_, &QSlider::valueChanged, this, [this](int percent) {
    player_.setMuted(percent == 0);
    if (percent > 0) player_.setVolume(percent / 100.0);
  });
  connect(back_, &IconButton::clicked, this, [this] { player_.stepFrames(-1); });
  connect(forward_, &IconButton::clicked, this, [this] { player_.stepFrames(+1); });
  connect(play_, &IconButton::clicked, &player_, &media::Player::togglePlaying);
  connect(loop_, &IconButton::clicked, this, [this] { player_.setLooping(loop_->isChecked()); });
  connect(mute_, &IconButton::clicked, this, [this] { player_.setMuted(!player_.isMuted()); });
  connect(screen_, &IconButton::clicked, this, &TransportBar::fullScreenPressed);
  connect(&player_, &media::Player::positionChanged, this, &TransportBar::refreshTime);
  connect(&player_, &media::Player::frameChanged, this, &TransportBar::refreshTime);
  connect(&player_, &media::Player::stateChanged, this, &TransportBar::refresh);
  connect(&player_, &media::Player::playingChanged, this, &TransportBar::refresh);
  connect(&player_, &media::Player::volumeChanged, this, &TransportBar::refreshVolume);
  refresh();
  refreshVolume();
}

void TransportBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, 0, width(), 1), colors().lineSubtle);
}

bool TransportBar::event(QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return QWidget::event(event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const QWidget* focused = focusWidget();
  const bool slider = focused == position_ || focused == volume_;
  const bool button = focused != nullptr && !slider && focused != play_;
  const bool own = slider ? key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_Left || key == Qt::Key_Right
                          : button && key == Qt::Key_Space;
  event->setAccepted(own);
  return own || QWidget::event(event);
}

QString TransportBar::timeText() const { return time_->text(); }

void TransportBar::refresh() {
  const bool ready = player_.state() == media::PlayerState::ready;
  const bool pictures = player_.facts().hasPicture;
  play_->setIconName(player_.isPlaying() ? u"pause"_s : u"play"_s);
  play_->setName(player_.isPlaying() ? texts::pause() : texts::play(), u"Space"_s);
  for (QWidget* control : std::initializer_list<QWidget*>{position_, back_, play_, forward_})
    control->setEnabled(ready);
  back_->setVisible(pictures || !ready);
  forward_->setVisible(pictures || !ready);
  const bool sound = player_.facts().hasSound || !ready;
  mute_->setVisible(sound);
  volume_->setVisible(sound);
  loop_->setChecked(player_.isLooping());
  screen_->setVisible(pictures);
  refreshTime();
}

void TransportBar::setImmersed(bool immersed) {
  screen_->setName(immersed ? texts::leaveFullScreen() : texts::fullScreenClip(), immersed ? u"Esc"_s : u"F11"_s);
}

void TransportBar::refreshTime() {
  const double now = player_.position();
  const double whole = player_.duration();
  const QString text = tenthsText(now) + u" / "_s + tenthsText(whole);
  if (text != time_->text()) {
    time_->setText(text);
    position_->setAccessibleDescription(texts::positionOf(tenthsText(now), tenthsText(whole)));
  }
  if (position_->isSliderDown()) return;
  const QSignalBlocker quiet(position_);
  position_->setValue(whole > 0 ? qRound(now / whole * kSteps) : 0);
}

void TransportBar::refreshVolume() {
  const bool muted = player_.isMuted();
  mute_->setIconName(muted ? u"volume-x"_s : u"volume-2"_s);
  mute_->setName(muted ? texts::unmute() : texts::mute(), u"M"_s);
  const QSignalBlocker quiet(volume_);
  volume_->setValue(muted ? 0 : qRound(player_.volume() * 100));
}

QString tenthsText(double seconds) {
  const qint64 tenths = qint64(std::floor(std::max(0.0, seconds) * 10 + 1e-6));
  const qint64 minutes = tenths / 600;
  const QString rest = QStringLiteral("%1.%2").arg(tenths / 10 % 60, 2, 10, QLatin1Char('0')).arg(tenths % 10);
  if (minutes < 60) return QStringLiteral("%1:%2").arg(minutes).arg(rest);
  return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')).arg(rest);
}

}  // namespace sorvan::views
