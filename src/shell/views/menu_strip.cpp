#include "shell/views/menu_strip.h"

#include <QHBoxLayout>
#include <QMenuBar>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

class ActivityPill final : public QAbstractButton {
 public:
  explicit ActivityPill(QWidget* parent = nullptr) : QAbstractButton(parent), spinner_(new Spinner(14, this)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(texts::openHistory());
    spinner_->setGeometry(9, 5, 14, 14);
  }
  QSize sizeHint() const override { return {textWidth(text(), fontFor(Type::small, Weight::medium)) + 40, 24}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
    paintPanel(painter, rect(), height() / 2.0, underMouse() ? c.statePressed : c.stateHover);
    paintText(painter, rect().adjusted(29, 0, -6, 0), {text(), fontFor(Type::small, Weight::medium), c.textSecondary});
  }

 private:
  Spinner* spinner_;
};

MenuStrip::MenuStrip(QWidget* parent)
    : QWidget(parent),
      bar_(new QMenuBar),
      activity_(new ActivityPill),
      settings_(new IconButton(u"settings"_s, texts::accountSettings(), u"Ctrl+,"_s)) {
  setFixedHeight(metrics().menuStrip);
  bar_->setNativeMenuBar(false);
  settings_->setControlSize(ControlSize::compact);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 0, 10, 1);
  row->setSpacing(6);
  row->addWidget(bar_, 1);
  row->addWidget(activity_);
  row->addWidget(settings_);
  connect(activity_, &QAbstractButton::clicked, this, &MenuStrip::activityPressed);
  connect(settings_, &IconButton::clicked, this, &MenuStrip::settingsPressed);
  setActivity({});
}

void MenuStrip::setActivity(const QString& text) {
  activity_->setText(text);
  activity_->setAccessibleName(text);
  activity_->setVisible(!text.isEmpty());
  activity_->updateGeometry();
}

void MenuStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
