#include "shell/views/media_wall.h"

#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/job_cell.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFrame = 40;         // milliseconds between two pictures of what moves
constexpr int kMostVisible = 200;  // cells; the decoded pictures of the screen must fit their store
constexpr double kUsualAspect = 1.4;
constexpr int kEmptyIcon = 28;

constexpr int kFade = 30;  // how far the wall fades above what floats over its foot

// What floats over the foot of the wall stands on the canvas, not on cut pictures.
void paintFade(QPainter& painter, const QRect& area, int inset) {
  if (inset == 0) return;
  QLinearGradient fade(area.topLeft(), area.bottomLeft());
  QColor canvas = colors().surfaceCanvas;
  fade.setColorAt(0.7, canvas);
  fade.setColorAt(1, canvas);
  canvas.setAlpha(0);
  fade.setColorAt(0, canvas);
  painter.fillRect(area, fade);
}

// Rows may not become so low that more cells are in view than pictures are kept.
int lowestRow(const QSize& view) {
  const double area = static_cast<double>(view.width()) * view.height();
  return std::max(metrics().galleryRowHeightMin, static_cast<int>(std::sqrt(area / (kMostVisible * kUsualAspect))));
}

}  // namespace

MediaWall::MediaWall(WallSource& source, ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractScrollArea(parent),
      source_(source),
      thumbnails_(thumbnails),
      rowHeight_(metrics().galleryRowHeightDefault) {
  setAccessibleName(texts::galleryName());
  setProperty(ownFocusProperty, true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  describePaintedList(*this);
  connect(&source_, &WallSource::layoutChanged, this, [this] { relayout(); });
  connect(&source_, &WallSource::contentChanged, this, [this] {
    thumbnails_.forgetMissing();
    viewport()->update();
  });
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  connect(&Theme::instance(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
  connect(&motion_, &QTimer::timeout, this, &MediaWall::repaintMoving);
  rebuild();
}

void MediaWall::setRowHeight(int pixels) {
  if (rowHeight_ == pixels) return;
  rowHeight_ = pixels;
  relayout();
}

void MediaWall::setBottomInset(int pixels) {
  if (bottomInset_ == pixels) return;
  bottomInset_ = pixels;
  updateScrollBar();
}

void MediaWall::setSelection(const QSet<QUuid>& selection) {
  if (selection_ == selection) return;
  selection_ = selection;
  if (selection.size() == 1 && !selection.contains(current_)) makeCurrent(source_.indexOf(*selection.begin()));
  viewport()->update();
}

void MediaWall::setOverlay(CellOverlay* overlay) {
  overlay_ = overlay;
  viewport()->update();
}

void MediaWall::updateCell(QUuid cell) {
  const auto [first, end] = visibleRange();
  for (int index = first; index < std::min(end, source_.count()); ++index)
    if (source_.idAt(index) == cell) viewport()->update(cellRect(index).adjusted(-4, -4, 4, 4));
}

void MediaWall::rebuild() {
  std::vector<float> aspects(static_cast<size_t>(source_.count()));
  for (int index = 0; index < source_.count(); ++index) {
    const double aspect = source_.aspectRatioAt(index);
    aspects[static_cast<size_t>(index)] = static_cast<float>(source_.isJobAt(index) ? jobCellAspect(aspect) : aspect);
  }
  const int height = std::max(rowHeight_, lowestRow(viewport()->size()));
  layout_.build(aspects, {static_cast<double>(viewport()->width()), static_cast<double>(height),
                          static_cast<double>(metrics().galleryGap), static_cast<double>(metrics().galleryPad)});
  leaveHovered();
}

// The cell in the middle of the view stays there; a wall at its top stays at its top. When the source tells of a change
// its old order is gone, so the middle is noted while the wall is at rest.
void MediaWall::relayout() {
  rebuild();
  updateScrollBar();
  const int held = middle_.isNull() ? -1 : source_.indexOf(middle_);
  if (held >= 0) verticalScrollBar()->setValue(qRound(layout_.rectOf(held).top() - middleOffset_));
  noteMiddle();
  viewport()->update();
}

void MediaWall::noteMiddle() {
  const int top = verticalScrollBar()->value();
  const double centre = top + viewport()->height() / 2.0;
  const int index = layout_.range(centre, centre).first;
  const bool known = top > 0 && index < source_.count();
  middle_ = known ? source_.idAt(index) : QUuid();
  middleOffset_ = known ? layout_.rectOf(index).top() - top : 0;
}

void MediaWall::updateScrollBar() {
  const int content = static_cast<int>(std::ceil(layout_.height())) + bottomInset_;
  verticalScrollBar()->setRange(0, std::max(0, content - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(std::max(20, rowHeight_ / 3));
}

void MediaWall::resizeEvent(QResizeEvent*) { relayout(); }

void MediaWall::scrollContentsBy(int, int) {
  leaveHovered();
  if (layout_.count() == source_.count()) noteMiddle();
  viewport()->update();
}

std::pair<int, int> MediaWall::visibleRange() const {
  const double top = verticalScrollBar()->value();
  return layout_.range(top, top + viewport()->height());
}

QRect MediaWall::cellRect(int index) const {
  const QRectF area = layout_.rectOf(index).translated(0, -verticalScrollBar()->value());
  return QRect(QPoint(qRound(area.left()), qRound(area.top())),
               QPoint(qRound(area.right()) - 1, qRound(area.bottom()) - 1));
}

int MediaWall::indexAt(QPoint point) const {
  return layout_.indexAt(QPointF(point.x(), point.y() + verticalScrollBar()->value()));
}

void MediaWall::scrollTo(int index) {
  const QRectF area = layout_.rectOf(index);
  if (area.isNull()) return;
  const double top = verticalScrollBar()->value();
  const double height = viewport()->height() - bottomInset_;
  if (area.top() - metrics().galleryPad < top)
    verticalScrollBar()->setValue(static_cast<int>(area.top() - metrics().galleryPad));
  else if (area.bottom() + metrics().galleryPad > top + height)
    verticalScrollBar()->setValue(static_cast<int>(area.bottom() + metrics().galleryPad - height));
}

QString MediaWall::rowName(int index) const {
  const GalleryCell cell = source_.cellAt(index);
  return cell.accessibleName.isEmpty() ? cell.fileName : cell.accessibleName;
}

QString MediaWall::rowDescription(int index) const { return texts::placeOf(index + 1, source_.count()); }

QStringList MediaWall::rowActions(int index) const {
  QStringList names{selectRowAction, openRowAction};
  const GalleryCell cell = source_.cellAt(index);
  if (cell.kind == CellKind::job && !cell.job.actionTitle.isEmpty()) names.append(cell.job.actionTitle);
  return names;
}

void MediaWall::performRowAction(int index, const QString& action) {
  const GalleryCell cell = source_.cellAt(index);
  if (action == selectRowAction)
    Q_EMIT selectionRequested({cell.id});
  else if (action == openRowAction)
    Q_EMIT opened(cell.id);
  else if (action == cell.job.actionTitle)
    Q_EMIT jobActionRequested(cell.id, cell.job.action);
}

void MediaWall::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), colors().surfaceCanvas);
  if (source_.count() == 0) return paintEmpty(painter);
  const auto [first, end] = visibleRange();
  bool moves = false;
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    moves = moves || (source_.isJobAt(index) && isMoving(source_.cellAt(index).job));
    if (cellRect(index).adjusted(-4, -4, 4, 4).intersects(event->rect())) paintCell(painter, index);
  }
  if (!rubberBand_.isNull()) {
    paintPanel(painter, rubberBand_.translated(0, -verticalScrollBar()->value()), 2, colors().accentSoft,
               colors().accentRing);
  }
  paintFade(painter, QRect(0, viewport()->height() - bottomInset_ - kFade, viewport()->width(), bottomInset_ + kFade),
            bottomInset_);
  const bool turn = moves && !Theme::instance().reducedMotion();
  if (turn && !motion_.isActive()) motion_.start(kFrame);
  if (!turn) motion_.stop();
}

void MediaWall::paintCell(QPainter& painter, int index) {
  const GalleryCell cell = source_.cellAt(index);
  const QRect area = cellRect(index);
  const CellLook look = lookOf(index, cell, area);
  if (overlay_ && overlay_->cell() == cell.id)
    overlay_->paint(painter, area, cell);
  else
    paintMediaCell(painter, area, cell, look);
  paintCellRings(painter, area, look);
}

CellLook MediaWall::lookOf(int index, const GalleryCell& cell, const QRect& area) {
  CellLook look;
  look.selected = selection_.contains(cell.id);
  look.several = selection_.size() > 1;
  look.keyboardCurrent = cell.id == current_ && hasFocus() && FocusRing::keyboardInUse();
  look.hovered = index == hovered_;
  look.hoveredPart = look.hovered ? hoveredPart_ : CellPart::none;
  if (cell.kind == CellKind::job) return look;
  const int longSide = qRound(std::max(area.width(), area.height()) * devicePixelRatioF());
  const QString original = cell.kind == CellKind::image ? cell.filePath : QString();
  look.thumbnail = thumbnails_.picture(cell.thumbnailPath, original, longSide);
  return look;
}

void MediaWall::repaintMoving() {
  const auto [first, end] = visibleRange();
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    if (source_.isJobAt(index)) viewport()->update(cellRect(index));
  }
}

void MediaWall::paintEmpty(QPainter& painter) const {
  const Colors& c = colors();
  const QRect view = viewport()->rect().adjusted(40, 0, -40, -bottomInset_);
  const int top = view.center().y() - 48;
  paintIcon(painter, u"images"_s, QRect(view.left(), top, view.width(), kEmptyIcon), kEmptyIcon, {c.textTertiary});
  paintText(painter, QRect(view.left(), top + 40, view.width(), 24),
            {source_.emptyTitle(), fontFor(Type::title), c.textPrimary, Qt::AlignCenter});
  const int width = std::min(420, view.width());
  paintParagraph(painter, QRect(view.center().x() - width / 2, top + 70, width, 3 * lineHeight(Type::body)),
                 {source_.emptyText(), fontFor(Type::body), c.textTertiary, Qt::AlignCenter}, lineHeight(Type::body));
}

}  // namespace sorvan::views
