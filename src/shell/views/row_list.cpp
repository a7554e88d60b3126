#include "shell/views/row_list.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace sorvan::views {

namespace {

constexpr int kPageRows = 6;
constexpr int kNearEnd = 240;  // pixels below the view at which more is wanted

void setTabStop(QWidget* row, bool on) {
  row->setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
  for (QAbstractButton* button : row->findChildren<QAbstractButton*>())
    button->setFocusPolicy(on ? Qt::TabFocus : Qt::NoFocus);
}

// A row and the buttons on it, in their order.
std::vector<QWidget*> stopsOf(QWidget* row) {
  std::vector<QWidget*> stops{row};
  for (QAbstractButton* button : row->findChildren<QAbstractButton*>()) stops.push_back(button);
  return stops;
}

QWidget* lastStopOf(QWidget* row) { return stopsOf(row).back(); }

}  // namespace

RowList::RowList(const QString& name, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  content->setAccessibleName(name);
  column_ = new QVBoxLayout(content);
  column_->setContentsMargins(4, 0, 4, 4);
  column_->setSpacing(0);
  column_->addStretch(1);
  setWidget(content);
  viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &RowList::tellNearEnd);
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &RowList::tellNearEnd);
}

void RowList::addRow(QWidget* row) {
  QWidget* before = rows_.empty() ? widget() : lastStopOf(rows_.back());
  rows_.push_back(row);
  setTabStop(row, false);
  column_->insertWidget(column_->count() - 1, row);
  // At once: a list that shows its rows a turn later would seem to end before them.
  row->show();
  // Where the tab key expects it, although it came after everything that stands below the list.
  for (QWidget* stop : stopsOf(row)) {
    stop->installEventFilter(this);
    setTabOrder(before, stop);
    before = stop;
  }
  if (!stop_) setStop(row);
}

void RowList::addOther(QWidget* widget) {
  column_->removeWidget(widget);
  column_->insertWidget(column_->count() - 1, widget);
}

void RowList::removeRows(const std::vector<QWidget*>& rows) {
  for (QWidget* row : rows) {
    std::erase(rows_, row);
    if (stop_ == row) stop_ = nullptr;
    column_->removeWidget(row);
    row->hide();
    row->deleteLater();
  }
  if (!stop_ && !rows_.empty()) setStop(rows_.front());
}

std::vector<QWidget*> RowList::visibleRows() const {
  std::vector<QWidget*> shown;
  for (QWidget* row : rows_)
    if (!row->isHidden()) shown.push_back(row);
  return shown;
}

QWidget* RowList::rowWithFocus() const {
  QWidget* focus = QApplication::focusWidget();
  for (QWidget* row : rows_)
    if (focus && (row == focus || row->isAncestorOf(focus))) return row;
  return nullptr;
}

void RowList::setStop(QWidget* row) {
  if (stop_ == row) return;
  if (stop_) setTabStop(stop_, false);
  stop_ = row;
  setTabStop(row, true);
}

void RowList::settle() {
  const auto shown = visibleRows();
  if (shown.empty() || std::find(shown.begin(), shown.end(), stop_) != shown.end()) return;
  setStop(shown.front());
}

void RowList::focusRow(QWidget* row) {
  setStop(row);
  row->setFocus(Qt::TabFocusReason);
  ensureWidgetVisible(row, 0, 24);
}

bool RowList::moveBy(int step) {
  const auto shown = visibleRows();
  if (shown.empty()) return false;
  const auto at = std::find(shown.begin(), shown.end(), rowWithFocus());
  if (at == shown.end()) {
    focusRow(step > 0 ? shown.front() : shown.back());
    return true;
  }
  const auto here = at - shown.begin();
  const auto there = std::clamp<std::ptrdiff_t>(here + step, 0, static_cast<std::ptrdiff_t>(shown.size()) - 1);
  if (there == here) return false;
  focusRow(shown[static_cast<std::size_t>(there)]);
  return true;
}

bool RowList::takeKey(int key) {
  switch (key) {
    case Qt::Key_Down:
      moveBy(+1);
      return true;
    case Qt::Key_Up:
      if (!moveBy(-1)) Q_EMIT leftUpwards();
      return true;
    case Qt::Key_PageDown:
      moveBy(kPageRows);
      return true;
    case Qt::Key_PageUp:
      moveBy(-kPageRows);
      return true;
    case Qt::Key_Home:
      moveBy(-static_cast<int>(rows_.size()));
      return true;
    case Qt::Key_End:
      moveBy(static_cast<int>(rows_.size()));
      return true;
    default:
      return false;
  }
}

bool RowList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn)
    for (QWidget* row : rows_)
      if (row == watched) setStop(row);
  if (event->type() != QEvent::KeyPress) return QScrollArea::eventFilter(watched, event);
  return takeKey(static_cast<QKeyEvent*>(event)->key()) || QScrollArea::eventFilter(watched, event);
}

// Rows came or went, perhaps without filling the view.
bool RowList::viewportEvent(QEvent* event) {
  const bool taken = QScrollArea::viewportEvent(event);
  if (event->type() == QEvent::LayoutRequest) tellNearEnd();
  return taken;
}

void RowList::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  tellNearEnd();
}

void RowList::tellNearEnd() {
  if (!isVisible()) return;
  if (verticalScrollBar()->value() >= verticalScrollBar()->maximum() - kNearEnd) Q_EMIT nearEnd();
}

}  // namespace sorvan::views
