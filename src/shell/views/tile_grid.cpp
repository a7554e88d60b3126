#include "shell/views/tile_grid.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "shell/views/focus_ring.h"
#include "shell/views/theme.h"

namespace sorvan::views {

TileGrid::TileGrid(const QString& name, Shape shape, Press press, QWidget* parent)
    : QAbstractScrollArea(parent), shape_(std::move(shape)), press_(press) {
  setAccessibleName(name);
  setProperty(ownFocusProperty, true);
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  viewport()->setMouseTracking(true);
  connect(&Theme::instance(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
  describePaintedList(*this);
}

void TileGrid::setTiles(std::vector<Tile> tiles) {
  tiles_ = std::move(tiles);
  hovered_ = -1;
  if (rowIndex(current_) < 0) current_ = tiles_.empty() ? QUuid() : tiles_.front().id;
  relayout();
  viewport()->update();
}

int TileGrid::rowIndex(QUuid id) const {
  for (std::size_t index = 0; index < tiles_.size(); ++index)
    if (tiles_[index].id == id) return static_cast<int>(index);
  return -1;
}

int TileGrid::columns() const {
  const int room = viewport()->width() - 2 * shape_.margin + shape_.gap;
  return std::max(1, room / (shape_.leastWidth + shape_.gap));
}

int TileGrid::tileWidth() const {
  const int room = viewport()->width() - 2 * shape_.margin - (columns() - 1) * shape_.gap;
  return std::max(1, room / columns());
}

QRect TileGrid::cellRect(int index) const {
  const int column = index % columns();
  const int row = index / columns();
  return {shape_.margin + column * (tileWidth() + shape_.gap),
          shape_.margin + row * (tileHeight() + shape_.gap) - verticalScrollBar()->value(), tileWidth(), tileHeight()};
}

std::pair<int, int> TileGrid::visibleRange() const {
  const int rowHeight = tileHeight() + shape_.gap;
  const int first = std::max(0, verticalScrollBar()->value() / rowHeight) * columns();
  const int rows = viewport()->height() / rowHeight + 2;
  return {std::min(first, rowCount()), std::min(first + rows * columns(), rowCount())};
}

bool TileGrid::rowSelected(int index) const {
  const Tile& tile = tiles_.at(static_cast<std::size_t>(index));
  return tile.chosen || (press_ == Press::selects && tile.id == current_);
}

void TileGrid::performRowAction(int index, const QString& action) {
  setCurrent(rowId(index));
  if (action == openRowAction || press_ == Press::activates) Q_EMIT activated(rowId(index));
}

void TileGrid::relayout() {
  const int rows = (rowCount() + columns() - 1) / columns();
  const int height = 2 * shape_.margin + rows * (tileHeight() + shape_.gap) - shape_.gap;
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(48);
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
}

void TileGrid::resizeEvent(QResizeEvent*) { relayout(); }

void TileGrid::setCurrent(QUuid id) {
  if (rowIndex(id) < 0 || id == current_) return;
  current_ = id;
  viewport()->update();
  Q_EMIT currentChanged(id);
}

void TileGrid::walk(int to) {
  if (tiles_.empty()) return;
  const int index = std::clamp(to, 0, rowCount() - 1);
  setCurrent(rowId(index));
  const QRect cell = cellRect(index);
  QScrollBar* bar = verticalScrollBar();
  if (cell.top() < shape_.margin) bar->setValue(bar->value() + cell.top() - shape_.margin);
  if (cell.bottom() > viewport()->height() - shape_.margin)
    bar->setValue(bar->value() + cell.bottom() - viewport()->height() + shape_.margin);
  announceCurrentRow(*this, index);
}

void TileGrid::mousePressEvent(QMouseEvent* event) {
  const int index = indexAt(event->pos());
  if (index < 0) return;
  const QUuid id = rowId(index);
  setCurrent(id);
  if (event->button() == Qt::LeftButton && press_ == Press::activates) Q_EMIT activated(id);
}

void TileGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (press_ == Press::activates) return mousePressEvent(event);
  const int index = indexAt(event->pos());
  if (index >= 0 && event->button() == Qt::LeftButton) Q_EMIT activated(rowId(index));
}

void TileGrid::mouseMoveEvent(QMouseEvent* event) {
  const int index = indexAt(event->pos());
  if (index == hovered_) return;
  hovered_ = index;
  viewport()->update();
}

void TileGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const int index = byKey ? rowIndex(current_) : indexAt(event->pos());
  if (index < 0) return;
  const QUuid id = rowId(index);
  setCurrent(id);
  Q_EMIT menuRequested(id, byKey ? viewport()->mapToGlobal(cellRect(index).center()) : event->globalPos());
}

void TileGrid::keyPressEvent(QKeyEvent* event) {
  const int at = rowIndex(current_);
  const int page = std::max(1, viewport()->height() / (tileHeight() + shape_.gap)) * columns();
  switch (event->key()) {
    case Qt::Key_Left:
      return walk(at - 1);
    case Qt::Key_Right:
      return walk(at + 1);
    case Qt::Key_Up:
      return at >= columns() ? walk(at - columns()) : void();
    case Qt::Key_Down:
      return at + columns() < rowCount() ? walk(at + columns()) : void();
    case Qt::Key_PageUp:
      return walk(at - page);
    case Qt::Key_PageDown:
      return walk(at + page);
    case Qt::Key_Home:
      return walk(0);
    case Qt::Key_End:
      return walk(rowCount() - 1);
    default:
      break;
  }
  if (at < 0 || event->modifiers() & ~Qt::KeypadModifier) return QAbstractScrollArea::keyPressEvent(event);
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
    Q_EMIT activated(current_);
  } else if (key == Qt::Key_Escape) {
    event->ignore();
  } else {
    Q_EMIT keyPressed(current_, key);
  }
}

void TileGrid::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void TileGrid::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

bool TileGrid::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave && hovered_ >= 0) {
    hovered_ = -1;
    viewport()->update();
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void TileGrid::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const auto [first, end] = visibleRange();
  for (int index = first; index < end; ++index) {
    const QRect area = cellRect(index);
    if (!area.adjusted(-4, -4, 4, 4).intersects(event->rect())) continue;
    const bool current = rowId(index) == current_;
    paintTile(painter, index, area, {current, index == hovered_, current && hasFocus()});
  }
}

}  // namespace sorvan::views
