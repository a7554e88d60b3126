// Menus and shortcuts, made from the one table of actions.
#pragma once

#include <QHash>

#include "shell/actions_presenter.h"
#include "shell/views/room.h"
#include "shell/welcome_presenter.h"

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

namespace sorvan::views {

// Owns an action for each row of the table and keeps its state; fills menu bars and context menus with them.
class Menus final : public QObject {
  Q_OBJECT

 public:
  // Keys of the scope `mediaView` work while `mediaView` has the keyboard, the others in all of `window`. The presenter
  // and both widgets outlive this object.
  Menus(ActionsPresenter& actions, QWidget* window, const std::vector<QWidget*>& mediaViews, QObject* parent = nullptr);

  // Lists the workspaces that were open lately in a menu of their own; before `fill`.
  void setRecents(WelcomePresenter& recents);
  void fill(QMenuBar& bar) const;
  // The rows of one menu of the table, ratings and statuses in menus of their own. With `offeredNow` only what is
  // enabled now, without rows that set how the window works.
  enum class Rows { all, offeredNow };
  void fillMenu(QMenu& menu, MenuId id, Rows rows) const;
  QAction* action(ActionId id) const { return actions_.value(static_cast<int>(id)); }

 private:
  void add(const ActionRow& row, QWidget* window, const std::vector<QWidget*>& mediaViews);
  QMenu* submenuFor(QMenu& menu, const ActionRow& row) const;
  void refresh();
  void listRecents(WelcomePresenter& recents);

  ActionsPresenter& presenter_;
  QHash<int, QAction*> actions_;
  QMenu* recents_ = nullptr;
  QWidget* window_;
};

}  // namespace sorvan::views
