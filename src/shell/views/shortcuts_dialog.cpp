#include "shell/views/shortcuts_dialog.h"

#include <QHBoxLayout>
#include <QScrollArea>

#include "shell/texts.h"
#include "shell/views/controls.h"
#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {

constexpr int kMargin = 24;
constexpr int kColumns = 3;
constexpr int kColumnWidth = 272;
constexpr int kColumnGap = 36;
constexpr int kGroupGap = 20;
constexpr int kRowGap = 5;
constexpr int kWindowEdge = 64;  // of the window that stays in sight around it
constexpr int kTitleRows = 2;    // what a group's title and the gap after it take

// A title and its keys. Assistive technology reads both as one.
QWidget* rowOf(const ShortcutRow& row) {
  auto* widget = new QWidget;
  widget->setAccessibleName(row.title + QStringLiteral(", ") + row.keys);
  auto* line = new QHBoxLayout(widget);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(12);
  line->addWidget(new Label(row.title, Type::small, &Colors::textSecondary), 1);
  line->addWidget(new Label(row.keys, Type::small, &Colors::textPrimary));
  return widget;
}

void addGroup(QVBoxLayout& column, const ShortcutGroup& group) {
  if (column.count() > 0) column.addSpacing(kGroupGap);
  auto* title = new Label(group.title);
  title->setWeight(Weight::semibold);
  column.addWidget(title);
  for (const ShortcutRow& row : group.rows) column.addWidget(rowOf(row));
}

// Groups follow one another down the columns, which end as evenly as whole groups allow.
QWidget* columnsOf(const std::vector<ShortcutGroup>& groups) {
  auto* widget = new QWidget;
  auto* all = new QHBoxLayout(widget);
  all->setContentsMargins(kMargin, 16, kMargin, 16);
  all->setSpacing(kColumnGap);
  std::array<QVBoxLayout*, kColumns> columns{};
  std::array<std::size_t, kColumns> lengths{};
  for (QVBoxLayout*& column : columns) {
    column = new QVBoxLayout;
    column->setSpacing(kRowGap);
    all->addLayout(column, 1);
  }
  for (const ShortcutGroup& group : groups) {
    const auto shortest = std::min_element(lengths.begin(), lengths.end());
    addGroup(*columns[static_cast<std::size_t>(shortest - lengths.begin())], group);
    *shortest += group.rows.size() + kTitleRows;
  }
  for (QVBoxLayout* column : columns) column->addStretch(1);
  return widget;
}

}  // namespace

ShortcutsDialog::ShortcutsDialog(const std::vector<ShortcutGroup>& groups, QWidget* parent)
    : QDialog(parent), list_(new QScrollArea) {
  setWindowTitle(shell::texts::keyboardShortcuts);
  setAccessibleName(shell::texts::keyboardShortcuts);
  setAttribute(Qt::WA_DeleteOnClose);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 20, 0, 0);
  all->setSpacing(0);
  auto* title = new Paragraph(shell::texts::keyboardShortcuts, Type::large);
  title->setContentsMargins(kMargin, 0, kMargin, 14);
  all->addWidget(title);
  all->addWidget(new Hairline);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setWidgetResizable(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFocusPolicy(Qt::StrongFocus);
  list_->setAccessibleName(shell::texts::keyboardShortcuts);
  list_->setWidget(columnsOf(groups));
  list_->viewport()->setAutoFillBackground(false);
  list_->widget()->setAutoFillBackground(false);
  all->addWidget(list_, 1);
  all->addWidget(new Hairline);
  auto* done = new Button(shell::texts::done, ButtonVariant::primary);
  done->setDefault(true);
  connect(done, &Button::clicked, this, &QDialog::accept);
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(kMargin, 14, kMargin, 16);
  foot->addStretch(1);
  foot->addWidget(done);
  all->addLayout(foot);
  const QSize wanted(kColumns * kColumnWidth + (kColumns - 1) * kColumnGap + 2 * kMargin,
                     sizeHint().height() - list_->sizeHint().height() + list_->widget()->sizeHint().height());
  resize(wanted.boundedTo(parent->size() - QSize(kWindowEdge, kWindowEdge)));
  list_->setFocus();
  new FocusRing(this);
}

}  // namespace sorvan::views
