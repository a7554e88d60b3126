#pragma once

#include "shell/folder_chooser.h"

#include <QObject>

#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

struct WelcomeDisplay {
  QString name;  // “Sorvan Studio”
  QString line;
  QString defaultButton;  // “Use Pictures/Sorvan”
  QString defaultHelp;
  QString chooseButton;  // “Choose Another Folder…”
  QString note;          // two lines
};

// A workspace that was open lately, as the menu lists it.
struct RecentDisplay {
  QString title;          // name of the folder, with its path when two share the name
  QString path;           // what `openRecent` takes
  bool available = true;  // false while its drive is away: dimmed
};

// The first page, shown while no workspace is open, and the way to another workspace. Main thread.
class WelcomePresenter : public QObject {
  Q_OBJECT

 public:
  // The store outlives the presenter. `defaultWorkspace` is an absolute path.
  WelcomePresenter(core::LibraryStore& store, QString defaultWorkspace, QObject* parent = nullptr);

  bool isShown() const;
  // The library that was open last is about to be opened, so neither this page nor a library is shown yet.
  bool isOpening() const;
  // Said at the start of the program, and taken back when that library is open or could not be opened.
  void setOpening(bool opening);
  WelcomeDisplay display() const;
  // Without one, choosing another folder does nothing. It outlives the presenter, or is set to null before it goes.
  void setFolderChooser(FolderChooser* chooser) { chooser_ = chooser; }

  void useDefaultWorkspace();
  void chooseWorkspace();
  // A folder was dropped on the page.
  void openFolder(const QString& path);

  // The workspaces that were open lately, without the open one.
  std::vector<RecentDisplay> recents() const;
  void openRecent(const QString& path);
  void clearRecents();

 Q_SIGNALS:
  void shownChanged();

 private:
  core::LibraryStore& store_;
  QString defaultWorkspace_;
  FolderChooser* chooser_ = nullptr;
  bool asking_ = false;
  bool opening_ = false;
};

}  // namespace sorvan::shell
