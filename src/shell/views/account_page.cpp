#include "shell/views/account_page.h"

#include <QHBoxLayout>

#include "shell/account_page_texts.h"
#include "shell/views/card.h"
#include "shell/views/controls.h"
#include "shell/views/credits_page.h"
#include "shell/views/devices_list.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/sign_in_card.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

// ---- AdvancedAccount

AdvancedAccount::AdvancedAccount(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      account_(account),
      title_(new Button(account.gateway().title, ButtonVariant::quiet)),
      contents_(new QWidget),
      address_(new TextField(account.gateway().field, account.gateway().standard)),
      use_(new Button(shell::texts::useAddress())) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 14, 0, 0);
  column->setSpacing(8);
  title_->setControlSize(ControlSize::compact);
  title_->setSnug();
  column->addWidget(title_, 0, Qt::AlignLeft);
  auto* row = new QHBoxLayout(contents_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(address_, 1);
  row->addWidget(use_);
  column->addWidget(contents_);
  const auto use = [this] { account_.setGateway(address_->text()); };
  connect(title_, &Button::clicked, this, [this] { setOpen(contents_->isHidden()); });
  connect(use_, &Button::clicked, this, use);
  connect(address_, &QLineEdit::returnPressed, this, use);
  address_->setText(account_.gateway().address);
  setOpen(!account_.gateway().address.isEmpty());
}

void AdvancedAccount::setOpen(bool open) {
  contents_->setVisible(open);
  title_->setIconName(open ? u"chevron-down"_s : u"chevron-right"_s);
  title_->setAccessibleDescription(open ? shell::texts::shown() : shell::texts::hidden());
}

void AdvancedAccount::refresh() { use_->setEnabled(!account_.page().busy); }

// ---- AccountPage

AccountPage::AccountPage(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      account_(account),
      title_(new Label(account.page().title, Type::large)),
      signedInAs_(new Label({}, Type::small, &Colors::textTertiary)),
      busy_(new Spinner(14)),
      signOut_(new Button(shell::texts::signOut(), ButtonVariant::quiet)),
      message_(new NoticeSlot),
      signIn_(new SignInCard(account)),
      credits_(new CreditsPage(account)),
      devices_(new DevicesList),
      advanced_(new AdvancedAccount(account)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(26, 20, 26, 22);
  column->setSpacing(0);
  for (QWidget* part : std::initializer_list<QWidget*>{head(), message_, signIn_, credits_, devices_, advanced_})
    column->addWidget(part);
  column->addStretch(1);
  connect(signOut_, &Button::clicked, &account_, &AccountPresenter::signOut);
  connect(devices_, &DevicesList::signOutPressed, &account_, &AccountPresenter::signOutDevice);
  connect(&account_, &AccountPresenter::changed, this, &AccountPage::refresh);
  refresh();
}

QWidget* AccountPage::head() {
  auto* part = new QWidget;
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  auto* words = new QVBoxLayout;
  words->setSpacing(3);
  words->addWidget(title_);
  words->addWidget(signedInAs_);
  row->addLayout(words, 1);
  row->addWidget(busy_, 0, Qt::AlignVCenter);
  row->addSpacing(8);
  row->addWidget(signOut_, 0, Qt::AlignVCenter);
  return part;
}

void AccountPage::refresh() {
  const AccountPageDisplay page = account_.page();
  const bool signedIn = page.signedIn;
  signedInAs_->setText(page.signedInAs);
  signedInAs_->setVisible(signedIn);
  signOut_->setVisible(signedIn);
  busy_->setVisible(page.busy);
  message_->show(page.messageIsError ? AlertTone::error : AlertTone::information, signedIn ? page.message : QString());
  signIn_->show(page);
  credits_->setVisible(signedIn);
  if (signedIn) credits_->show(page);
  devices_->show(page.devices);
  advanced_->refresh();
}

void AccountPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  account_.refresh();
}

}  // namespace sorvan::views
