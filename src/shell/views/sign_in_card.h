// The card that signs in: an address, and the link that was mailed to it.
#pragma once

#include "shell/account_presenter.h"
#include "shell/views/room.h"

#include <QWidget>

namespace sorvan::views {

class Button;
class Label;
class NoticeSlot;
class Paragraph;
class TextField;

// Shown while nobody is signed in.
class SignInCard final : public QWidget {
  Q_OBJECT

 public:
  explicit SignInCard(AccountPresenter& account, QWidget* parent = nullptr);
  void show(const AccountPageDisplay& page);

 private:
  QWidget* emailRow();
  QWidget* linkRow();
  void sendLink();
  void signIn();
  void refreshButtons();

  AccountPresenter& account_;
  Paragraph* introduction_;
  Label* title_;
  Label* noPassword_;
  TextField* email_;
  Button* send_;
  NoticeSlot* message_;
  QWidget* hint_;
  Paragraph* checkInbox_;
  TextField* link_;
  Button* signIn_;
  bool busy_ = false;
};

}  // namespace sorvan::views
