#include "shell/views/media_wall.h"

#include <QScrollBar>

#include "shell/views/drop_frame.h"
#include "shell/views/empty_note.h"
#include "shell/views/focus_ring.h"
#include "shell/views/job_cell.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostVisible = 200;  // cells; the decoded pictures of the screen must fit their store
constexpr double kUsualAspect = 1.4;
constexpr int kSettle = 120;        // milliseconds after which a wall that ran fast shows its pictures
constexpr qsizetype kMostKnown = 600;  // cells

// Rows may not become so low that more cells are in view than pictures are kept.
int lowestRow(const QSize& view) {
  const double area = static_cast<double>(view.width()) * view.height();
  return std::max(metrics().galleryRowHeightMin, static_cast<int>(std::sqrt(area / (kMostVisible * kUsualAspect))));
}

std::vector<int> sectionStarts(const WallSource& source) {
  std::vector<int> starts;
  for (const WallSection& section : source.sections()) starts.push_back(section.first);
  return starts;
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
  setAcceptDrops(true);
  viewport()->setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  emptyNote_ = new EmptyNote(viewport());
  frame_ = new DropFrame(this);
  settle_.setSingleShot(true);
  settle_.setInterval(kSettle);
  rubberScroll_.setInterval(16);
  clock_.start();
  describePaintedList(*this);
  connectAll();
  rebuild();
  placeEmptyNote();
}

void MediaWall::connectAll() {
  connect(&source_, &WallSource::layoutChanged, this, [this] { relayout(); });
  connect(&source_, &WallSource::contentChanged, this, [this] {
    thumbnails_.forgetMissing();
    forgetCells();
    placeEmptyNote();
    viewport()->update();
  });
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  connect(&Theme::instance(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
  connect(&motion_, &QTimer::timeout, this, &MediaWall::repaintMoving);
  connect(&rubberScroll_, &QTimer::timeout, this, &MediaWall::scrollForRubber);
  connect(emptyNote_, &EmptyNote::pressed, this, &MediaWall::emptyActionRequested);
  connect(&settle_, &QTimer::timeout, this, [this] {
    picturesWanted_ = true;
    viewport()->update();
  });
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
  placeEmptyNote();
}

void MediaWall::setSelection(const QSet<QUuid>& selection) {
  if (selection_ == selection) return;
  selection_ = selection;
  if (selection.size() == 1 && !selection.contains(current_)) makeCurrent(source_.indexOf(*selection.begin()));
  viewport()->update();
}

void MediaWall::addOverlay(CellOverlay* overlay) {
  overlays_.push_back(overlay);
  viewport()->update();
}

void MediaWall::removeOverlay(CellOverlay* overlay) {
  std::erase(overlays_, overlay);
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
                          static_cast<double>(metrics().galleryGap), static_cast<double>(metrics().galleryPad),
                          static_cast<double>(metrics().gallerySectionHeader)},
                sectionStarts(source_));
  forgetCells();
  leaveHovered();
}

void MediaWall::forgetCells() {
  cells_.clear();
  picturesWanted_ = true;
}

// What a cell shows costs a look at several records, and a wall that scrolls paints each of its cells many times.
const GalleryCell& MediaWall::cellAt(int index) const {
  const auto known = cells_.constFind(index);
  if (known != cells_.constEnd()) return *known;
  if (cells_.size() > kMostKnown) cells_.clear();
  return *cells_.insert(index, source_.cellAt(index));
}

// The cell in the middle of the view stays there; a wall at its top stays at its top. When the source tells of a change
// its old order is gone, so the middle is noted while the wall is at rest.
void MediaWall::relayout() {
  rebuild();
  updateScrollBar();
  const int held = middle_.isNull() ? -1 : source_.indexOf(middle_);
  if (held >= 0) verticalScrollBar()->setValue(qRound(layout_.rectOf(held).top() - middleOffset_));
  noteMiddle();
  holdCurrent();
  placeEmptyNote();
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
  const int top = verticalScrollBar()->value();
  const int moved = top - std::exchange(lastTop_, top);
  if (moved != 0) direction_ = moved > 0 ? 1 : -1;
  // What runs past faster than it can be seen gets its pictures when it stands.
  const bool fast = speed_.note(moved, viewport()->height(), clock_.elapsed());
  picturesWanted_ = picturesWanted_ || !fast;
  if (fast) {
    thumbnails_.want(this, {});
    settle_.start();
  }
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

void MediaWall::placeEmptyNote() {
  const bool empty = source_.count() == 0;
  emptyNote_->setVisible(empty);
  if (!empty) return;
  emptyNote_->setWords({u"images"_s, source_.emptyTitle(), source_.emptyText(), source_.emptyAction()});
  emptyNote_->setGeometry(viewport()->rect().adjusted(0, 0, 0, -bottomInset_));
}

QWidget* MediaWall::standIn() const { return emptyNote_; }

}  // namespace sorvan::views
