#include "shell/views/zoom_bar.h"

#include <QHBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/picture_canvas.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

ZoomBar::ZoomBar(PictureCanvas& canvas, QWidget* parent)
    : QWidget(parent),
      canvas_(canvas),
      less_(new IconButton(u"minus"_s, texts::zoomOut(), u"-"_s)),
      size_(new Label({}, Type::small, &Colors::textSecondary)),
      more_(new IconButton(u"plus"_s, texts::zoomIn(), u"+"_s)),
      fit_(new Button(texts::fit())) {
  setAccessibleName(texts::zoomControls());
  size_->setFixedWidth(46);
  size_->setAlignment(Qt::AlignCenter);
  fit_->setToolTip(texts::fitHelp() + u"  Z"_s);
  fit_->setCheckable(true);
  fit_->setControlSize(ControlSize::compact);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  row->addWidget(less_);
  row->addWidget(size_);
  row->addWidget(more_);
  row->addSpacing(4);
  row->addWidget(fit_);
  // A press with the mouse leaves the keyboard with the picture, whose keys zoom on.
  for (QWidget* button : std::initializer_list<QWidget*>{less_, more_, fit_}) button->setFocusPolicy(Qt::TabFocus);
  connect(less_, &IconButton::clicked, &canvas_, &PictureCanvas::zoomOut);
  connect(more_, &IconButton::clicked, &canvas_, &PictureCanvas::zoomIn);
  connect(fit_, &Button::clicked, &canvas_, &PictureCanvas::toggleFit);
  connect(&canvas_, &PictureCanvas::zoomChanged, this, &ZoomBar::refresh);
  refresh();
}

QString ZoomBar::text() const { return size_->text(); }

void ZoomBar::refresh() {
  for (QWidget* part : std::initializer_list<QWidget*>{less_, size_, more_, fit_}) part->setVisible(canvas_.hasPicture());
  const int percent = canvas_.percent();
  size_->setText(percent > 0 ? texts::percent(percent) : QString());
  size_->setAccessibleName(texts::zoomIs(size_->text()));
  less_->setEnabled(canvas_.canZoomOut());
  more_->setEnabled(canvas_.canZoomIn());
  fit_->setChecked(canvas_.isFitted());
  fit_->setVariant(canvas_.isFitted() ? ButtonVariant::secondary : ButtonVariant::quiet);
}

}  // namespace sorvan::views
