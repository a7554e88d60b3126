#include "shell/views/pay_choices.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/account_page_texts.h"
#include "shell/views/card.h"

namespace sorvan::views {

PayChoices::PayChoices(AccountPresenter& account, QWidget* parent)
    : QWidget(parent), account_(account), reason_(new NoticeSlot), choices_(new QWidget) {
  auto* outside = new QVBoxLayout(this);
  outside->setContentsMargins(0, 0, 0, 0);
  outside->setSpacing(0);
  outside->addWidget(reason_);
  outside->addWidget(choices_);
  auto* column = new QVBoxLayout(choices_);
  column->setContentsMargins(0, 20, 0, 0);
  column->setSpacing(0);
  column->addWidget(new Hairline);
  column->addSpacing(16);
  auto* title = new Label(shell::texts::payWithTitle());
  title->setWeight(Weight::semibold);
  column->addWidget(title);
  credits_ = offer(core::PayWith::credits);
  key_ = offer(core::PayWith::ownKey);
  connect(&account_, &AccountPresenter::changed, this, &PayChoices::refresh);
  refresh();
}

PayChoice PayChoices::offer(core::PayWith payer) {
  auto* column = static_cast<QVBoxLayout*>(choices_->layout());
  column->addSpacing(8);
  const PayChoice choice = addPayChoice(*column, payer);
  connect(choice.button, &QRadioButton::clicked, this,
          [this, payer] { account_.payWithOwnKey(payer == core::PayWith::ownKey); });
  return choice;
}

void PayChoices::refresh() {
  const PayChoicesDisplay display = account_.payChoices();
  reason_->show(AlertTone::information, display.keyProblem);
  choices_->setVisible(display.offered);
  credits_.show(display);
  key_.show(display);
}

}  // namespace sorvan::views
