#include "shell/views/sheet_cards.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>

#include "shell/item_transfer.h"
#include "shell/sheet_texts.h"
#include "shell/views/dropped_media.h"
#include "shell/views/feedback.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPad = 16;
constexpr int kGap = 16;
constexpr int kWidest = 300;  // of a card
constexpr int kWords = 54;    // below the mosaic
constexpr int kInside = 2;    // between the pictures of a mosaic
constexpr int kThumbSize = 640;

}  // namespace

std::vector<QRect> mosaicPlaces(const QRect& area, int pictures) {
  const int halfWidth = (area.width() - kInside) / 2;
  const int halfHeight = (area.height() - kInside) / 2;
  const int right = area.left() + halfWidth + kInside;
  const int below = area.top() + halfHeight + kInside;
  const int rest = area.width() - halfWidth - kInside;
  const int low = area.height() - halfHeight - kInside;
  const QRect leftHalf(area.left(), area.top(), halfWidth, area.height());
  const QRect upperRight(right, area.top(), rest, halfHeight);
  const QRect lowerRight(right, below, rest, low);
  switch (pictures) {
    case 0:
      return {};
    case 1:
      return {area};
    case 2:
      return {leftHalf, QRect(right, area.top(), rest, area.height())};
    case 3:
      return {leftHalf, upperRight, lowerRight};
    default:
      return {QRect(area.left(), area.top(), halfWidth, halfHeight), upperRight,
              QRect(area.left(), below, halfWidth, low), lowerRight};
  }
}

SheetCards::SheetCards(SheetBrowserPresenter& presenter, ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractScrollArea(parent), presenter_(presenter), thumbnails_(thumbnails) {
  setAccessibleName(shell::texts::contactSheetList);
  setProperty(ownFocusProperty, true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setMouseTracking(true);
  setAcceptDrops(true);
  viewport()->setAutoFillBackground(false);
  describePaintedList(*this);
  connect(&presenter_, &SheetBrowserPresenter::changed, this, &SheetCards::refresh);
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  connect(&Theme::instance(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
  refresh();
}

void SheetCards::refresh() {
  if (presenter_.indexOf(current_) < 0) current_ = presenter_.count() > 0 ? presenter_.idAt(0) : QUuid();
  hovered_ = -1;
  updateScrollBar();
  viewport()->update();
}

SheetCards::Grid SheetCards::grid() const {
  const int room = std::max(1, viewport()->width() - 2 * kPad + kGap);
  const int columns = std::max(2, (room + kWidest + kGap - 1) / (kWidest + kGap));
  const int width = room / columns - kGap;
  return {columns, width, width * 2 / 3 + kWords};
}

void SheetCards::updateScrollBar() {
  const Grid cards = grid();
  const int rows = (presenter_.count() + cards.columns - 1) / cards.columns;
  const int content = 2 * kPad + rows * (cards.height + kGap) - kGap;
  verticalScrollBar()->setRange(0, std::max(0, content - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(cards.height / 3);
}

void SheetCards::resizeEvent(QResizeEvent*) { updateScrollBar(); }
void SheetCards::scrollContentsBy(int, int) { viewport()->update(); }

QRect SheetCards::cellRect(int index) const {
  const Grid cards = grid();
  const int row = index / cards.columns;
  const int column = index % cards.columns;
  return {kPad + column * (cards.width + kGap),
          kPad + row * (cards.height + kGap) - verticalScrollBar()->value(), cards.width, cards.height};
}

std::pair<int, int> SheetCards::visibleRange() const {
  const Grid cards = grid();
  const int top = verticalScrollBar()->value() - kPad;
  const int step = cards.height + kGap;
  const int first = std::clamp(top / step * cards.columns, 0, presenter_.count());
  const int rows = (top + viewport()->height()) / step + 1;
  return {first, std::clamp(rows * cards.columns, first, presenter_.count())};
}

void SheetCards::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), colors().surfaceCanvas);
  if (presenter_.count() == 0) return paintEmpty(painter);
  const auto [first, end] = visibleRange();
  for (int index = first; index < end; ++index) paintCard(painter, index);
  if (dropOn_ >= 0 && dropOn_ < rowCount())
    paintRing(painter, cellRect(dropOn_), metrics().radiusCard, metrics().borderFocus, colors().accentRing);
}

void SheetCards::paintEmpty(QPainter& painter) const {
  const QRect view = viewport()->rect();
  const QColor dim = colors().textTertiary;
  paintIcon(painter, u"grid-2x2"_s, view.adjusted(0, -72, 0, -72), metrics().iconHero, {dim});
  paintText(painter, view.adjusted(0, -12, 0, -12),
            {presenter_.emptyTitle(), fontFor(Type::title), colors().textPrimary, Qt::AlignCenter});
  paintText(painter, view.adjusted(24, 28, -24, 28),
            {presenter_.emptyText(), fontFor(Type::body), colors().textSecondary, Qt::AlignCenter});
}

void SheetCards::paintMosaic(QPainter& painter, const QRect& area, const SheetCard& card) {
  const Colors& c = colors();
  painter.save();
  QPainterPath corners;
  corners.addRoundedRect(area, metrics().radiusCard, metrics().radiusCard);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipPath(corners);
  painter.fillRect(area, c.surfacePlaceholder);
  const std::vector<QRect> places = mosaicPlaces(area, static_cast<int>(card.thumbnails.size()));
  for (size_t number = 0; number < places.size(); ++number) {
    const auto answer = thumbnails_.picture(card.thumbnails[number], card.files[number], kThumbSize);
    if (answer.state == ThumbnailStore::State::ready) paintCover(painter, places[number], 0, answer.picture);
    else if (answer.state != ThumbnailStore::State::loading)
      paintIcon(painter, u"triangle-alert"_s, places[number], 18, {c.textTertiary});
    if (number > 0) painter.fillRect(QRect(places[number].left() - kInside, places[number].top(), kInside, places[number].height()), c.surfaceCanvas);
  }
  if (places.size() > 2) {
    const QRect& last = places.back();
    const int left = places.size() > 3 ? area.left() : last.left();
    painter.fillRect(QRect(left, last.top() - kInside, area.right() - left + 1, kInside), c.surfaceCanvas);
  }
  if (places.empty()) paintIcon(painter, u"grid-2x2"_s, area, 24, {c.textTertiary});
  painter.restore();
}

void SheetCards::paintCard(QPainter& painter, int index) {
  const Colors& c = colors();
  const SheetCard card = presenter_.cardAt(index);
  const QRect area = cellRect(index);
  const QRect mosaic(area.left(), area.top(), area.width(), area.height() - kWords);
  if (index == hovered_)
    paintPanel(painter, area.adjusted(-6, -6, 6, 2), metrics().radiusCard + 4, c.stateHover);
  paintMosaic(painter, mosaic, card);
  const QRect words(area.left() + 2, mosaic.bottom() + 8, area.width() - 4, 20);
  paintText(painter, words, {card.title, fontFor(Type::body, Weight::medium), c.textPrimary});
  QRect facts = words.translated(0, 20);
  if (card.running) {
    paintSpinner(painter, QRect(facts.left(), facts.top(), 14, facts.height()), 13, c.accentText, 0);
    facts.setLeft(facts.left() + 19);
  }
  const QColor dim = index == hovered_ ? c.textTertiaryOnSelected : c.textTertiary;
  paintText(painter, facts, {card.factsText, fontFor(Type::small), card.running ? c.accentText : dim});
  if (card.id != current_ || !hasFocus()) return;
  paintRing(painter, QRectF(mosaic).adjusted(-3, -3, 3, 3), metrics().radiusCard + 3, metrics().borderSelection - 1,
            c.accentRing);
}

void SheetCards::performRowAction(int index, const QString& action) {
  if (action == openRowAction)
    Q_EMIT opened(rowId(index));
  else
    moveTo(index);
}

void SheetCards::setCurrent(QUuid sheet) { moveTo(presenter_.indexOf(sheet)); }

void SheetCards::moveTo(int index) {
  if (index < 0 || index >= presenter_.count()) return;
  current_ = presenter_.idAt(index);
  const QRect area = cellRect(index);
  QScrollBar* bar = verticalScrollBar();
  if (area.top() < kPad) bar->setValue(bar->value() + area.top() - kPad);
  if (area.bottom() > viewport()->height() - kPad) bar->setValue(bar->value() + area.bottom() - viewport()->height() + kPad);
  if (hasFocus()) announceCurrentRow(*this, index);
  viewport()->update();
}

int SheetCards::neighbourOf(int index, int key) const {
  const int last = presenter_.count() - 1;
  const int columns = grid().columns;
  switch (key) {
    case Qt::Key_Left:
      return std::max(0, index - 1);
    case Qt::Key_Right:
      return std::min(last, index + 1);
    case Qt::Key_Up:
      return index >= columns ? index - columns : index;
    case Qt::Key_Down:
      return index + columns <= last ? index + columns : (index / columns < last / columns ? last : index);
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return last;
    default:
      return -1;
  }
}

void SheetCards::keyPressEvent(QKeyEvent* event) {
  const int now = presenter_.indexOf(current_);
  const int next = now < 0 ? -1 : neighbourOf(now, event->key());
  if (next >= 0 && event->modifiers() == Qt::NoModifier) return moveTo(next);
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (now >= 0) Q_EMIT opened(current_);
      return;
    case Qt::Key_F2:
      if (now >= 0) Q_EMIT renameRequested(current_);
      return;
    case Qt::Key_Delete:
      if (now >= 0) Q_EMIT trashRequested(current_);
      return;
    case Qt::Key_Menu:
      if (now >= 0) Q_EMIT menuRequested(current_, viewport()->mapToGlobal(cellRect(now).center()));
      return;
    case Qt::Key_Escape:
      Q_EMIT escapePressed();
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void SheetCards::mousePressEvent(QMouseEvent* event) { moveTo(indexAt(event->position().toPoint())); }

void SheetCards::mouseDoubleClickEvent(QMouseEvent* event) {
  const int index = indexAt(event->position().toPoint());
  if (index >= 0 && event->button() == Qt::LeftButton) Q_EMIT opened(rowId(index));
}

void SheetCards::mouseMoveEvent(QMouseEvent* event) {
  const int index = indexAt(event->position().toPoint());
  if (index == hovered_) return;
  hovered_ = index;
  viewport()->update();
}

void SheetCards::contextMenuEvent(QContextMenuEvent* event) {
  const int index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
  if (index >= 0) Q_EMIT menuRequested(rowId(index), event->globalPos());
}

bool SheetCards::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave && hovered_ >= 0) {
    hovered_ = -1;
    viewport()->update();
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void SheetCards::dropOn(int index) {
  if (index == dropOn_) return;
  dropOn_ = index;
  viewport()->update();
}

// A view that does not take what enters it beside the cards hears no more of it when it comes to one.
void SheetCards::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& data = *event->mimeData();
  event->setDropAction(Qt::CopyAction);
  event->setAccepted(!itemsFromInside(data).empty() || !localFiles(data).isEmpty());
}

void SheetCards::dragMoveEvent(QDragMoveEvent* event) {
  dropOn(indexAt(event->position().toPoint()));
  if (dropOn_ < 0) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void SheetCards::dragLeaveEvent(QDragLeaveEvent*) { dropOn(-1); }

void SheetCards::dropEvent(QDropEvent* event) {
  const int index = std::exchange(dropOn_, -1);
  viewport()->update();
  if (index < 0 || index >= rowCount()) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT mediaDropped(rowId(index), *event->mimeData());
}

void SheetCards::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  const int index = presenter_.indexOf(current_);
  if (index >= 0) announceCurrentRow(*this, index);
  viewport()->update();
}

void SheetCards::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

}  // namespace sorvan::views
