#include "shell/views/pay_choices.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/views/card.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kBesideTheDot = 24;
}

PayChoices::PayChoices(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      account_(account),
      reason_(new NoticeSlot),
      choices_(new QWidget),
      title_(new Label),
      credits_(new QRadioButton),
      creditsHelp_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      key_(new QRadioButton),
      keyHelp_(new Paragraph({}, Type::small, &Colors::textTertiary)) {
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
  title_->setWeight(Weight::semibold);
  column->addWidget(title_);
  addChoice(credits_, creditsHelp_, false);
  addChoice(key_, keyHelp_, true);
  connect(&account_, &AccountPresenter::changed, this, &PayChoices::refresh);
  refresh();
}

void PayChoices::addChoice(QRadioButton* button, Paragraph* help, bool ownKey) {
  auto* column = static_cast<QVBoxLayout*>(choices_->layout());
  column->addSpacing(8);
  column->addWidget(button);
  help->setContentsMargins(kBesideTheDot, 0, 0, 0);
  column->addWidget(help);
  connect(button, &QRadioButton::clicked, this, [this, ownKey] { account_.payWithOwnKey(ownKey); });
}

void PayChoices::refresh() {
  const PayChoicesDisplay display = account_.payChoices();
  reason_->show(AlertTone::information, display.keyDoesNotCount);
  choices_->setVisible(display.offered);
  title_->setText(display.title);
  credits_->setText(display.creditsBalance.isEmpty() ? display.credits
                                                     : display.credits + u" · "_s + display.creditsBalance);
  credits_->setAccessibleName(display.credits);
  credits_->setAccessibleDescription(display.creditsHelp);
  credits_->setChecked(!display.ownKeyPays);
  creditsHelp_->setParagraph(display.creditsHelp);
  key_->setText(display.key);
  key_->setAccessibleDescription(display.keyHelp);
  key_->setChecked(display.ownKeyPays);
  keyHelp_->setParagraph(display.keyHelp);
}

}  // namespace sorvan::views
