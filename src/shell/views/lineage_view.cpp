#include "shell/views/lineage_view.h"

#include <QHBoxLayout>
#include <QPainter>

#include "shell/sheet_texts.h"
#include "shell/views/labels.h"

namespace sorvan::views {

LineageView::LineageView(LineagePresenter& presenter, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), presenter_(presenter), tree_(new LineageTree(thumbnails)) {
  auto* help = new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight);
  help->setText(shell::texts::lineageHelp);
  auto* explanation = new ElidedLabel(Type::small, &Colors::textTertiary, Qt::ElideRight);
  explanation->setText(shell::texts::lineageExplanation);
  explanation->setToolTip(shell::texts::lineageExplanation);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(16, 0, 16, 0);
  row->setSpacing(24);
  row->addWidget(help);
  row->addStretch(1);
  row->addWidget(explanation);
  auto* head = new QWidget;
  head->setFixedHeight(metrics().filterRow - 1);
  head->setLayout(row);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(head);
  column->addWidget(new Hairline);
  column->addWidget(tree_, 1);
  setFocusProxy(tree_);
  connect(tree_, &LineageTree::inspectRequested, &presenter_, &LineagePresenter::inspect);
  connect(tree_, &LineageTree::openRequested, this, &LineageView::openRequested);
  connect(tree_, &LineageTree::lookRequested, this, &LineageView::lookRequested);
  connect(tree_, &LineageTree::backRequested, this, &LineageView::backRequested);
  connect(tree_, &LineageTree::menuRequested, this, &LineageView::menuRequested);
  connect(&presenter_, &LineagePresenter::changed, this, &LineageView::refresh);
  refresh();
}

// A tree that was just opened begins at the item it was opened from; then it follows what is inspected.
void LineageView::refresh() {
  tree_->show(presenter_.rows());
  const bool another = std::exchange(opened_, presenter_.asset()) != presenter_.asset();
  const bool inspected = std::exchange(inspected_, presenter_.inspectedID()) != presenter_.inspectedID();
  if (another)
    tree_->setCurrent(opened_);
  else if (inspected && tree_->rowIndex(inspected_) >= 0 && tree_->currentRow() != inspected_)
    tree_->setCurrent(inspected_);
}

void LineageView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceCanvas); }

}  // namespace sorvan::views
