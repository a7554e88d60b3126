// Who pays, chosen in the composer.
#pragma once

#include "core/billing.h"
#include "shell/composer_presenter.h"
#include "shell/views/popover.h"

class QVBoxLayout;

namespace sorvan::views {

// The two ways to pay with what each means, or why the saved key is not used; and the way to the account.
class PayWithPopover final : public Popover {
  Q_OBJECT

 public:
  explicit PayWithPopover(ComposerPresenter& composer, QWidget* parent = nullptr);

 private:
  void addChoice(QVBoxLayout& column, core::PayWith payer);
  void addAccountButton(QVBoxLayout& column);

  ComposerPresenter& composer_;
};

}  // namespace sorvan::views
