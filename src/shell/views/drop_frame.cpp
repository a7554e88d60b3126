#include "shell/views/drop_frame.h"

#include <QPainter>

#include "shell/views/theme.h"

namespace sorvan::views {

namespace {
constexpr int kWidth = 2;
}

DropFrame::DropFrame(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void DropFrame::open() {
  setGeometry(parentWidget()->rect());
  show();
  raise();
}

void DropFrame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(QPen(colors().accentRing, kWidth));
  painter.drawRect(rect().adjusted(kWidth / 2, kWidth / 2, -kWidth, -kWidth));
}

}  // namespace sorvan::views
