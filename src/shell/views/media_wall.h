// The wall of pictures, clips, sounds and jobs.
#pragma once

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QTimer>
#include <QUrl>

#include "shell/views/media_cell.h"
#include "shell/views/painted_list.h"
#include "shell/views/scroll_speed.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/wall_layout.h"
#include "shell/views/wall_source.h"

namespace sorvan::views {

class DropFrame;
class EmptyNote;

// Something that paints over one cell, such as a clip that plays under the pointer. Main thread.
class CellOverlay {
 public:
  virtual ~CellOverlay() = default;
  // The cell it covers now; null: none.
  virtual QUuid cell() const = 0;
  // Paints in place of the cell's picture and badges; the rings of the selection come on top. `area` is in the
  // viewport's coordinates, in logical pixels; `look` is how the wall would paint the cell.
  virtual void paint(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) = 0;
};

// Paints only what is visible; a wall of a hundred thousand cells holds two numbers for each. Main thread.
class MediaWall final : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  // Both outlive the wall.
  MediaWall(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void setRowHeight(int pixels);
  // Room at the foot that something floats over.
  void setBottomInset(int pixels);
  void setSelection(const QSet<QUuid>& selection);
  const QSet<QUuid>& selection() const { return selection_; }
  void scrollTo(int index);
  // Lent until it is removed. The wall asks it in each paint; `updateCell` makes it ask again.
  void addOverlay(CellOverlay* overlay);
  void removeOverlay(CellOverlay* overlay);
  // Repaints one cell where it is visible.
  void updateCell(QUuid cell);
  // Items in view whose pictures are not there yet.
  int placeholders() const;
  // What the cell shows now; null while it is not there.
  QPixmap pictureOf(int index) const;

  QAbstractScrollArea& area() override { return *this; }
  int rowCount() const override { return source_.count(); }
  QUuid rowId(int index) const override { return source_.idAt(index); }
  int rowIndex(QUuid id) const override { return source_.indexOf(id); }
  std::pair<int, int> visibleRange() const override;
  QRect cellRect(int index) const override;
  QString rowName(int index) const override;
  QString rowDescription(int index) const override;
  bool rowSelected(int index) const override { return selection_.contains(source_.idAt(index)); }
  QUuid currentRow() const override { return current_; }
  QStringList rowActions(int index) const override;
  void performRowAction(int index, const QString& action) override;
  QWidget* standIn() const override;

 Q_SIGNALS:
  void selectionRequested(const QSet<QUuid>& selection);
  void opened(QUuid cell);
  // The pointer came to rest over another cell, at this place of the viewport; null: over none. A scrolled wall has no
  // cell under the pointer until it moves again.
  void cellHovered(QUuid cell, QRect area);
  // Space: the selected cells, at least one, large over the window.
  void quickLookRequested();
  void jobActionRequested(QUuid job, sorvan::shell::JobAction action);
  void jobDismissed(QUuid job);
  // For the selection, or for the wall itself when nothing is selected.
  void menuRequested(QPoint globalPosition);
  void favoriteToggled(QUuid item);
  // The badge of a sound: it is to play in its cell, or to stop.
  void playPressed(QUuid item);
  // The selection is being dragged away. The button is down; who drags says how it went by nothing at all.
  void dragRequested();
  // Files of other programs were dropped on the wall.
  void filesDropped(const QList<QUrl>& files);
  // The button of the empty wall.
  void emptyActionRequested();
  void escapePressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
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
  struct Press {
    QPoint at;          // in the viewport
    bool kept = false;  // on one of several selected cells, which a drag takes along
  };
  struct Rubber {
    QPoint from;        // in the wall's own coordinates
    QPoint to;          // in the viewport
    QSet<QUuid> base;   // what stays selected beside what is touched
  };

  void connectAll();
  void relayout();
  void noteMiddle();
  void rebuild();
  void updateScrollBar();
  void repaintMoving();
  void placeEmptyNote();
  void paintHeads(QPainter& painter) const;
  void paintRubber(QPainter& painter) const;
  bool paintCells(QPainter& painter, const QRect& exposed);
  void paintCell(QPainter& painter, int index);
  CellLook lookOf(int index, const GalleryCell& cell);
  const GalleryCell& cellAt(int index) const;
  void forgetCells();
  void wantPictures();
  void addWishes(std::vector<ThumbnailStore::Wish>& wishes, int first, int end) const;
  int indexAt(QPoint point) const;
  void hover(QPoint point);
  void leaveHovered();
  void requestQuickLook(int index);
  void pressLeft(QPoint point, Qt::KeyboardModifiers modifiers);
  void maybeDrag(QPoint point);
  void click(int index, Qt::KeyboardModifiers modifiers);
  void selectRange(int from, int to);
  void toggle(int index);
  void request(const QSet<QUuid>& selection);
  void pressPart(int index, CellPart part);
  void pressJobPart(const GalleryCell& cell, CellPart part);
  bool keyMoves(QKeyEvent* event);
  bool keyActs(QKeyEvent* event);
  void openMenuByKey();
  void moveCurrent(int to, Qt::KeyboardModifiers modifiers);
  int neighbourOf(int index, int key) const;
  int pageFrom(int index, int direction) const;
  int currentIndex() const;
  void holdCurrent();
  void rubber();
  void scrollForRubber();
  void makeCurrent(int index);

  WallSource& source_;
  ThumbnailStore& thumbnails_;
  WallLayout layout_;
  QSet<QUuid> selection_;
  QUuid current_;
  QUuid anchor_;
  int hovered_ = -1;
  CellPart hoveredPart_ = CellPart::none;
  int rowHeight_;
  int bottomInset_ = 0;
  QUuid middle_;                      // the cell in the middle of the view, null at the top
  double middleOffset_ = 0;           // of its top from the view's, in pixels
  std::optional<Press> press_;
  std::optional<Rubber> rubber_;
  QRect rubberBand_;
  QTimer rubberScroll_;
  QTimer motion_;
  mutable QHash<int, GalleryCell> cells_;  // those that were shown lately
  bool picturesWanted_ = true;             // other cells are in view than those whose pictures were asked for
  ScrollSpeed speed_;
  QElapsedTimer clock_;
  QTimer settle_;
  int lastTop_ = 0;
  int direction_ = 1;
  int currentPlace_ = 0;  // where the current cell stood last
  EmptyNote* emptyNote_;
  DropFrame* frame_;
  std::vector<CellOverlay*> overlays_;
};

}  // namespace sorvan::views
