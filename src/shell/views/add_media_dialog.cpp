#include "shell/views/add_media_dialog.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "shell/sheet_texts.h"
#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/media_wall.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {

constexpr QSize kSize(820, 600);
constexpr int kRow = 120;

}  // namespace

AddMediaDialog::AddMediaDialog(WallSource& source, ThumbnailStore& thumbnails, const std::vector<QUuid>& alreadyThere,
                               QWidget* parent)
    : QDialog(parent),
      source_(source),
      there_(alreadyThere.begin(), alreadyThere.end()),
      wall_(new MediaWall(source, thumbnails)),
      add_(new Button(shell::texts::addToSheet, ButtonVariant::primary)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(shell::texts::addToSheetTitle);
  setAccessibleName(shell::texts::addToSheetTitle);
  resize(kSize);
  wall_->setAccessibleName(shell::texts::adding);
  wall_->setRowHeight(kRow);
  auto* cancel = new Button(texts::cancel());
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(20, 12, 20, 16);
  foot->setSpacing(8);
  foot->addWidget(new Label(shell::texts::addToSheetNote, Type::small, &Colors::textSecondary), 1);
  foot->addWidget(cancel);
  foot->addWidget(add_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(wall_, 1);
  column->addWidget(new Hairline);
  column->addLayout(foot);
  add_->setDefault(true);
  add_->setEnabled(false);
  connect(wall_, &MediaWall::selectionRequested, this, &AddMediaDialog::select);
  connect(wall_, &MediaWall::opened, this, [this](QUuid item) {
    select({item});
    accept();
  });
  connect(wall_, &MediaWall::escapePressed, this, &QDialog::reject);
  connect(add_, &QAbstractButton::clicked, this, &AddMediaDialog::accept);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, add_, &QAbstractButton::click);
  connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
  wall_->setFocus();
}

void AddMediaDialog::select(const QSet<QUuid>& cells) {
  QSet<QUuid> items;
  for (const QUuid& id : cells) {
    const int index = source_.indexOf(id);
    if (index >= 0 && !source_.isJobAt(index) && !there_.contains(id)) items.insert(id);
  }
  wall_->setSelection(items);
  add_->setEnabled(!items.isEmpty());
}

void AddMediaDialog::accept() {
  std::vector<QUuid> items;
  for (int index = 0; index < source_.count(); ++index)
    if (wall_->selection().contains(source_.idAt(index))) items.push_back(source_.idAt(index));
  if (items.empty()) return;
  QDialog::accept();
  Q_EMIT chosen(items);
}

}  // namespace sorvan::views
