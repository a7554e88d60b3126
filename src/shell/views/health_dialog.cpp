#include "shell/views/health_dialog.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 680;

QHBoxLayout* rowOf(std::initializer_list<QWidget*> leading, QWidget* wide) {
  auto* row = new QHBoxLayout;
  row->setSpacing(10);
  for (QWidget* widget : leading) row->addWidget(widget, 0, Qt::AlignTop);
  row->addWidget(wide, 1);
  return row;
}

// Name and count in one line, what is wrong under it.
QWidget* makeRow(const HealthRow& row) {
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 6, 0, 6);
  column->setSpacing(2);
  auto* first = new QHBoxLayout;
  first->addWidget(new Label(row.title), 1);
  first->addWidget(new Label(row.count, Type::small, &Colors::textSecondary));
  column->addLayout(first);
  if (!row.issue.isEmpty()) column->addWidget(new Paragraph(row.issue, Type::small, &Colors::warningText));
  return widget;
}

}  // namespace

HealthDialog::HealthDialog(HealthPresenter& health, QWidget* parent)
    : QDialog(parent, Qt::Dialog),
      health_(health),
      headIcon_(new IconView(u"shield-check"_s, metrics().iconRegular, &Colors::successText)),
      head_(new Paragraph({}, Type::large)),
      line_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      section_(new QWidget),
      stateIcon_(new IconView(u"circle-check"_s, metrics().iconRegular, &Colors::successText)),
      state_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      rows_(new QVBoxLayout),
      repair_(new Button({}, ButtonVariant::primary)),
      feedback_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      again_(new Button(health.display().checkAgain)),
      done_(new Button(health.display().done, ButtonVariant::primary)) {
  setModal(true);
  setFixedWidth(kWidth);
  setWindowTitle(health.display().title);
  setAccessibleName(health.display().title);
  build();
  connect(&health_, &HealthPresenter::changed, this, &HealthDialog::refresh);
  connect(repair_, &Button::clicked, &health_, &HealthPresenter::trySavingAgain);
  connect(again_, &Button::clicked, &health_, &HealthPresenter::check);
  connect(done_, &Button::clicked, this, &QDialog::accept);
  refresh();
  new FocusRing(this);
}

void HealthDialog::build() {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(24, 22, 24, 20);
  column->setSpacing(12);
  column->addLayout(rowOf({headIcon_}, head_));
  column->addWidget(line_);
  auto* part = new QVBoxLayout(section_);
  part->setContentsMargins(0, 8, 0, 8);
  part->setSpacing(6);
  auto* title = new Label(health_.display().section, Type::title);
  part->addLayout(rowOf({stateIcon_}, title));
  part->addWidget(state_);
  part->addLayout(rows_);
  part->addWidget(repair_, 0, Qt::AlignLeft);
  part->addWidget(feedback_);
  column->addWidget(section_);
  column->addStretch(1);
  column->addWidget(new Paragraph(health_.display().foot, Type::small, &Colors::textTertiary));
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  buttons->addWidget(again_);
  buttons->addStretch(1);
  buttons->addWidget(done_);
  column->addLayout(buttons);
  done_->setDefault(true);
}

void HealthDialog::refresh() {
  const HealthDisplay display = health_.display();
  head_->setParagraph(display.head);
  headIcon_->setIcon(display.needsAttention ? u"triangle-alert"_s : u"shield-check"_s,
                     display.needsAttention ? &Colors::warningText : &Colors::successText);
  line_->setParagraph(display.line);
  line_->setVisible(!display.line.isEmpty());
  section_->setVisible(!display.state.isEmpty());
  section_->setAccessibleName(u"%1, %2"_s.arg(display.section, display.state));
  stateIcon_->setIcon(display.needsAttention ? u"triangle-alert"_s : u"circle-check"_s,
                      display.needsAttention ? &Colors::warningText : &Colors::successText);
  state_->setParagraph(display.state);
  repair_->setText(display.repair);
  repair_->setVisible(!display.repair.isEmpty());
  again_->setEnabled(!display.checking);
  const bool said = feedback_->paragraph() == display.feedback;
  feedback_->setColorRole(display.feedbackIsError ? &Colors::dangerText : &Colors::successText);
  feedback_->setParagraph(display.feedback);
  feedback_->setVisible(!display.feedback.isEmpty());
  if (!said && !display.feedback.isEmpty()) {
    QAccessibleEvent event(feedback_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
  }
  showRows(display);
}

void HealthDialog::showRows(const HealthDisplay& display) {
  while (QLayoutItem* old = rows_->takeAt(0)) {
    delete old->widget();
    delete old;
  }
  for (const HealthRow& row : display.rows) rows_->addWidget(makeRow(row));
}

void HealthDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  done_->setFocus();
  health_.check();
}

void HealthDialog::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceDialog);
}

}  // namespace sorvan::views
