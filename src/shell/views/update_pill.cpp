#include "shell/views/update_pill.h"

#include <QBoxLayout>
#include <QPainter>

#include "account/account_texts.h"
#include "shell/updates_presenter.h"
#include "shell/views/accessible_role.h"
#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/menu_strip.h"
#include "shell/views/painting.h"

namespace sorvan::views {

namespace {
constexpr int kHeight = 26;
}

UpdatePill::UpdatePill(UpdatesPresenter& updates, QWidget* parent)
    : QWidget(parent), updates_(updates), text_(new Label({}, Type::small, &Colors::infoText)) {
  giveRole(*this, QAccessible::Grouping);
  setFixedHeight(kHeight);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  text_->setWeight(Weight::medium);
  auto* download = new Button(account::texts::download(), ButtonVariant::link);
  auto* later = new Button(account::texts::later(), ButtonVariant::quiet);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(12, 0, 2, 0);
  row->setSpacing(4);
  row->addWidget(text_);
  for (Button* button : {download, later}) {
    button->setControlSize(ControlSize::compact);
    row->addWidget(button);
  }
  connect(download, &Button::clicked, &updates_, &UpdatesPresenter::download);
  connect(later, &Button::clicked, &updates_, &UpdatesPresenter::later);
  connect(&updates_, &UpdatesPresenter::changed, this, &UpdatePill::refresh);
  refresh();
}

void UpdatePill::refresh() {
  const QString text = updates_.updates().banner;
  text_->setText(text);
  setAccessibleName(text);
  setVisible(!text.isEmpty());
  updateGeometry();
}

void UpdatePill::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  paintPanel(painter, rect(), height() / 2.0, colors().infoSoft);
}

void addUpdatePill(MenuStrip& strip, UpdatesPresenter& updates) {
  auto* pill = new UpdatePill(updates, &strip);
  static_cast<QBoxLayout*>(strip.layout())->insertWidget(1, pill);
  // It came last and stands first: so does it for the keyboard. Its buttons go behind the one that was first, which then
  // goes behind them; before it, there is nothing with a place in the order.
  pill->lower();
  const QList<QAbstractButton*> own = pill->findChildren<QAbstractButton*>();
  for (QAbstractButton* first : strip.findChildren<QAbstractButton*>()) {
    if (own.contains(first) || first->focusPolicy() == Qt::NoFocus) continue;
    QWidget::setTabOrder(first, own.front());
    QWidget::setTabOrder(own.front(), own.back());
    QWidget::setTabOrder(own.back(), first);
    return;
  }
}

}  // namespace sorvan::views
