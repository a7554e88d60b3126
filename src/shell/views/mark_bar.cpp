#include "shell/views/mark_bar.h"

#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// The name of the mode, as a button that is on looks.
class ModeLabel final : public Surface {
 public:
  ModeLabel() : Surface(&Colors::stateSelected) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(9, 0, 10, 0);
    row->setSpacing(6);
    row->addWidget(new IconView(u"square-dashed-mouse-pointer"_s, 14, &Colors::accentText));
    auto* words = new Label(texts::markAreas(), Type::small, &Colors::accentText);
    words->setWeight(Weight::medium);
    row->addWidget(words);
    setFixedHeight(metrics().controlCompact);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusControl, colors().stateSelected);
  }
};

}  // namespace

MarkBar::MarkBar(MarkingPresenter& marking, QWidget* parent) : QWidget(parent) {
  setAccessibleName(texts::markAreas());
  auto* hint = new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight);
  hint->setText(texts::markHint());
  clear_ = new Button(texts::clearMarks(), ButtonVariant::quiet);
  auto* done = new Button(texts::done(), ButtonVariant::primary);
  for (Button* button : {clear_, done}) button->setControlSize(ControlSize::compact);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(5, 5, 5, 5);
  row->setSpacing(6);
  row->addWidget(new ModeLabel);
  row->addSpacing(4);
  row->addWidget(hint, 1);
  row->addSpacing(4);
  row->addWidget(clear_);
  row->addWidget(done);
  connect(clear_, &Button::clicked, &marking, &MarkingPresenter::clear);
  connect(done, &Button::clicked, &marking, &MarkingPresenter::done);
  connect(&marking, &MarkingPresenter::changed, this,
          [this, &marking] { clear_->setEnabled(marking.marks().count() > 0); });
  clear_->setEnabled(false);
  hide();
}

void MarkBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintPanel(painter, rect(), metrics().radiusCard, colors().surfaceOverlay, colors().lineDefault);
}

}  // namespace sorvan::views
