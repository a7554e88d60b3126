// The context menus of the gallery's wall.
#pragma once

#include <QObject>
#include <QPoint>

#include "shell/presenters.h"
#include "shell/views/room.h"

class QMenu;
class QWidget;

namespace sorvan::views {

class Menus;

// Made anew each time one is asked for, of what can be done now: for the selected items, for selected jobs, or for the
// wall itself when nothing is selected. What it is given outlives it. Main thread.
class WallMenus final : public QObject {
  Q_OBJECT

 public:
  WallMenus(const Menus& menus, Presenters presenters, QWidget* window);

  // Opens at that place of the screen.
  void open(QPoint globalPosition);
  // The menu as it would open; the caller owns it.
  QMenu* make() const;

 private:
  void fillForSelection(QMenu& menu) const;
  void fillForGround(QMenu& menu) const;
  void addDestinations(QMenu& menu) const;
  void addJobEntries(QMenu& menu) const;

  const Menus& menus_;
  Presenters on_;
  QWidget* window_;
};

}  // namespace sorvan::views
