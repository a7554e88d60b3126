// The page of an item's family: what can be done, and the tree.
#pragma once

#include "shell/views/lineage_tree.h"

namespace sorvan::views {

class LineageView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the view.
  LineageView(LineagePresenter& presenter, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  LineageTree& tree() { return *tree_; }

 Q_SIGNALS:
  void openRequested(QUuid item);
  void lookRequested(QUuid item);
  void backRequested();
  void menuRequested(QPoint globalPosition);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void refresh();

  LineagePresenter& presenter_;
  LineageTree* tree_;
  QUuid opened_;
  QUuid inspected_;
};

}  // namespace sorvan::views
