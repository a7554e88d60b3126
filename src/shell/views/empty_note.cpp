#include "shell/views/empty_note.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/labels.h"

namespace sorvan::views {

namespace {
constexpr int kIcon = 28;
constexpr int kTextWidth = 320;
}  // namespace

EmptyNote::EmptyNote(QWidget* parent)
    : QWidget(parent),
      icon_(new IconView(QStringLiteral("box"), kIcon, &Colors::textTertiary)),
      title_(new Label({}, Type::title, &Colors::textPrimary)),
      text_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      button_(new Button({})) {
  title_->setAlignment(Qt::AlignCenter);
  text_->setAlignment(Qt::AlignCenter);
  text_->setFixedWidth(kTextWidth);
  auto* text = new QHBoxLayout;  // a row of its own: the column alone would take the height that its whole width needs
  text->addStretch();
  text->addWidget(text_);
  text->addStretch();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(16, 28, 16, 28);
  column->setSpacing(6);
  column->addStretch();
  column->addWidget(icon_, 0, Qt::AlignHCenter);
  column->addSpacing(4);
  column->addWidget(title_, 0, Qt::AlignHCenter);
  column->addLayout(text);
  column->addSpacing(8);
  column->addWidget(button_, 0, Qt::AlignHCenter);
  column->addStretch();
  connect(button_, &Button::clicked, this, &EmptyNote::pressed);
}

void EmptyNote::setWords(const Words& words) {
  icon_->setIcon(words.iconName, &Colors::textTertiary);
  title_->setText(words.title);
  text_->setParagraph(words.text);
  text_->setVisible(!words.text.isEmpty());
  button_->setText(words.button);
  button_->setVisible(!words.button.isEmpty());
  setAccessibleName(words.title);
  setAccessibleDescription(words.text);
}

}  // namespace sorvan::views
