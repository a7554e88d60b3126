#pragma once

#include "core/records.h"
#include "shell/actions.h"
#include "shell/shortcut_list.h"
#include "shell/presenters.h"
#include "shell/workspace_mode.h"

#include <QObject>
#include <QUuid>

#include <functional>
#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

// Knows which actions are offered now, and carries them out. What only a window can do (full screen, clipboard of a
// text field, opening a popover) goes on to the view by `viewActionRequested`. Main thread.
class ActionsPresenter : public QObject {
  Q_OBJECT

 public:
  // What the presenter uses. The presenters, all but `actions` itself, and the store outlive this object.
  struct Ports {
    core::LibraryStore& store;
    Presenters presenters;
    std::function<void()> quit;
    // Shows an absolute path in the desktop's file manager.
    std::function<void(const QString&)> showFile;
    QString version;
  };
  explicit ActionsPresenter(Ports ports, QObject* parent = nullptr);

  // Whether the window has what the action leads to. What it has not is absent from menus and keys.
  bool isOffered(ActionId id) const;
  bool isEnabled(ActionId id) const;
  bool isChecked(ActionId id) const;
  // As the menu shows it now: “Undo Change Rating” tells which step would be taken back.
  QString title(ActionId id) const;
  // Does nothing when the action is not enabled.
  void trigger(ActionId id);
  // The view tells whether a text field has the keyboard focus.
  void setTextFocused(bool focused);
  // Every key of the window, menu by menu, for the list of keyboard shortcuts.
  std::vector<ShortcutGroup> shortcuts() const;

 Q_SIGNALS:
  // The answers of `isEnabled`, `isChecked` or `title` may differ now.
  void changed();
  // The window carries this one out: newProject, undo, redo, cut, copy, paste, selectAll (in a field), renameItem,
  // editNotes,
  // moveToProject, fullScreen, chooseModels, openSettings,
  // workspaceHealth, keyboardShortcuts.
  void viewActionRequested(sorvan::shell::ActionId id);

 private:
  static EnabledWhen conditionOf(ActionId id);
  bool holds(EnabledWhen condition) const;
  bool isHere(ModeKind mode) const;
  bool itemSelected() const;
  bool jobIsSelected() const;
  bool pictureIsSelected() const;
  QUuid selectedPicture() const;
  std::vector<QUuid> selectedPictures() const;
  void toggleMarking();
  bool opensCells() const;
  bool itemsShown() const;
  std::optional<core::MediaType> openMedia() const;
  bool promptKnown() const;
  bool seedKnown() const;
  QUuid selectedJob() const;
  QSet<QUuid> selectedJobs() const;
  bool triggerForWindow(ActionId id);
  bool triggerForComposer(ActionId id);
  bool triggerForSelection(ActionId id);
  bool triggerForHistory(ActionId id);
  bool triggerForCuration(ActionId id);
  bool triggerForComparison(ActionId id);
  bool selectAllItems();
  void showInFiles();

  Ports ports_;
  bool textFocused_ = false;
};

}  // namespace sorvan::shell
