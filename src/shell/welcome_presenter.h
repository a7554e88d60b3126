#pragma once

#include "shell/folder_chooser.h"

#include <QObject>

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

// The first page, shown while no workspace is open, and the way to another workspace. Main thread.
class WelcomePresenter : public QObject {
  Q_OBJECT

 public:
  // The store outlives the presenter. `defaultWorkspace` is an absolute path.
  WelcomePresenter(core::LibraryStore& store, QString defaultWorkspace, QObject* parent = nullptr);

  bool isShown() const;
  WelcomeDisplay display() const;
  // Without one, choosing another folder does nothing. It outlives the presenter, or is set to null before it goes.
  void setFolderChooser(FolderChooser* chooser) { chooser_ = chooser; }

  void useDefaultWorkspace();
  void chooseWorkspace();
  // A folder was dropped on the page.
  void openFolder(const QString& path);

 Q_SIGNALS:
  void shownChanged();

 private:
  core::LibraryStore& store_;
  QString defaultWorkspace_;
  FolderChooser* chooser_ = nullptr;
  bool asking_ = false;
};

}  // namespace sorvan::shell
