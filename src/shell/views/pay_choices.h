// Who pays, chosen on the page of the key.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"
#include "shell/views/pay_choice.h"
#include "shell/views/room.h"

namespace sorvan::views {

class NoticeSlot;

// Two choices where the account allows them; where it does not, why a key that is saved is not used.
class PayChoices final : public QWidget {
  Q_OBJECT

 public:
  explicit PayChoices(AccountPresenter& account, QWidget* parent = nullptr);

 private:
  PayChoice offer(core::PayWith payer);
  void refresh();

  AccountPresenter& account_;
  NoticeSlot* reason_;
  QWidget* choices_;
  PayChoice credits_;
  PayChoice key_;
};

}  // namespace sorvan::views
