// The edge of a panel, by which the pointer makes it wider or narrower.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

// Tells how far it is dragged; it moves with the panel, which its owner lays out.
class PaneHandle final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int width = 7;

  explicit PaneHandle(QWidget* parent = nullptr);

 Q_SIGNALS:
  // The pointer stands so many pixels to the right of where it took hold.
  void dragged(int pixels);
  void released();
  // A double click: the width of a new window.
  void resetRequested();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  std::optional<int> grabbedAt_;  // in screen coordinates
};

}  // namespace sorvan::views
