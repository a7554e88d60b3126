// The controls of a player.
#pragma once

#include <QSlider>
#include <QWidget>

#include "media/player.h"
#include "shell/views/room.h"

namespace sorvan::views {

class IconButton;
class Label;

// A slider that goes to where it is pressed.
class PressSlider final : public QSlider {
  Q_OBJECT

 public:
  explicit PressSlider(QWidget* parent = nullptr) : QSlider(Qt::Horizontal, parent) {}

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  int valueAt(double x) const;
};

// Follows one player, which outlives it: position, play and pause, single frames, loop, mute and volume.
class TransportBar final : public QWidget {
  Q_OBJECT

 public:
  explicit TransportBar(media::Player& player, QWidget* parent = nullptr);
  // “0:08.4 / 0:28.0”.
  QString timeText() const;
  // Whether the clip has the whole screen.
  void setImmersed(bool immersed);

 Q_SIGNALS:
  void fullScreenPressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  // Keys that mean something to the focused control are not taken for those of the view around it.
  bool event(QEvent* event) override;

 private:
  void refresh();
  void refreshTime();
  void refreshVolume();

  media::Player& player_;
  PressSlider* position_;
  Label* time_;
  IconButton* back_;
  IconButton* play_;
  IconButton* forward_;
  IconButton* loop_;
  IconButton* mute_;
  PressSlider* volume_;
  IconButton* screen_;
};

// Seconds as m:ss.t, for what is edited by the tenth.
QString tenthsText(double seconds);

}  // namespace sorvan::views
