// A list that is painted instead of built of widgets, as assistive technology must see it.
#pragma once

#include <QAbstractScrollArea>
#include <QAccessible>

#include "shell/views/room.h"

namespace sorvan::views {

// What a painted list tells of itself. Rows are numbered from 0; a row keeps its id when its number changes.
class PaintedList {
 public:
  virtual ~PaintedList() = default;

  // What assistive technology calls it and its rows.
  virtual QAccessible::Role listRole() const { return QAccessible::List; }
  virtual QAccessible::Role rowRole() const { return QAccessible::ListItem; }
  virtual QAbstractScrollArea& area() = 0;
  virtual int rowCount() const = 0;
  virtual QUuid rowId(int index) const = 0;
  virtual int rowIndex(QUuid id) const = 0;              // -1 when it is gone
  virtual std::pair<int, int> visibleRange() const = 0;  // first, one past the last
  virtual QRect cellRect(int index) const = 0;           // in the viewport
  // The row in view at this point of the viewport; -1 when there is none.
  int indexAt(QPoint point) const;
  virtual QString rowName(int index) const = 0;
  virtual QString rowDescription(int index) const = 0;
  virtual bool rowSelected(int index) const = 0;
  virtual QUuid currentRow() const = 0;
  // The first selects, the second opens, others by their own name.
  virtual QStringList rowActions(int index) const = 0;
  virtual void performRowAction(int index, const QString& action) = 0;
  // What is shown while there are no rows; null when there is nothing.
  virtual QWidget* standIn() const { return nullptr; }
};

inline const QString selectRowAction = QStringLiteral("Press");
inline const QString openRowAction = QStringLiteral("Open");

// Lets assistive technology see this painted list: as a list whose children are the rows in view. Called at the end of
// the list's constructor: what was told of the widget while it was still being built is forgotten.
void describePaintedList(PaintedList& list);

// The keyboard has moved to this row. `list` is a widget that is a PaintedList.
void announceCurrentRow(PaintedList& list, int index);

}  // namespace sorvan::views
