// The family of an item as an indented tree.
#pragma once

#include "shell/lineage_presenter.h"
#include "shell/views/painted_list.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// Paints only the rows in view. Main thread.
class LineageTree final : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  // The store outlives the tree.
  explicit LineageTree(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const std::vector<LineageRowDisplay>& rows);
  using QWidget::show;
  // Brings the row into view and gives it the keyboard.
  void setCurrent(QUuid item);

  QAccessible::Role listRole() const override { return QAccessible::Tree; }
  QAccessible::Role rowRole() const override { return QAccessible::TreeItem; }
  QAbstractScrollArea& area() override { return *this; }
  int rowCount() const override { return static_cast<int>(rows_.size()); }
  QUuid rowId(int index) const override { return rows_.at(static_cast<size_t>(index)).id; }
  int rowIndex(QUuid id) const override;
  std::pair<int, int> visibleRange() const override;
  QRect cellRect(int index) const override;
  QString rowName(int index) const override { return rows_.at(static_cast<size_t>(index)).accessibleName; }
  QString rowDescription(int index) const override;
  bool rowSelected(int index) const override { return rows_.at(static_cast<size_t>(index)).inspected; }
  QUuid currentRow() const override { return current_; }
  QStringList rowActions(int index) const override;
  void performRowAction(int index, const QString& action) override;

 Q_SIGNALS:
  void inspectRequested(QUuid item);
  void openRequested(QUuid item);
  // Space: the item large over the window.
  void lookRequested(QUuid item);
  void backRequested();
  void menuRequested(QPoint globalPosition);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void updateScrollBar();
  int left(int depth) const;
  void paintLines(QPainter& painter, int first, int end) const;
  void paintLine(QPainter& painter, int index) const;
  void paintRow(QPainter& painter, int index);
  void paintThumbnail(QPainter& painter, const QRect& area, const LineageRowDisplay& row);
  int paintName(QPainter& painter, const QRect& area, const LineageRowDisplay& row) const;
  int neighbourOf(int index, int key) const;
  void moveTo(int index);
  void reveal(int index);

  ThumbnailStore& thumbnails_;
  std::vector<LineageRowDisplay> rows_;
  int deepest_ = 0;
  QUuid current_;
  int hovered_ = -1;
};

}  // namespace sorvan::views
