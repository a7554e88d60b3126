// The edge of a panel, by which pointer and keyboard make it wider or narrower.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

// How wide the panel is, and may be, in logical pixels.
struct PaneWidth {
  int now = 0;
  int least = 0;
  int most = 0;
};

// Tells how far it is moved; it moves with the panel, which its owner lays out. Arrows move it by steps, Home and End
// to its bounds, Enter back to the width of a new window.
class PaneHandle final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int width = 7;
  // Which side of the edge the panel is on: the arrow that points away from it makes it wider.
  enum class Panel { left, right };

  PaneHandle(const QString& name, Panel panel, QWidget* parent = nullptr);

  void setPaneWidth(const PaneWidth& pane);

 Q_SIGNALS:
  // The edge stands so many pixels to the right of where it was taken hold of.
  void dragged(int pixels);
  void released();
  // A double click: the width of a new window.
  void resetRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void widenTo(int pixels);

  Panel panel_;
  PaneWidth pane_;
  std::optional<int> grabbedAt_;  // in screen coordinates
};

}  // namespace sorvan::views
