#include "shell/views/history_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "shell/history_texts.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/history_row.h"
#include "shell/views/icons.h"
#include "shell/views/job_cell.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kHeading = 36;
constexpr int kFrame = 40;
constexpr int kColumnHeads = 30;
constexpr int kSearch = 190;

// The names of the columns, over the list.
class ColumnHeads final : public QWidget {
 public:
  explicit ColumnHeads(const HistoryList& list) : list_(list) {
    setFixedHeight(kColumnHeads);
    connect(list.verticalScrollBar(), &QScrollBar::rangeChanged, this, qOverload<>(&QWidget::update));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const HistoryColumns columns(list_.viewport()->width());  // its scroll bar takes room
    const QFont font = fontFor(Type::caption, Weight::semibold);
    const QColor ink = colors().textTertiary;
    paintText(painter, QRect(columns.words, 0, columns.wordsEnd - columns.words, height()),
              {texts::generationColumn(), font, ink});
    paintText(painter, QRect(columns.model, 0, columns.modelEnd - columns.model, height()),
              {texts::modelColumn(), font, ink});
    paintText(painter, QRect(columns.startedEnd - 80, 0, 80, height()),
              {texts::startedColumn(), font, ink, Qt::AlignRight | Qt::AlignVCenter});
    if (columns.costEnd != columns.startedEnd)
      paintText(painter, QRect(columns.costEnd - 80, 0, 80, height()),
                {texts::costColumn(), font, ink, Qt::AlignRight | Qt::AlignVCenter});
    painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
  }

 private:
  const HistoryList& list_;
};

}  // namespace

HistoryList::HistoryList(HistorySource& source, ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractScrollArea(parent), source_(source), thumbnails_(thumbnails) {
  describePaintedList(*this);
  setAccessibleName(texts::historyTitle());
  setProperty(ownFocusProperty, true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  connect(&source_, &HistorySource::layoutChanged, this, &HistoryList::relayout);
  connect(&source_, &HistorySource::contentChanged, viewport(), qOverload<>(&QWidget::update));
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  connect(&motion_, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
  relayout();
}

void HistoryList::relayout() {
  groups_ = source_.groups();
  groupTops_.clear();
  int y = 0;
  for (const JobGroup& group : groups_) {
    groupTops_.push_back(y);
    y += kHeading + group.count * historyRowHeight;
  }
  contentHeight_ = y;
  verticalScrollBar()->setRange(0, std::max(0, contentHeight_ + bottomInset_ - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(historyRowHeight / 2);
  viewport()->update();
}

// The keyboard comes to a row, so that its place is seen and read.
void HistoryList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  if (source_.indexOf(current_) < 0 && source_.count() > 0) current_ = source_.idAt(0);
  const int index = source_.indexOf(current_);
  if (index >= 0) announceCurrentRow(*this, index);
  viewport()->update();
}

void HistoryList::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

void HistoryList::setBottomInset(int pixels) {
  bottomInset_ = pixels;
  relayout();
}

void HistoryList::setSelected(QUuid job) { setSelection(job.isNull() ? QSet<QUuid>() : QSet<QUuid>{job}); }

void HistoryList::setSelection(const QSet<QUuid>& jobs) {
  selection_ = jobs;
  if (jobs.size() == 1) current_ = anchor_ = *jobs.begin();
  viewport()->update();
}

void HistoryList::resizeEvent(QResizeEvent*) { relayout(); }
void HistoryList::scrollContentsBy(int, int) { viewport()->update(); }

QRect HistoryList::cellRect(int index) const {
  for (size_t number = 0; number < groups_.size(); ++number) {
    const JobGroup& group = groups_[number];
    if (index < group.first || index >= group.first + group.count) continue;
    const int top = groupTops_[number] + kHeading + (index - group.first) * historyRowHeight;
    return {0, top - verticalScrollBar()->value(), viewport()->width(), historyRowHeight};
  }
  return {};
}

int HistoryList::rowAt(QPoint point) const {
  const int y = point.y() + verticalScrollBar()->value();
  for (size_t number = 0; number < groups_.size(); ++number) {
    const int first = groupTops_[number] + kHeading;
    if (y >= first && y < first + groups_[number].count * historyRowHeight)
      return groups_[number].first + (y - first) / historyRowHeight;
  }
  return -1;
}

std::pair<int, int> HistoryList::visibleRange() const {
  const int top = verticalScrollBar()->value();
  const int bottom = top + viewport()->height();
  int first = source_.count();
  int end = 0;
  for (size_t number = 0; number < groups_.size(); ++number) {
    const JobGroup& group = groups_[number];
    const int rows = groupTops_[number] + kHeading;
    const int from = std::clamp((top - rows) / historyRowHeight, 0, group.count);
    const int to = std::clamp((bottom - rows) / historyRowHeight + 1, 0, group.count);
    if (bottom < rows || from >= to) continue;
    first = std::min(first, group.first + from);
    end = std::max(end, group.first + to);
  }
  return {std::min(first, end), end};
}

void HistoryList::paintEvent(QPaintEvent* event) {
  const Colors& c = colors();
  QPainter painter(viewport());
  painter.fillRect(event->rect(), c.surfaceCanvas);
  if (source_.count() == 0) {
    const QRect view = viewport()->rect();
    paintIcon(painter, u"history"_s, view.adjusted(0, -40, 0, -40), 28, {c.textTertiary});
    paintText(painter, view, {source_.emptyTitle(), fontFor(Type::title), c.textPrimary, Qt::AlignCenter});
    return;
  }
  for (size_t number = 0; number < groups_.size(); ++number) {
    const QRect head(16, groupTops_[number] - verticalScrollBar()->value(), viewport()->width() - 32, kHeading);
    if (!head.intersects(viewport()->rect())) continue;
    const int used = paintText(painter, head.adjusted(0, 8, 0, 0),
                               {groups_[number].title, fontFor(Type::body, Weight::semibold), c.textPrimary});
    paintText(painter, head.adjusted(used + 8, 8, 0, 0),
              {QString::number(groups_[number].count), fontFor(Type::small), c.textTertiary});
  }
  bool moves = false;
  const auto [first, end] = visibleRange();
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    const JobDisplay job = source_.rowAt(index);
    moves = moves || isMoving(job);
    HistoryRowLook look;
    look.selected = selection_.contains(job.id);
    look.hovered = index == hovered_;
    look.buttonHovered = index == hovered_ && hoversButton_;
    look.keyboardCurrent = hasFocus() && FocusRing::keyboardInUse() && job.id == current_;
    look.thumbnail = thumbnails_.picture(job.thumbnailPath, {}, 128);
    paintHistoryRow(painter, cellRect(index), job, look);
  }
  if (moves && !Theme::instance().reducedMotion())
    motion_.start(kFrame);
  else
    motion_.stop();
}

void HistoryList::bringIntoView(int index) {
  const QRect row = cellRect(index);
  if (row.top() < 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + row.top() - kHeading);
  const int low = viewport()->height() - bottomInset_;
  if (row.bottom() > low) verticalScrollBar()->setValue(verticalScrollBar()->value() + row.bottom() - low);
}

void HistoryList::propose(const QSet<QUuid>& jobs) {
  selection_ = jobs;
  viewport()->update();
  Q_EMIT selectionRequested(jobs);
}

// A range from the anchor, a job more or less, or this one alone.
void HistoryList::select(int index, Qt::KeyboardModifiers modifiers) {
  if (index < 0 || index >= source_.count()) return;
  const QUuid job = source_.idAt(index);
  bringIntoView(index);
  if (modifiers & Qt::ShiftModifier) {
    selectTo(index);
  } else if (modifiers & Qt::ControlModifier) {
    QSet<QUuid> jobs = selection_;
    if (!jobs.remove(job)) jobs.insert(job);
    anchor_ = job;
    propose(jobs);
  } else {
    anchor_ = job;
    propose({job});
  }
  current_ = job;
  announceCurrentRow(*this, index);
}

void HistoryList::selectTo(int index) {
  const int anchor = std::max(0, source_.indexOf(anchor_));
  QSet<QUuid> jobs;
  for (int row = std::min(anchor, index); row <= std::max(anchor, index); ++row) jobs.insert(source_.idAt(row));
  propose(jobs);
}

void HistoryList::mousePressEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const int index = rowAt(point);
  if (index < 0) return;
  const JobDisplay job = source_.rowAt(index);
  if (historyButton(cellRect(index), job).contains(point))
    Q_EMIT actionRequested(job.id, job.action);
  else
    select(index, event->modifiers());
}

void HistoryList::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  hovered_ = rowAt(point);
  hoversButton_ = hovered_ >= 0 && historyButton(cellRect(hovered_), source_.rowAt(hovered_)).contains(point);
  viewport()->update();
}

void HistoryList::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const int index = rowAt(point);
  if (index < 0 || event->button() != Qt::LeftButton) return;
  const JobDisplay job = source_.rowAt(index);
  if (!historyButton(cellRect(index), job).contains(point)) Q_EMIT opened(job.id);
}

void HistoryList::keyPressEvent(QKeyEvent* event) {
  const int now = source_.indexOf(current_);
  const Qt::KeyboardModifiers range = event->modifiers() & Qt::ShiftModifier;
  if (event->matches(QKeySequence::SelectAll)) {
    selectTo(source_.count() - 1);
    return;
  }
  switch (event->key()) {
    case Qt::Key_Down:
      // The first press selects the row where the keyboard came to.
      return select(std::min(source_.count() - 1, selection_.contains(current_) ? now + 1 : std::max(0, now)), range);
    case Qt::Key_Up:
      return select(std::max(0, now - 1), range);
    case Qt::Key_Home:
      return select(0, range);
    case Qt::Key_End:
      return select(source_.count() - 1, range);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (now >= 0) Q_EMIT opened(current_);
      return;
    case Qt::Key_Escape:
      Q_EMIT escapePressed();
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

QString HistoryList::rowName(int index) const {
  const JobDisplay job = source_.rowAt(index);
  return job.prompt + u", "_s + job.modelName;
}

QString HistoryList::rowDescription(int index) const {
  const JobDisplay job = source_.rowAt(index);
  return job.detail.isEmpty() ? job.message : job.detail;
}

QStringList HistoryList::rowActions(int index) const {
  const JobDisplay job = source_.rowAt(index);
  QStringList names{selectRowAction, openRowAction};
  if (!job.actionTitle.isEmpty()) names.append(job.actionTitle);
  return names;
}

void HistoryList::performRowAction(int index, const QString& action) {
  const JobDisplay job = source_.rowAt(index);
  if (action == selectRowAction)
    select(index);
  else if (action == openRowAction)
    Q_EMIT opened(job.id);
  else if (!action.isEmpty() && action == job.actionTitle && job.action != JobAction::cancel)
    Q_EMIT actionRequested(job.id, job.action);
}

HistoryView::HistoryView(HistorySource& source, ThumbnailStore& thumbnails, QWidget* parent) : QWidget(parent) {
  std::vector<Segment> segments;
  for (const JobSegment segment :
       {JobSegment::all, JobSegment::inProgress, JobSegment::failed, JobSegment::cancelled, JobSegment::complete})
    segments.push_back({JobsPresenter::segmentTitle(segment), {}, {}});
  segments_ = new SegmentedControl(texts::historyFilter(), segments, ControlSize::compact);
  list_ = new HistoryList(source, thumbnails);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(16, 9, 16, 8);
  row->addWidget(segments_);
  row->addStretch(1);
  row->addWidget(cancelSelected_ = new Button({}, ButtonVariant::quiet));
  row->addWidget(cancelAll_ = new Button(shell::texts::cancelAll, ButtonVariant::quiet));
  for (Button* cancel : {cancelSelected_, cancelAll_}) cancel->setControlSize(ControlSize::compact);
  search_ = new TextField(shell::texts::searchHistory, shell::texts::searchHistory);
  search_->setIconName(u"search"_s);
  search_->setKeyHint(u"Ctrl F"_s);
  search_->setFixedWidth(kSearch);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(row);
  column->addWidget(new Hairline);
  column->addWidget(new ColumnHeads(*list_));
  column->addWidget(list_, 1);
  connect(segments_, &SegmentedControl::chosen, this,
          [this](int index) { Q_EMIT segmentChosen(static_cast<JobSegment>(index)); });
  connect(cancelSelected_, &Button::clicked, this, &HistoryView::cancelSelectedPressed);
  connect(cancelAll_, &Button::clicked, this, &HistoryView::cancelAllPressed);
  connect(search_, &TextField::textChanged, this, &HistoryView::searchChosen);
  connect(search_, &TextField::returnPressed, list_, [this] { list_->setFocus(Qt::OtherFocusReason); });
  connect(search_, &TextField::escapePressed, list_, [this] {
    search_->clear();
    list_->setFocus(Qt::OtherFocusReason);
  });
  setActive(0, 0);
}

// A button that goes while it has the keyboard hands it to the list.
void HistoryView::setActive(int all, int selected) {
  if ((cancelAll_->hasFocus() && all == 0) || (cancelSelected_->hasFocus() && selected == 0))
    list_->setFocus(Qt::OtherFocusReason);
  cancelSelected_->setText(shell::texts::cancelSelected(selected));
  cancelSelected_->setVisible(selected > 0);
  cancelAll_->setVisible(all > 0);
}

void HistoryView::setSegment(JobSegment segment) { segments_->setCurrent(static_cast<int>(segment)); }

void HistoryView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceCanvas); }

}  // namespace sorvan::views
