#include "shell/views/menu_strip.h"

#include <QHBoxLayout>
#include <QMenuBar>
#include <QPainter>

#include "shell/account_page_texts.h"
#include "shell/views/balance_badge.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

class ActivityPill final : public QAbstractButton {
 public:
  explicit ActivityPill(QWidget* parent = nullptr) : QAbstractButton(parent), spinner_(new Spinner(14, this)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setProperty(roundProperty, true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(texts::openHistory());
    spinner_->setGeometry(9, 5, 14, 14);
  }
  QSize sizeHint() const override { return {textWidth(text(), fontFor(Type::small, Weight::medium)) + 40, 24}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
    paintPanel(painter, rect(), height() / 2.0, c.stateHover);
    paintTouch(painter, rect(), height() / 2.0, *this);
    paintText(painter, rect().adjusted(29, 0, -6, 0), {text(), fontFor(Type::small, Weight::medium), c.textSecondary});
  }

 private:
  Spinner* spinner_;
};

MenuStrip::MenuStrip(QWidget* parent)
    : QWidget(parent),
      bar_(new QMenuBar),
      activity_(new ActivityPill),
      balance_(new BalanceBadge),
      account_(new IconButton(u"circle-user-round"_s, shell::texts::accountTitle())) {
  setFixedHeight(metrics().menuStrip);
  bar_->setNativeMenuBar(false);
  bar_->setProperty(ownFocusProperty, true);  // the ring is around the title that is current
  account_->setControlSize(ControlSize::compact);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 0, 10, 1);
  row->setSpacing(6);
  row->addWidget(bar_, 1);
  row->addWidget(activity_);
  row->addWidget(balance_);
  row->addWidget(account_);
  connect(activity_, &QAbstractButton::clicked, this, &MenuStrip::activityPressed);
  connect(balance_, &BalanceBadge::clicked, this, &MenuStrip::accountPressed);
  connect(account_, &IconButton::clicked, this, &MenuStrip::accountPressed);
  setActivity({});
}

void MenuStrip::setActivity(const QString& text) {
  activity_->setText(text);
  activity_->setAccessibleName(text);
  activity_->setVisible(!text.isEmpty());
  activity_->updateGeometry();
}

void MenuStrip::setBalance(const BadgeDisplay& balance) { balance_->show(balance); }

std::vector<QWidget*> MenuStrip::stops() const {
  std::vector<QWidget*> found;
  for (int place = 0; place < layout()->count(); ++place) {
    QWidget* part = layout()->itemAt(place)->widget();
    if (!part || part == bar_) continue;
    QList<QWidget*> candidates = part->findChildren<QWidget*>();
    candidates.prepend(part);
    for (QWidget* candidate : candidates) {
      const bool takesTab = (candidate->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
      if (takesTab && candidate->isVisible() && candidate->isEnabled()) found.push_back(candidate);
    }
  }
  return found;
}

bool MenuStrip::focusNextPrevChild(bool next) {
  const std::vector<QWidget*> all = stops();
  const auto now = std::find(all.begin(), all.end(), focusWidget());
  const bool leaves = now == all.end() || (next ? now + 1 == all.end() : now == all.begin());
  if (leaves) return QWidget::focusNextPrevChild(next);
  (*(next ? now + 1 : now - 1))->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

void MenuStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
