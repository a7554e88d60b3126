#include "shell/views/plain_scroll_area.h"

#include <QScrollArea>

namespace sorvan::views {

QScrollArea* plainScrollArea(QWidget* contents) {
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFocusPolicy(Qt::NoFocus);
  area->viewport()->setAutoFillBackground(false);
  area->setWidget(contents);
  // Last, because the area makes what it takes fill its background.
  contents->setAutoFillBackground(false);
  return area;
}

}  // namespace sorvan::views
