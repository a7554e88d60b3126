#include "shell/views/pay_with_popover.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/labels.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kWidth = 340;
constexpr int kBesideTheDot = 24;
}  // namespace

PayWithPopover::PayWithPopover(ComposerPresenter& composer, QWidget* parent)
    : Popover(composer.display().payer, parent), composer_(composer) {
  const PayWithDisplay display = composer.display().payWith;
  panel()->setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(14, 12, 14, 10);
  column->setSpacing(0);
  if (!display.keyProblem.isEmpty()) column->addWidget(new Paragraph(display.keyProblem));
  if (display.offered) {
    addChoice(*column, false);
    column->addSpacing(8);
    addChoice(*column, true);
  }
  column->addSpacing(10);
  if (display.offered && !display.line.isEmpty()) {
    column->addWidget(new Hairline);
    column->addSpacing(8);
    auto* line = new Paragraph(display.line, Type::small, &Colors::textSecondary);
    line->setToolTip(display.lineHelp);
    column->addWidget(line);
    column->addSpacing(8);
  }
  addAccountButton(*column);
}

void PayWithPopover::addChoice(QVBoxLayout& column, bool ownKey) {
  const PayWithDisplay display = composer_.display().payWith;
  const QString title = ownKey ? display.key : display.credits;
  auto* choice = new QRadioButton(title);
  if (!ownKey && !display.creditsBalance.isEmpty()) choice->setText(title + u" · "_s + display.creditsBalance);
  choice->setAccessibleName(title);
  choice->setAccessibleDescription(ownKey ? display.keyHelp : display.creditsHelp);
  choice->setChecked(ownKey == display.ownKeyPays);
  auto* help = new Paragraph(choice->accessibleDescription(), Type::small, &Colors::textTertiary);
  help->setContentsMargins(kBesideTheDot, 0, 0, 0);
  column.addWidget(choice);
  column.addWidget(help);
  connect(choice, &QRadioButton::clicked, this, [this, ownKey] {
    composer_.payWithOwnKey(ownKey);
    dismiss();
  });
}

void PayWithPopover::addAccountButton(QVBoxLayout& column) {
  auto* account = new Button(composer_.display().payWith.account, ButtonVariant::quiet);
  account->setControlSize(ControlSize::compact);
  connect(account, &Button::clicked, this, [this] {
    dismiss();
    composer_.showAccount();
  });
  column.addWidget(account, 0, Qt::AlignLeft);
}

}  // namespace sorvan::views
