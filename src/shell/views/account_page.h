// The page of the settings with the account: signing in, credits, devices.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class CreditsPage;
class DevicesList;
class Label;
class NoticeSlot;
class SignInCard;
class Spinner;
class TextField;

// The address of the service, folded away until somebody asks for it.
class AdvancedAccount final : public QWidget {
  Q_OBJECT

 public:
  explicit AdvancedAccount(AccountPresenter& account, QWidget* parent = nullptr);
  void refresh();

 private:
  void setOpen(bool open);

  AccountPresenter& account_;
  Button* title_;
  QWidget* contents_;
  TextField* address_;
  Button* use_;
};

// The presenter outlives the page. The account is read again when the page comes into view.
class AccountPage final : public QWidget {
  Q_OBJECT

 public:
  explicit AccountPage(AccountPresenter& account, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* head();
  void refresh();

  AccountPresenter& account_;
  Label* title_;
  Label* signedInAs_;
  Spinner* busy_;
  Button* signOut_;
  NoticeSlot* message_;
  SignInCard* signIn_;
  CreditsPage* credits_;
  DevicesList* devices_;
  AdvancedAccount* advanced_;
};

}  // namespace sorvan::views
