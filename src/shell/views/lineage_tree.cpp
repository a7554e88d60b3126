#include "shell/views/lineage_tree.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QToolTip>

#include "shell/sheet_texts.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/labels.h"
#include "shell/views/media_cell.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTop = 14;
constexpr int kRow = 66;        // from one row to the next
constexpr int kRowHeight = 54;  // of what is filled
constexpr int kLeft = 20;
constexpr int kRight = 16;
constexpr int kIndent = 44;
constexpr int kLeastIndent = 6;
constexpr int kWords = 420;  // what a row keeps for its words, however deep it stands
constexpr QSize kThumb(72, 48);
constexpr int kElbow = 7;  // radius of a line's bend
constexpr int kDateWidth = 84;
constexpr int kThumbSize = 256;

QPixmap greyed(const QPixmap& picture) {
  return QPixmap::fromImage(picture.toImage().convertToFormat(QImage::Format_Grayscale8));
}

}  // namespace

LineageTree::LineageTree(ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractScrollArea(parent), thumbnails_(thumbnails) {
  setAccessibleName(shell::texts::lineageTitle);
  setAccessibleDescription(shell::texts::lineageHelp);
  setProperty(ownFocusProperty, true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  describePaintedList(*this);
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  connect(&Theme::instance(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

void LineageTree::show(const std::vector<LineageRowDisplay>& rows) {
  rows_ = rows;
  deepest_ = 0;
  for (const LineageRowDisplay& row : rows_) deepest_ = std::max(deepest_, row.depth);
  if (rowIndex(current_) < 0) current_ = rows_.empty() ? QUuid() : rows_.front().id;
  hovered_ = -1;
  updateScrollBar();
  viewport()->update();
}

void LineageTree::setCurrent(QUuid item) {
  const int index = rowIndex(item);
  if (index < 0) return;
  current_ = item;
  reveal(index);
  viewport()->update();
}

int LineageTree::rowIndex(QUuid id) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const LineageRowDisplay& row) { return row.id == id; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void LineageTree::updateScrollBar() {
  const int content = 2 * kTop + kRow * rowCount();
  verticalScrollBar()->setRange(0, std::max(0, content - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(kRow / 2);
}

void LineageTree::resizeEvent(QResizeEvent*) { updateScrollBar(); }
void LineageTree::scrollContentsBy(int, int) { viewport()->update(); }

// A very deep family is drawn in narrower steps, so that words keep their room.
int LineageTree::left(int depth) const {
  const int room = std::max(0, viewport()->width() - kWords - kLeft);
  const int step = deepest_ == 0 ? kIndent : std::clamp(room / deepest_, kLeastIndent, kIndent);
  return kLeft + std::min(step * depth, room);
}

QRect LineageTree::cellRect(int index) const {
  const int x = left(rows_.at(static_cast<size_t>(index)).depth);
  return {x, kTop + kRow * index - verticalScrollBar()->value(), viewport()->width() - kRight - x, kRowHeight};
}

std::pair<int, int> LineageTree::visibleRange() const {
  const int top = verticalScrollBar()->value() - kTop;
  const int first = std::clamp(top / kRow, 0, rowCount());
  return {first, std::clamp((top + viewport()->height()) / kRow + 1, first, rowCount())};
}

void LineageTree::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), colors().surfaceCanvas);
  const auto [first, end] = visibleRange();
  paintLines(painter, first, end);
  for (int index = first; index < end; ++index) paintRow(painter, index);
}

// A line runs from a parent to each of its children, past the rows between them.
void LineageTree::paintLines(QPainter& painter, int first, int end) const {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  for (int index = first; index < rowCount(); ++index) {
    const LineageRowDisplay& row = rows_[static_cast<size_t>(index)];
    if (row.parentRow >= 0 && row.parentRow < end) paintLine(painter, index);
  }
  painter.restore();
}

void LineageTree::paintLine(QPainter& painter, int index) const {
  const LineageRowDisplay& row = rows_[static_cast<size_t>(index)];
  const QRect child = cellRect(index);
  const QRect parent = cellRect(row.parentRow);
  const double x = std::min(parent.left() + 21.5, child.left() - 12.0);
  const double bend = child.center().y() + 0.5;
  QPainterPath path(QPointF(x, std::max(parent.bottom() - 2.5, -1.0 * kRow)));
  path.lineTo(x, std::min(bend - kElbow, viewport()->height() + 1.0 * kRow));
  path.quadTo(QPointF(x, bend), QPointF(x + kElbow, bend));
  path.lineTo(child.left() - 4.0, bend);
  painter.setPen(QPen(row.deleted ? colors().controlBorder : colors().controlBorderStrong, 1.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(path);
}

void LineageTree::paintThumbnail(QPainter& painter, const QRect& area, const LineageRowDisplay& row) {
  const Colors& c = colors();
  if (row.deleted) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(c.controlBorderStrong, 1.5, Qt::DashLine));
    painter.drawRoundedRect(QRectF(area).adjusted(0.75, 0.75, -0.75, -0.75), 5, 5);
    painter.restore();
    return paintIcon(painter, u"trash-2"_s, area, 17, {c.textTertiary});
  }
  const auto answer = thumbnails_.picture(row.thumbnailPath, row.filePath, kThumbSize);
  if (answer.state != ThumbnailStore::State::ready) {
    paintPanel(painter, area, 5, c.surfacePlaceholder);
    if (answer.state != ThumbnailStore::State::loading)
      paintIcon(painter, u"triangle-alert"_s, area, 16, {c.textTertiary});
  } else if (row.trashed) {
    painter.setOpacity(0.38);
    paintCover(painter, area, 5, greyed(answer.picture));
    painter.setOpacity(1);
  } else {
    paintCover(painter, area, 5, answer.picture);
  }
  if (!row.durationText.isEmpty())
    paintPictureBadge(painter, area.adjusted(-3, -3, 3, 3), Qt::BottomRightCorner, {}, row.durationText);
}

// The name with its marks; answers where the first mark begins.
int LineageTree::paintName(QPainter& painter, const QRect& area, const LineageRowDisplay& row) const {
  std::vector<std::pair<QString, BadgeTone>> marks;
  if (row.openedFrom) marks.emplace_back(shell::texts::lineageOpenedFrom, BadgeTone::accent);
  if (row.inspected) marks.emplace_back(shell::texts::lineageInspected, BadgeTone::info);
  if (row.trashed) marks.emplace_back(shell::texts::lineageInTrash, BadgeTone::danger);
  int room = area.width();
  for (const auto& [text, tone] : marks) room -= badgeWidth(text) + 6;
  const QFont font = fontFor(Type::body, Weight::medium);
  const int used = paintText(painter, QRect(area.left(), area.top(), std::max(0, room), area.height()),
                             {row.name, font, row.deleted ? colors().textSecondary : colors().textPrimary,
                              Qt::AlignLeft | Qt::AlignVCenter, Qt::ElideMiddle});
  int x = area.left() + used + 6;
  const int start = x;
  for (const auto& [text, tone] : marks) {
    const QRect badge(x, area.top(), badgeWidth(text), 18);
    // The tint of a selected row below the tint of a badge would leave its words too faint.
    if (row.inspected) paintPanel(painter, badge, metrics().radiusSmall, colors().surfaceRaised);
    paintBadge(painter, badge, text, tone);
    x += badgeWidth(text) + 6;
  }
  return start;
}

void LineageTree::paintRow(QPainter& painter, int index) {
  const Colors& c = colors();
  const LineageRowDisplay& row = rows_[static_cast<size_t>(index)];
  const QRect area = cellRect(index);
  if (row.inspected)
    paintPanel(painter, area, metrics().radiusPanel - 1, c.stateSelected);
  else if (index == hovered_ && !row.deleted)
    paintPanel(painter, area, metrics().radiusPanel - 1, c.stateHover);
  const QRect thumb(area.topLeft() + QPoint(3, 3), kThumb);
  paintThumbnail(painter, thumb, row);
  const QColor dim = row.inspected || index == hovered_ ? c.textTertiaryOnSelected : c.textTertiary;
  int right = area.right() - 12;
  if (!row.dateText.isEmpty()) {
    paintText(painter, QRect(right - kDateWidth, area.top(), kDateWidth, area.height()),
              {row.dateText, fontFor(Type::small), dim, Qt::AlignRight | Qt::AlignVCenter});
    right -= kDateWidth + 8;
  }
  if (!row.statusText.isEmpty()) {
    const int width = textWidth(row.statusText, fontFor(Type::small)) + 16;
    const QRect place(right - width, area.top(), width, area.height());
    paintPanel(painter, QRectF(place.left(), place.center().y() - 3.5, 8, 8), 4, statusColor(row.statusToken));
    paintText(painter, place.adjusted(15, 0, 2, 0), {row.statusText, fontFor(Type::small), c.textSecondary});
    right -= width + 12;
  }
  const int x = thumb.right() + 13;
  paintName(painter, QRect(x, area.top() + 9, right - x, 18), row);
  QRect line(x, area.top() + 27, right - x, 16);
  if (!row.deleted) {
    line.setLeft(line.left() + paintText(painter, line, {row.label, fontFor(Type::small), c.textSecondary}));
    if (!row.detail.isEmpty()) line.setLeft(line.left() + paintText(painter, line, {u" · "_s, fontFor(Type::small), dim}));
  }
  paintText(painter, line, {row.detail, fontFor(Type::small), dim});
  if (row.id == current_ && hasFocus() && FocusRing::keyboardInUse())
    paintRing(painter, QRectF(area).adjusted(-1, -1, 1, 1), metrics().radiusPanel, metrics().borderFocus, c.accentRing);
}

QString LineageTree::rowDescription(int index) const {
  const LineageRowDisplay& row = rows_.at(static_cast<size_t>(index));
  if (row.deleted) return shell::texts::lineageDeletedText;
  return row.openedFrom ? shell::texts::lineageOpenedFromHelp : QString();
}

QStringList LineageTree::rowActions(int index) const {
  if (rows_.at(static_cast<size_t>(index)).deleted) return {};
  return {selectRowAction, openRowAction};
}

void LineageTree::performRowAction(int index, const QString& action) {
  if (action == openRowAction)
    Q_EMIT openRequested(rowId(index));
  else
    moveTo(index);
}

void LineageTree::reveal(int index) {
  const int top = kTop + kRow * index - kTop;
  const int bottom = kTop + kRow * (index + 1);
  if (top < verticalScrollBar()->value())
    verticalScrollBar()->setValue(top);
  else if (bottom > verticalScrollBar()->value() + viewport()->height())
    verticalScrollBar()->setValue(bottom - viewport()->height());
}

// The keyboard goes to every row; what was deleted has nothing to inspect.
void LineageTree::moveTo(int index) {
  if (index < 0 || index >= rowCount()) return;
  current_ = rowId(index);
  reveal(index);
  viewport()->update();
  if (hasFocus()) announceCurrentRow(*this, index);
  if (!rows_[static_cast<size_t>(index)].deleted) Q_EMIT inspectRequested(current_);
}

int LineageTree::neighbourOf(int index, int key) const {
  const int last = rowCount() - 1;
  const int page = std::max(1, viewport()->height() / kRow);
  switch (key) {
    case Qt::Key_Up:
      return std::max(0, index - 1);
    case Qt::Key_Down:
      return std::min(last, index + 1);
    case Qt::Key_Left:
      return rows_[static_cast<size_t>(index)].parentRow >= 0 ? rows_[static_cast<size_t>(index)].parentRow : index;
    case Qt::Key_Right: {
      const bool hasChild = index < last && rows_[static_cast<size_t>(index) + 1].parentRow == index;
      return hasChild ? index + 1 : index;
    }
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return last;
    case Qt::Key_PageUp:
      return std::max(0, index - page);
    case Qt::Key_PageDown:
      return std::min(last, index + page);
    default:
      return -1;
  }
}

void LineageTree::keyPressEvent(QKeyEvent* event) {
  const int now = rowIndex(current_);
  const int next = now < 0 ? -1 : neighbourOf(now, event->key());
  if (next >= 0 && event->modifiers() == Qt::NoModifier) return moveTo(next);
  const bool there = now >= 0 && !rows_[static_cast<size_t>(now)].deleted;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->modifiers().testFlag(Qt::ControlModifier)) Q_EMIT backRequested();
      else if (there) Q_EMIT openRequested(current_);
      return;
    case Qt::Key_Escape:
      Q_EMIT backRequested();
      return;
    case Qt::Key_Space:
      if (there) Q_EMIT lookRequested(current_);
      return;
    case Qt::Key_Menu:
      if (there) Q_EMIT menuRequested(viewport()->mapToGlobal(cellRect(now).center()));
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void LineageTree::mousePressEvent(QMouseEvent* event) { moveTo(indexAt(event->position().toPoint())); }

void LineageTree::mouseDoubleClickEvent(QMouseEvent* event) {
  const int index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index >= 0 && !rows_[static_cast<size_t>(index)].deleted)
    Q_EMIT openRequested(rowId(index));
}

void LineageTree::mouseMoveEvent(QMouseEvent* event) {
  const int index = indexAt(event->position().toPoint());
  if (index == hovered_) return;
  hovered_ = index;
  viewport()->update();
}

void LineageTree::contextMenuEvent(QContextMenuEvent* event) {
  const int index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
  if (index >= 0 && !rows_[static_cast<size_t>(index)].deleted) Q_EMIT menuRequested(event->globalPos());
}

bool LineageTree::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) {
    hovered_ = -1;
    viewport()->update();
  }
  if (event->type() == QEvent::ToolTip) {
    auto* help = static_cast<QHelpEvent*>(event);
    const int index = indexAt(help->pos());
    const QString text = index < 0 ? QString() : rowDescription(index);
    if (text.isEmpty())
      QToolTip::hideText();
    else
      QToolTip::showText(help->globalPos(), text, viewport());
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

// Where the keyboard stands on what was deleted, the keys of marks would reach the item that is inspected elsewhere.
bool LineageTree::event(QEvent* event) {
  const int now = rowIndex(current_);
  const bool deleted = now >= 0 && rows_[static_cast<size_t>(now)].deleted;
  if (event->type() == QEvent::ShortcutOverride && deleted) {
    const auto* pressed = static_cast<QKeyEvent*>(event);
    const bool held = pressed->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool ofWindow = pressed->key() >= Qt::Key_F1 && pressed->key() <= Qt::Key_F35 && pressed->key() != Qt::Key_F2;
    if (!held && !ofWindow) event->accept();
    return true;
  }
  return QAbstractScrollArea::event(event);
}

void LineageTree::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  const int index = rowIndex(current_);
  if (index >= 0) announceCurrentRow(*this, index);
  viewport()->update();
}

void LineageTree::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

}  // namespace sorvan::views
