#include "shell/views/pay_with_popover.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/pay_choice.h"

namespace sorvan::views {

namespace {
constexpr int kWidth = 340;
}

PayWithPopover::PayWithPopover(ComposerPresenter& composer, QWidget* parent)
    : Popover(composer.display().payer, parent), composer_(composer) {
  const PayWithDisplay display = composer.display().payWith;
  panel()->setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(14, 12, 14, 10);
  column->setSpacing(0);
  if (!display.keyProblem.isEmpty()) column->addWidget(new Paragraph(display.keyProblem));
  if (display.offered) {
    addChoice(*column, core::PayWith::credits);
    column->addSpacing(8);
    addChoice(*column, core::PayWith::ownKey);
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

void PayWithPopover::addChoice(QVBoxLayout& column, core::PayWith payer) {
  const PayChoice choice = addPayChoice(column, payer);
  choice.show(composer_.display().payWith);
  connect(choice.button, &QRadioButton::clicked, this, [this, payer] {
    composer_.payWithOwnKey(payer == core::PayWith::ownKey);
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
