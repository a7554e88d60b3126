#include "shell/views/pay_choice.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/views/labels.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kBesideTheDot = 24;
}

void PayChoice::show(const PayChoicesDisplay& display) const {
  const bool ownKey = payer == core::PayWith::ownKey;
  const QString title = ownKey ? display.key : display.credits;
  const QString balance = ownKey ? QString() : display.creditsBalance;
  button->setText(balance.isEmpty() ? title : title + u" · "_s + balance);
  button->setAccessibleName(title);
  button->setAccessibleDescription(ownKey ? display.keyHelp : display.creditsHelp);
  button->setChecked(ownKey == display.ownKeyPays);
  help->setParagraph(button->accessibleDescription());
}

PayChoice addPayChoice(QVBoxLayout& column, core::PayWith payer) {
  const PayChoice choice{payer, new QRadioButton, new Paragraph({}, Type::small, &Colors::textTertiary)};
  choice.help->setContentsMargins(kBesideTheDot, 0, 0, 0);
  column.addWidget(choice.button);
  column.addWidget(choice.help);
  return choice;
}

}  // namespace sorvan::views
