#include "shell/views/viewer_tools.h"

#include <QHBoxLayout>

#include "shell/sheet_texts.h"
#include "shell/views/controls.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/viewer_texts.h"
#include "shell/views/zoom_bar.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

ViewerTools::ViewerTools(PictureCanvas& canvas, QWidget* parent) : QWidget(parent), heart_(new HeartButton) {
  setAccessibleName(texts::itemTools());
  auto* more = new IconButton(u"ellipsis"_s, shell::texts::moreActions);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(new ZoomBar(canvas));
  row->addWidget(heart_);
  row->addWidget(more);
  // A press with the mouse leaves the keyboard with the picture.
  for (QWidget* button : std::initializer_list<QWidget*>{heart_, more}) button->setFocusPolicy(Qt::TabFocus);
  connect(heart_, &QAbstractButton::clicked, this, &ViewerTools::favoriteToggled);
  connect(more, &QAbstractButton::clicked, this,
          [this, more] { Q_EMIT moreRequested(more->mapToGlobal(QPoint(0, more->height() + 4))); });
}

void ViewerTools::setFavorite(bool favorite) { heart_->setChecked(favorite); }

}  // namespace sorvan::views
