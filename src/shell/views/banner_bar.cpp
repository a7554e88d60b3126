#include "shell/views/banner_bar.h"

#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

BannerBar::BannerBar(QWidget* parent)
    : QWidget(parent),
      icon_(new IconView(u"triangle-alert"_s, metrics().iconRegular, &Colors::warningText)),
      text_(new Paragraph({}, Type::small)),
      action_(new Button({})) {
  action_->setControlSize(ControlSize::compact);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 7, 12, 7);
  row->setSpacing(9);
  row->addWidget(icon_);
  row->addWidget(text_, 1, Qt::AlignVCenter);
  row->addWidget(action_);
  connect(action_, &Button::clicked, this, &BannerBar::actionRequested);
  hide();
}

void BannerBar::show(const Banner& banner) {
  warns_ = banner.isWarning;
  icon_->setIcon(warns_ ? u"triangle-alert"_s : u"info"_s, warns_ ? &Colors::warningText : &Colors::textTertiary);
  text_->setParagraph(banner.text);
  action_->setText(banner.actionTitle);
  action_->setVisible(!banner.actionTitle.isEmpty());
  setVisible(!banner.text.isEmpty());
}

void BannerBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  if (warns_) paintPanel(painter, rect(), 0, colors().warningSoft);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
