// How loud a sound is over its length, with the place that is heard now.
#pragma once

#include <QWidget>

#include <optional>
#include <vector>

#include "shell/views/room.h"

namespace sorvan::views {

// Measures the sound beside the main thread. A press or a drag asks for a place. Main thread.
class WaveStrip final : public QWidget {
  Q_OBJECT

 public:
  explicit WaveStrip(QWidget* parent = nullptr);

  // An empty path clears it.
  void setSound(const QString& path);
  void setTimes(double position, double duration);  // seconds
  const std::vector<float>& levels() const { return levels_; }

 Q_SIGNALS:
  void placeChosen(double seconds);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QRect ground() const;
  // Where the bars are, in pixels.
  QRectF inside() const;
  void choose(double x);
  void paintBars(QPainter& painter, double heardX) const;
  void paintPointer(QPainter& painter) const;

  QString path_;
  std::vector<float> levels_;  // empty until they are measured
  double position_ = 0;
  double duration_ = 0;
  std::optional<double> pointerX_;  // the place that a press would choose
};

}  // namespace sorvan::views
