// Who pays, chosen on the page of the key.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"
#include "shell/views/room.h"

class QRadioButton;

namespace sorvan::views {

class Label;
class NoticeSlot;
class Paragraph;

// Two choices where the account allows them; where it does not, why a key that is saved is not used.
class PayChoices final : public QWidget {
  Q_OBJECT

 public:
  explicit PayChoices(AccountPresenter& account, QWidget* parent = nullptr);

 private:
  void addChoice(QRadioButton* button, Paragraph* help, bool ownKey);
  void refresh();

  AccountPresenter& account_;
  NoticeSlot* reason_;
  QWidget* choices_;
  Label* title_;
  QRadioButton* credits_;
  Paragraph* creditsHelp_;
  QRadioButton* key_;
  Paragraph* keyHelp_;
};

}  // namespace sorvan::views
