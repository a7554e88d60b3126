// The contact sheets of a place as cards.
#pragma once

#include "shell/sheet_browser_presenter.h"
#include "shell/views/painted_list.h"
#include "shell/views/thumbnail_store.h"

class QMimeData;

namespace sorvan::views {

// Paints only the cards in view. Main thread.
class SheetCards final : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  // Both outlive the view.
  SheetCards(SheetBrowserPresenter& presenter, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // The card that has the keyboard; null when there is none.
  QUuid current() const { return current_; }
  void setCurrent(QUuid sheet);

  QAbstractScrollArea& area() override { return *this; }
  int rowCount() const override { return presenter_.count(); }
  QUuid rowId(int index) const override { return presenter_.idAt(index); }
  int rowIndex(QUuid id) const override { return presenter_.indexOf(id); }
  std::pair<int, int> visibleRange() const override;
  QRect cellRect(int index) const override;
  QString rowName(int index) const override { return presenter_.cardAt(index).accessibleName; }
  QString rowDescription(int) const override { return {}; }
  bool rowSelected(int index) const override { return presenter_.idAt(index) == current_; }
  QUuid currentRow() const override { return current_; }
  QStringList rowActions(int) const override { return {selectRowAction, openRowAction}; }
  void performRowAction(int index, const QString& action) override;

 Q_SIGNALS:
  void opened(QUuid sheet);
  void renameRequested(QUuid sheet);
  void trashRequested(QUuid sheet);
  void menuRequested(QUuid sheet, QPoint globalPosition);
  void escapePressed();
  // Items or files were let go over a card. The data is gone afterwards.
  void mediaDropped(QUuid sheet, const QMimeData& data);

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
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct Grid {
    int columns = 1;
    int width = 0;   // of a card
    int height = 0;  // of a card
  };
  Grid grid() const;
  void refresh();
  void updateScrollBar();
  void paintCard(QPainter& painter, int index);
  void paintMosaic(QPainter& painter, const QRect& area, const SheetCard& card);
  void paintEmpty(QPainter& painter) const;
  int neighbourOf(int index, int key) const;
  void moveTo(int index);
  void dropOn(int index);

  SheetBrowserPresenter& presenter_;
  ThumbnailStore& thumbnails_;
  QUuid current_;
  int hovered_ = -1;
  int dropOn_ = -1;  // the card that would take what is dragged
};

// Where the pictures of a mosaic lie in it: one, two beside each other, one and two below each other, or four.
std::vector<QRect> mosaicPlaces(const QRect& area, int pictures);

}  // namespace sorvan::views
