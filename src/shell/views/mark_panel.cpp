#include "shell/views/mark_panel.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/marks_painting.h"
#include "shell/views/painting.h"
#include "shell/views/plain_scroll_area.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kBadge = 19;
}

// One box: its number, its note, and a cross that removes it.
class MarkRow final : public QWidget {
 public:
  MarkRow(MarkingPresenter& marking, int index)
      : index_(index),
        note_(new TextField(texts::boxNote(index + 1), texts::boxPlaceholder())),
        remove_(new IconButton(u"x"_s, texts::removeBox(index + 1))) {
    remove_->setControlSize(ControlSize::compact);
    remove_->setIconSide(13);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kBadge + 8, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(note_, 1);
    row->addWidget(remove_);
    connect(note_, &QLineEdit::textEdited, &marking,
            [this, &marking](const QString& text) { marking.setNote(index_, text); });
    connect(remove_, &IconButton::clicked, &marking, [this, &marking] { marking.remove(index_); });
  }

  TextField& note() const { return *note_; }

  void show(const core::MarkupBox& box) {
    if (note_->text() != box.note) note_->setText(box.note);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintMarkBadge(painter, QRectF(0, (height() - kBadge) / 2.0, kBadge, kBadge), index_ + 1);
  }

 private:
  int index_;
  TextField* note_;
  IconButton* remove_;
};

MarkPanel::MarkPanel(MarkingPresenter& marking, QWidget* parent) : QWidget(parent), marking_(marking) {
  setAccessibleName(texts::markAreas());
  build();
  connect(&marking_, &MarkingPresenter::changed, this, &MarkPanel::refresh);
  refresh();
  hide();
}

void MarkPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, 0, 1, height()), colors().lineSubtle);
}

QWidget* MarkPanel::buildHead() {
  auto* head = new QWidget;
  head->setFixedHeight(46);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(16, 0, 12, 0);
  auto* title = new Label(texts::markAreas(), Type::title);
  auto* close = new IconButton(u"x"_s, texts::leaveMarking(), u"Esc"_s);
  close->setControlSize(ControlSize::compact);
  connect(close, &IconButton::clicked, &marking_, &MarkingPresenter::leave);
  row->addWidget(title, 1);
  row->addWidget(close);
  return head;
}

void MarkPanel::buildRules(QVBoxLayout& column) {
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  auto* name = new Label(texts::changeOnlyMarked(), Type::body);
  name->setWeight(Weight::medium);
  confine_ = new Switch(texts::changeOnlyMarked());
  row->addWidget(name, 1);
  row->addWidget(confine_);
  rule_ = new Paragraph({}, Type::small, &Colors::textSecondary);
  column.addLayout(row);
  column.addSpacing(2);
  column.addWidget(rule_);
  connect(confine_, &QAbstractButton::toggled, &marking_, &MarkingPresenter::setConfines);
}

void MarkPanel::build() {
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(1, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(buildHead());
  whole->addWidget(new Hairline);
  body_ = new QWidget;
  whole->addWidget(plainScrollArea(body_), 1);
  auto* column = new QVBoxLayout(body_);
  column->setContentsMargins(16, 14, 16, 16);
  column->setSpacing(0);
  auto* question = new Label(texts::changeOnePart(), Type::body);
  question->setWeight(Weight::semibold);
  auto* add = new Button(texts::addBox(), ButtonVariant::quiet);
  add->setIconName(u"plus"_s);
  add->setControlSize(ControlSize::compact);
  connect(add, &Button::clicked, &marking_, &MarkingPresenter::addInTheMiddle);
  auto* head = new QHBoxLayout;
  head->addWidget(question, 1);
  head->addWidget(add);
  column->addLayout(head);
  column->addSpacing(8);
  list_ = new QVBoxLayout;
  list_->setSpacing(6);
  column->addLayout(list_);
  column->addSpacing(16);
  buildRules(*column);
  column->addStretch(1);
}

// Rows stay where they are while boxes come and go behind them, so that a thousand boxes are not built at each key.
void MarkPanel::fitRows(int count) {
  while (static_cast<int>(rows_.size()) > count) {
    MarkRow* last = rows_.back();
    rows_.pop_back();
    if (last->isAncestorOf(QApplication::focusWidget())) Q_EMIT noteLeft();
    last->hide();
    last->deleteLater();
  }
  while (static_cast<int>(rows_.size()) < count) {
    const int index = static_cast<int>(rows_.size());
    auto* row = new MarkRow(marking_, index);
    connect(&row->note(), &QLineEdit::returnPressed, this, &MarkPanel::noteLeft);
    connect(&row->note(), &TextField::escapePressed, this, &MarkPanel::noteLeft);
    list_->addWidget(row);
    rows_.push_back(row);
  }
}

void MarkPanel::refresh() {
  const auto& boxes = marking_.marks().boxes();
  fitRows(static_cast<int>(boxes.size()));
  for (size_t index = 0; index < boxes.size(); ++index) rows_[index]->show(boxes[index]);
  const QSignalBlocker quiet(confine_);
  confine_->setChecked(marking_.confines());
  rule_->setParagraph(marking_.confines() ? texts::outsideIsCopied() : texts::outsideMayChange());
}

void MarkPanel::focusNote(int index) {
  if (index < 0 || index >= static_cast<int>(rows_.size())) return;
  rows_[static_cast<size_t>(index)]->note().setFocus(Qt::OtherFocusReason);
}

}  // namespace sorvan::views
