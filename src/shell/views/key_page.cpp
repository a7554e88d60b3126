#include "shell/views/key_page.h"

#include <QHBoxLayout>

#include "shell/account_page_texts.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/pay_choices.h"
#include "shell/views/settings_column.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

KeyPage::KeyPage(SettingsPresenter& settings, AccountPresenter* account, QWidget* parent)
    : QWidget(parent),
      settings_(settings),
      explanation_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      statusIcon_(new IconView(u"circle-check"_s, metrics().iconRegular, &Colors::successText)),
      status_(new Label),
      field_(new TextField(settings.keyPage().title)),
      save_(new Button(texts::save(), ButtonVariant::primary)),
      remove_(new Button(texts::removeKey())),
      messageIcon_(new IconView(u"info"_s, metrics().iconSmall, &Colors::textSecondary)),
      message_(new Paragraph({}, Type::small, &Colors::textSecondary)) {
  QVBoxLayout* column = settingsColumn(*this, settings.keyPage().title);
  column->addSpacing(4);
  column->addWidget(explanation_);
  column->addSpacing(18);
  auto* state = new QHBoxLayout;
  state->setSpacing(8);
  status_->setWeight(Weight::medium);
  state->addWidget(statusIcon_);
  state->addWidget(status_, 1);
  column->addLayout(state);
  column->addSpacing(12);
  field_->setIconName(u"key-round"_s);
  field_->setEchoMode(QLineEdit::Password);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(field_, 1);
  row->addWidget(save_);
  column->addLayout(row);
  column->addSpacing(10);
  remove_->setControlSize(ControlSize::compact);
  auto* below = new QHBoxLayout;
  below->setSpacing(8);
  below->addWidget(remove_);
  if (account) {
    auto* getKey = new Button(shell::texts::getKey(), ButtonVariant::link);
    getKey->setControlSize(ControlSize::compact);
    connect(getKey, &Button::clicked, account, &AccountPresenter::openKeyPage);
    below->addWidget(getKey);
  }
  below->addStretch(1);
  column->addLayout(below);
  column->addSpacing(16);
  auto* said = new QHBoxLayout;
  said->setSpacing(7);
  said->addWidget(messageIcon_, 0, Qt::AlignTop);
  said->addWidget(message_, 1);
  column->addLayout(said);
  if (account) column->addWidget(new PayChoices(*account));
  column->addStretch(1);
  connect(save_, &Button::clicked, this, &KeyPage::save);
  connect(field_, &QLineEdit::returnPressed, this, &KeyPage::save);
  connect(field_, &QLineEdit::textChanged, this, &KeyPage::refresh);
  connect(remove_, &Button::clicked, this, [this] { settings_.removeKey(); });
  connect(&settings_, &SettingsPresenter::keyPageChanged, this, &KeyPage::refresh);
  refresh();
}

void KeyPage::save() {
  if (field_->text().trimmed().isEmpty()) return;
  const QString key = field_->text();
  field_->clear();
  settings_.saveKey(key);
}

void KeyPage::refresh() {
  const KeyPageDisplay display = settings_.keyPage();
  explanation_->setParagraph(display.explanation);
  status_->setText(display.status);
  statusIcon_->setIcon(display.saved ? u"circle-check"_s : u"key-round"_s,
                       display.saved ? &Colors::successText : &Colors::textTertiary);
  field_->setPlaceholderText(display.prompt);
  field_->setEnabled(!display.busy);
  save_->setEnabled(!display.busy && !field_->text().trimmed().isEmpty());
  remove_->setVisible(display.saved);
  remove_->setEnabled(!display.busy);
  message_->setParagraph(display.message);
  message_->setVisible(!display.message.isEmpty());
  messageIcon_->setVisible(!display.message.isEmpty());
}

}  // namespace sorvan::views
