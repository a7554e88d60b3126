// All jobs of the workspace, in a list.
#pragma once

#include <QAbstractScrollArea>
#include <QSet>
#include <QTimer>

#include "shell/jobs_presenter.h"
#include "shell/views/painted_list.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

class Button;
class SegmentedControl;
class TextField;

// What the history asks of whoever knows the jobs. Lives on the main thread and outlives the views that show it.
class HistorySource : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  virtual int count() const = 0;
  virtual JobDisplay rowAt(int index) const = 0;
  virtual QUuid idAt(int index) const = 0;
  virtual int indexOf(QUuid id) const = 0;
  virtual std::vector<JobGroup> groups() const = 0;
  virtual QString emptyTitle() const = 0;

 Q_SIGNALS:
  void layoutChanged();
  void contentChanged();
};

// The rows under their headings. Only those in view are asked for and painted.
class HistoryList final : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  HistoryList(HistorySource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  // Selects one job, and brings nothing into view.
  void setSelected(QUuid job);
  // Those of these that are jobs.
  void setSelection(const QSet<QUuid>& jobs);
  const QSet<QUuid>& selection() const { return selection_; }
  void setBottomInset(int pixels);

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

 Q_SIGNALS:
  void selectionRequested(const QSet<QUuid>& jobs);
  void actionRequested(QUuid job, sorvan::shell::JobAction action);
  // Enter or a double click: the job's own page.
  void opened(QUuid job);
  void escapePressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void relayout();
  int rowAt(QPoint point) const;
  void select(int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void selectTo(int index);
  void bringIntoView(int index);
  void propose(const QSet<QUuid>& jobs);

  HistorySource& source_;
  ThumbnailStore& thumbnails_;
  std::vector<JobGroup> groups_;
  std::vector<int> groupTops_;  // of each group's heading, in the list's own coordinates
  int contentHeight_ = 0;
  int bottomInset_ = 0;
  QSet<QUuid> selection_;
  QUuid current_;  // the row of the keyboard
  QUuid anchor_;   // where a range starts
  int hovered_ = -1;
  bool hoversButton_ = false;
  QTimer motion_;
};

// The list with its segments and column heads.
class HistoryView final : public QWidget {
  Q_OBJECT

 public:
  HistoryView(HistorySource& source, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  HistoryList& list() { return *list_; }
  void setSegment(JobSegment segment);
  // How many jobs are at work, in all and among the selected ones: what can be cancelled.
  void setActive(int all, int selected);
  // The search field, which stands in the toolbar while the history is in front.
  TextField& search() { return *search_; }

 Q_SIGNALS:
  void segmentChosen(sorvan::shell::JobSegment segment);
  void searchChosen(const QString& text);
  void cancelSelectedPressed();
  void cancelAllPressed();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  SegmentedControl* segments_;
  Button* cancelSelected_;
  Button* cancelAll_;
  TextField* search_;
  HistoryList* list_;
};

}  // namespace sorvan::views
