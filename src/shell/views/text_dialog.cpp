#include "shell/views/text_dialog.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/text_area.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"

namespace sorvan::views {

namespace {
constexpr int kNotesHeight = 140;
}  // namespace

TextDialog::TextDialog(const QString& title, const QString& name, const QString& verb, QWidget* parent, TextSize size)
    : QDialog(parent) {
  setWindowTitle(title);
  setAccessibleName(title);
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedWidth(metrics().alertWidth);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 20, 24, 20);
  all->setSpacing(16);
  all->addWidget(new Paragraph(title, Type::title));
  if (size == TextSize::line) {
    all->addWidget(line_ = new TextField(name));
  } else {
    lines_ = new TextArea(name);
    lines_->setFixedHeight(kNotesHeight);
    all->addWidget(lines_);
  }
  auto* cancel = new Button(texts::cancel());
  auto* confirm = new Button(verb, ButtonVariant::primary);
  confirm->setDefault(true);
  connect(cancel, &Button::clicked, this, &QDialog::reject);
  connect(confirm, &Button::clicked, this, &TextDialog::accept);
  // In a text of several lines Enter breaks the line.
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, confirm, &Button::click);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  buttons->addStretch(1);
  buttons->addWidget(cancel);
  buttons->addWidget(confirm);
  all->addLayout(buttons);
  new FocusRing(this);
}

void TextDialog::setText(const QString& text) {
  if (line_) {
    line_->setText(text);
    line_->selectAll();
    line_->setFocus();
  } else {
    lines_->setPlainText(text);
    lines_->setFocus();
  }
}

QString TextDialog::text() const { return line_ ? line_->text() : lines_->toPlainText(); }

void TextDialog::accept() {
  if (line_ && line_->text().trimmed().isEmpty()) return line_->setFocus();
  Q_EMIT written(text());
  QDialog::accept();
}

}  // namespace sorvan::views
