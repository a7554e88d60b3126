// The ring around the control that holds the keyboard, shown only while a person works with keys.
#pragma once

#include <QPointer>
#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

// Draws over everything in its window and takes no events. One a window; it follows the application's focus. Fields
// of one line draw their own border and get no ring.
class FocusRing final : public QWidget {
  Q_OBJECT

 public:
  // `window` owns the ring.
  explicit FocusRing(QWidget* window);

  // Whether the ring is on now: for tests and for cells that draw the keyboard's place themselves.
  bool isOn() const { return on_ && target_; }
  static bool keyboardInUse();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow(QWidget* now);
  void place();

  QPointer<QWidget> target_;
  bool on_ = false;
};

// A control with this property has half circles for ends, and so has its ring.
inline constexpr const char* roundProperty = "sorvanRound";
// A control with this property draws its focus itself.
inline constexpr const char* ownFocusProperty = "sorvanOwnFocus";

}  // namespace sorvan::views
