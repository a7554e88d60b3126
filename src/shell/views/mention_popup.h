// The list of names that opens while a mention is typed.
#pragma once

#include <QAbstractScrollArea>

#include "shell/references_presenter.h"
#include "shell/views/painted_list.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ThumbnailStore;

// The rows of the list: headings between choices. It never takes the keyboard, which stays in the prompt.
class MentionList final : public QAbstractScrollArea, public PaintedList {
  Q_OBJECT

 public:
  explicit MentionList(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void setOffer(const MentionOffer& offer);
  int current() const { return current_; }
  void setCurrent(int choice);
  const std::vector<MentionChoice>& choices() const { return choices_; }
  int contentHeight() const { return height_; }

  QAbstractScrollArea& area() override { return *this; }
  int rowCount() const override { return static_cast<int>(choices_.size()); }
  QUuid rowId(int index) const override;
  int rowIndex(QUuid id) const override;
  std::pair<int, int> visibleRange() const override { return {0, rowCount()}; }
  QRect cellRect(int index) const override;
  QString rowName(int index) const override;
  QString rowDescription(int) const override { return {}; }
  bool rowSelected(int index) const override { return index == current_; }
  QUuid currentRow() const override { return rowId(current_); }
  QStringList rowActions(int) const override { return {selectRowAction}; }
  void performRowAction(int index, const QString& action) override;

 Q_SIGNALS:
  void chosen(int choice);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Line {
    int top = 0;
    int height = 0;
    int choice = -1;  // -1: a heading or the hint
    QString text;
    bool ruled = false;  // a hairline above
  };
  void paintLine(QPainter& painter, const Line& line, const QRect& area) const;
  int choiceAt(QPoint point) const;

  ThumbnailStore& thumbnails_;
  std::vector<MentionChoice> choices_;
  std::vector<Line> lines_;
  int height_ = 0;
  int current_ = 0;
};

// The list on its panel, a child of the window over everything else.
class MentionPopup final : public QWidget {
  Q_OBJECT

 public:
  MentionPopup(ThumbnailStore& thumbnails, QWidget* window);

  MentionList& list() { return *list_; }
  // Opens, or shows other names, above the place in the window's coordinates, or below it without room.
  void showAt(const MentionOffer& offer, const QRect& place);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MentionList* list_;
};

}  // namespace sorvan::views
