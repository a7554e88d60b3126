// A scrolling column of rows of which the keyboard visits one at a time.
#pragma once

#include <QScrollArea>

#include "shell/views/room.h"

class QVBoxLayout;

namespace sorvan::views {

// One stop of the tab key: the row that had the keyboard last, and the buttons on it. Arrows, Page keys, Home and End
// go from row to row. Other widgets may stand between the rows.
class RowList final : public QScrollArea {
  Q_OBJECT

 public:
  explicit RowList(const QString& name, QWidget* parent = nullptr);

  // The list owns what is added, at its end. Rows take the keyboard, others do not; another that is added again moves.
  void addRow(QWidget* row);
  void addOther(QWidget* widget);
  // Takes these rows out and deletes them.
  void removeRows(const std::vector<QWidget*>& rows);
  // Moves the keyboard by that many visible rows from the row that has it; from outside to the first or the last.
  // False: there is no row that way.
  bool moveBy(int rows);
  void focusRow(QWidget* row);
  // After rows were shown or hidden: the tab key stops at one that can be seen.
  void settle();
  // The row that has the keyboard, itself or by a button on it; null when it is elsewhere.
  QWidget* rowWithFocus() const;

 Q_SIGNALS:
  // The end of the list is in view, or nearly.
  void nearEnd();
  // The keyboard wants to go up from the first row.
  void leftUpwards();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::vector<QWidget*> visibleRows() const;
  void setStop(QWidget* row);
  bool takeKey(int key);
  void tellNearEnd();

  QVBoxLayout* column_;
  std::vector<QWidget*> rows_;
  QWidget* stop_ = nullptr;
};

}  // namespace sorvan::views
