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
constexpr int kMargin = 26;
constexpr int kSign = 44;
constexpr int kIconGap = 10;

// Name and count in one line, what is wrong under it.
QWidget* makeRow(const HealthRow& row) {
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 3, 0, 3);
  column->setSpacing(2);
  auto* first = new QHBoxLayout;
  first->addWidget(new Label(row.title, Type::small), 1);
  first->addWidget(new Label(row.count, Type::small, &Colors::textSecondary));
  column->addLayout(first);
  if (!row.issue.isEmpty()) column->addWidget(new Paragraph(row.issue, Type::small, &Colors::warningText));
  return widget;
}

void empty(QLayout& layout) {
  while (QLayoutItem* old = layout.takeAt(0)) {
    delete old->widget();
    delete old;
  }
}

}  // namespace

// The shield over the whole, on the soft ground of what was found.
class HealthSign final : public QWidget {
 public:
  HealthSign() { setFixedSize(kSign, kSign); }
  void setNeedsAttention(bool needs) {
    needsAttention_ = needs;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusCard, needsAttention_ ? c.warningSoft : c.successSoft);
    paintIcon(painter, u"shield-check"_s, rect(), metrics().iconRegular + 4,
              {needsAttention_ ? c.warningText : c.successText});
  }

 private:
  bool needsAttention_ = false;
};

HealthDialog::HealthDialog(HealthPresenter& health, QWidget* parent)
    : QDialog(parent, Qt::Dialog),
      health_(health),
      sign_(new HealthSign),
      head_(new Paragraph({}, Type::large)),
      line_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      section_(new QWidget),
      stateIcon_(new IconView(u"circle-check"_s, metrics().iconRegular, &Colors::successText)),
      badge_(new QVBoxLayout),
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
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(buildHead());
  column->addWidget(new Hairline);
  column->addWidget(buildSection());
  column->addStretch(1);
  column->addWidget(new Hairline);
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(kMargin, 14, kMargin, 16);
  foot->setSpacing(16);
  foot->addWidget(new Paragraph(health_.display().foot, Type::small, &Colors::textTertiary), 1);
  foot->addWidget(done_, 0, Qt::AlignVCenter);
  column->addLayout(foot);
  done_->setDefault(true);
}

QLayout* HealthDialog::buildHead() {
  auto* words = new QVBoxLayout;
  words->setSpacing(2);
  words->addStretch(1);
  words->addWidget(head_);
  words->addWidget(line_);
  words->addStretch(1);
  auto* head = new QHBoxLayout;
  head->setContentsMargins(kMargin, 20, kMargin, 18);
  head->setSpacing(14);
  head->addWidget(sign_, 0, Qt::AlignVCenter);
  head->addLayout(words, 1);
  head->addWidget(again_, 0, Qt::AlignVCenter);
  again_->setIconName(u"refresh-cw"_s);
  return head;
}

// The title with its badge; the rows stand under the title, not under the icon.
QWidget* HealthDialog::buildSection() {
  auto* title = new Label(health_.display().section);
  title->setWeight(Weight::semibold);
  auto* first = new QHBoxLayout;
  first->setSpacing(kIconGap);
  first->addWidget(stateIcon_);
  first->addWidget(title, 1);
  first->addLayout(badge_);
  auto* body = new QVBoxLayout;
  body->setContentsMargins(metrics().iconRegular + kIconGap, 0, 0, 0);
  body->setSpacing(6);
  rows_->setSpacing(0);
  body->addLayout(rows_);
  body->addWidget(repair_, 0, Qt::AlignLeft);
  body->addWidget(feedback_);
  auto* part = new QVBoxLayout(section_);
  part->setContentsMargins(kMargin, 16, kMargin, 18);
  part->setSpacing(8);
  part->addLayout(first);
  part->addLayout(body);
  return section_;
}

void HealthDialog::refresh() {
  const HealthDisplay display = health_.display();
  head_->setParagraph(display.head);
  sign_->setNeedsAttention(display.needsAttention);
  line_->setParagraph(display.line);
  line_->setVisible(!display.line.isEmpty());
  section_->setVisible(!display.state.isEmpty());
  section_->setAccessibleName(u"%1, %2"_s.arg(display.section, display.state));
  stateIcon_->setIcon(display.needsAttention ? u"triangle-alert"_s : u"circle-check"_s,
                      display.needsAttention ? &Colors::warningText : &Colors::successText);
  empty(*badge_);
  if (!display.state.isEmpty())
    badge_->addWidget(new Badge(display.state, display.needsAttention ? BadgeTone::warning : BadgeTone::success));
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
  empty(*rows_);
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
