#pragma once

#include "shell/actions.h"

#include <QObject>

namespace sorvan::shell {

struct Presenters;

// Knows which actions are offered now, and carries them out. What only a window can do (full screen, clipboard of a
// text field, opening a popover) goes on to the view by `viewActionRequested`. Main thread.
class ActionsPresenter : public QObject {
  Q_OBJECT

 public:
  // The presenters outlive this object.
  explicit ActionsPresenter(Presenters& presenters, QObject* parent = nullptr);

  bool isEnabled(ActionId id) const;
  bool isChecked(ActionId id) const;
  // Does nothing when the action is not enabled.
  void trigger(ActionId id);
  // The view tells whether a text field has the keyboard focus.
  void setTextFocused(bool focused);
  // One line per key, for the list of keyboard shortcuts: title, a tab, keys as the desktop writes them.
  QString shortcutsText() const;

 Q_SIGNALS:
  // The answers of `isEnabled` or `isChecked` may differ now.
  void changed();
  // The window carries this one out: cut, copy, paste, selectAll (in a field), fullScreen, chooseModels, openSettings.
  void viewActionRequested(sorvan::shell::ActionId id);

 private:
  bool holds(EnabledWhen condition) const;
  void triggerForSelection(ActionId id);

  Presenters& presenters_;
  bool textFocused_ = false;
};

}  // namespace sorvan::shell
