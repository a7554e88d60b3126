#include "shell/views/touch.h"

#include "shell/views/painting.h"

namespace sorvan::views {

void paintTouch(QPainter& painter, const QRectF& area, double radius, const QAbstractButton& button) {
  if (!button.isEnabled() || !(button.isDown() || button.underMouse())) return;
  paintPanel(painter, area, radius, button.isDown() ? colors().statePressed : colors().stateHover);
}

}  // namespace sorvan::views
