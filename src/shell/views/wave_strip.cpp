#include "shell/views/wave_strip.h"

#include <QCoreApplication>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include "base/task.h"
#include "core/waveform.h"
#include "shell/views/painting.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {

namespace {
constexpr int kBars = 240;
constexpr int kTallest = 260;
constexpr int kPadding = 32;

std::vector<float> measure(const QString& path) {
  try {
    return core::waveformLevels(path, kBars);
  } catch (const std::exception&) {
    return {};  // the player tells what is wrong with the file
  }
}
}  // namespace

WaveStrip::WaveStrip(QWidget* parent) : QWidget(parent) {
  setAccessibleName(texts::waveform());
  setCursor(Qt::PointingHandCursor);
  setMouseTracking(true);
}

void WaveStrip::setSound(const QString& path) {
  if (path == path_) return;
  path_ = path;
  levels_.clear();
  setTimes(0, 0);
  update();
  if (path.isEmpty()) return;
  runOnPool([path, self = QPointer<WaveStrip>(this)] {
    const std::vector<float> levels = measure(path);
    if (!qApp) return;
    QMetaObject::invokeMethod(
        qApp,
        [self, path, levels] {
          if (!self || self->path_ != path) return;
          self->levels_ = levels;
          self->update();
        },
        Qt::QueuedConnection);
  });
}

void WaveStrip::setTimes(double position, double duration) {
  // The playhead moves by less than a pixel most of the time.
  const bool seen = duration != duration_ || std::abs(position - position_) * width() >= duration;
  if (!seen) return;
  position_ = position;
  duration_ = duration;
  update();
}

QRect WaveStrip::ground() const {
  const int tall = std::min(kTallest, height() - 2 * kPadding);
  return {kPadding, (height() - tall) / 2, width() - 2 * kPadding, tall};
}

QRectF WaveStrip::inside() const { return QRectF(ground()).adjusted(16, 20, -16, -20); }

void WaveStrip::paintBars(QPainter& painter, double heardX) const {
  const QRectF inner = inside();
  // Only the beginning of a very long sound is measured; its bars take their share of the width.
  const double measured = duration_ > core::waveformSeconds ? core::waveformSeconds / duration_ : 1;
  const double step = inner.width() * measured / kBars;
  QLinearGradient tint(inner.topLeft(), inner.topRight());
  tint.setColorAt(0, colors().waveFrom);
  tint.setColorAt(1, colors().waveTo);
  painter.setPen(Qt::NoPen);
  painter.setBrush(tint);
  for (size_t bar = 0; bar < levels_.size(); ++bar) {
    const double x = inner.left() + double(bar) * step;
    const double tall = std::max(2.0, double(levels_[bar]) * inner.height());
    painter.setOpacity(x <= heardX ? 1.0 : 0.45);
    const double wide = std::max(1.0, step * 0.62);
    painter.drawRoundedRect(QRectF(x, inner.center().y() - tall / 2, wide, tall), wide / 2, wide / 2);
  }
  painter.setOpacity(1);
}

// The place under the pointer and its time.
void WaveStrip::paintPointer(QPainter& painter) const {
  const QRectF inner = inside();
  if (!pointerX_ || duration_ <= 0 || inner.width() <= 0) return;
  const double x = std::clamp(*pointerX_, inner.left(), inner.right());
  const QRect area = ground();
  painter.setOpacity(0.55);
  painter.fillRect(QRectF(x - 0.5, area.top() + 8, 1, area.height() - 16), Qt::white);
  painter.setOpacity(1);
  const QString time = clockText((x - inner.left()) / inner.width() * duration_);
  const QFont font = fontFor(Type::caption, Weight::semibold);
  const int width = textWidth(time, font) + 12;
  const int left = std::clamp(qRound(x) - width / 2, area.left() + 4, area.right() - width - 4);
  const QRect badge(left, area.top() + 4, width, 17);
  paintPanel(painter, badge, metrics().radiusSmall, colors().pictureBadge);
  paintText(painter, badge, {time, font, colors().pictureBadgeText, Qt::AlignCenter});
}

void WaveStrip::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), c.surfaceSurround);
  const QRect area = ground();
  paintPanel(painter, area, metrics().radiusPanel, c.waveGround);
  const QRectF inner = inside();
  const double heardX = duration_ > 0 ? inner.left() + inner.width() * position_ / duration_ : inner.left();
  paintBars(painter, heardX);
  if (duration_ > 0) painter.fillRect(QRectF(heardX - 0.75, area.top() + 8, 1.5, area.height() - 16), Qt::white);
  paintPointer(painter);
}

void WaveStrip::choose(double x) {
  const QRectF inner = inside();
  if (duration_ > 0 && inner.width() > 0)
    Q_EMIT placeChosen(std::clamp((x - inner.left()) / inner.width(), 0.0, 1.0) * duration_);
}

void WaveStrip::mousePressEvent(QMouseEvent* event) { choose(event->position().x()); }

void WaveStrip::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) choose(event->position().x());
  pointerX_ = event->position().x();
  update();
}

void WaveStrip::leaveEvent(QEvent*) {
  pointerX_.reset();
  update();
}

}  // namespace sorvan::views
