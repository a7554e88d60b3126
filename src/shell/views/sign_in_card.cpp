#include "shell/views/sign_in_card.h"

#include <QHBoxLayout>

#include "shell/views/card.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

SignInCard::SignInCard(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      account_(account),
      introduction_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      title_(new Label({}, Type::title)),
      noPassword_(new Label({}, Type::small, &Colors::textTertiary)),
      email_(new TextField({})),
      send_(new Button({}, ButtonVariant::primary)),
      message_(new NoticeSlot),
      hint_(new QWidget),
      checkInbox_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      link_(new TextField({})),
      signIn_(new Button({})) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 3, 0, 0);
  column->setSpacing(0);
  column->addWidget(introduction_);
  column->addSpacing(18);
  auto* card = new Card(&Colors::surfaceCanvas, &Colors::lineDefault);
  auto* inside = new QVBoxLayout(card);
  inside->setContentsMargins(18, 16, 18, 16);
  inside->setSpacing(0);
  inside->addWidget(title_);
  inside->addSpacing(2);
  inside->addWidget(noPassword_);
  inside->addSpacing(12);
  inside->addWidget(emailRow());
  inside->addWidget(message_);
  inside->addWidget(hint_);
  inside->addSpacing(10);
  inside->addWidget(linkRow());
  column->addWidget(card);
  auto* hint = new QHBoxLayout(hint_);
  hint->setContentsMargins(0, 12, 0, 0);
  hint->setSpacing(8);
  hint->addWidget(new IconView(u"info"_s, metrics().iconSmall, &Colors::infoText), 0, Qt::AlignTop);
  hint->addWidget(checkInbox_, 1);
}

QWidget* SignInCard::emailRow() {
  auto* part = new QWidget;
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(email_, 1);
  row->addWidget(send_);
  email_->setInputMethodHints(Qt::ImhEmailCharactersOnly);
  connect(email_, &QLineEdit::textChanged, this, &SignInCard::refreshButtons);
  connect(email_, &QLineEdit::returnPressed, this, &SignInCard::sendLink);
  connect(send_, &Button::clicked, this, &SignInCard::sendLink);
  return part;
}

QWidget* SignInCard::linkRow() {
  auto* part = new QWidget;
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(link_, 1);
  row->addWidget(signIn_);
  connect(link_, &QLineEdit::textChanged, this, &SignInCard::refreshButtons);
  connect(link_, &QLineEdit::returnPressed, this, &SignInCard::signIn);
  connect(signIn_, &Button::clicked, this, &SignInCard::signIn);
  return part;
}

void SignInCard::sendLink() {
  if (!busy_ && !email_->text().trimmed().isEmpty()) account_.sendLink(email_->text());
}

// A link that could not be exchanged stays in the field for another try.
void SignInCard::signIn() {
  if (!busy_ && !link_->text().trimmed().isEmpty()) account_.signIn(link_->text());
}

void SignInCard::show(const AccountPageDisplay& page) {
  const SignInDisplay& card = page.signIn;
  setVisible(!page.signedIn);
  if (page.signedIn) return link_->clear();
  busy_ = page.busy;
  introduction_->setParagraph(card.introduction);
  title_->setText(card.title);
  noPassword_->setText(card.noPassword);
  email_->setAccessibleName(card.emailField);
  email_->setPlaceholderText(card.emailField);
  send_->setText(card.sendLink);
  message_->show(page.messageIsError ? AlertTone::error : AlertTone::information, page.message);
  checkInbox_->setParagraph(card.checkInbox);
  hint_->setVisible(card.awaitsLink);
  link_->setAccessibleName(card.linkField);
  link_->setPlaceholderText(card.linkField);
  signIn_->setText(card.signIn);
  refreshButtons();
}

void SignInCard::refreshButtons() {
  send_->setEnabled(!busy_ && !email_->text().trimmed().isEmpty());
  signIn_->setEnabled(!busy_ && !link_->text().trimmed().isEmpty());
}

}  // namespace sorvan::views
