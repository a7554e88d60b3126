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

void WaveStrip::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  painter.fillRect(rect(), c.surfaceSurround);
  const QRect area = ground();
  paintPanel(painter, area, metrics().radiusPanel, c.waveGround);
  const QRectF inner = QRectF(area).adjusted(16, 20, -16, -20);
  // Only the beginning of a very long sound is measured; its bars take their share of the width.
  const double measured = duration_ > core::waveformSeconds ? core::waveformSeconds / duration_ : 1;
  const double step = inner.width() * measured / kBars;
  const double heardX = duration_ > 0 ? inner.left() + inner.width() * position_ / duration_ : inner.left();
  QLinearGradient tint(inner.topLeft(), inner.topRight());
  tint.setColorAt(0, c.waveFrom);
  tint.setColorAt(1, c.waveTo);
  painter.setRenderHint(QPainter::Antialiasing);
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
  if (duration_ > 0) painter.fillRect(QRectF(heardX - 0.75, area.top() + 8, 1.5, area.height() - 16), Qt::white);
}

void WaveStrip::choose(double x) {
  const QRectF inner = QRectF(ground()).adjusted(16, 0, -16, 0);
  if (duration_ > 0 && inner.width() > 0)
    Q_EMIT placeChosen(std::clamp((x - inner.left()) / inner.width(), 0.0, 1.0) * duration_);
}

void WaveStrip::mousePressEvent(QMouseEvent* event) { choose(event->position().x()); }

void WaveStrip::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) choose(event->position().x());
}

}  // namespace sorvan::views
