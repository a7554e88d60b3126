#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class WorkspaceState;

enum class SidebarSection { library, projects, everywhere };

struct SidebarRow {
  QString key;  // what `choose` takes
  SidebarSection section = SidebarSection::library;
  QString title;          // “All Media”
  QString iconName;       // file name in the icon set, without its ending
  QString countText;      // “2,418”, “1 active”, or empty
  QString thumbnailPath;  // a project's cover; empty: the icon
  bool current = false;
};

struct SidebarDisplay {
  QString workspaceName;
  QString workspacePath;    // with ~ for the home folder
  QString projectsTitle;    // “Projects”
  QString everywhereTitle;  // “Everywhere”
  std::vector<SidebarRow> rows;
};

// The list at the left: the workspace, its locations and the views over everything. Main thread.
class SidebarPresenter : public QObject {
  Q_OBJECT

 public:
  // Both outlive the presenter.
  SidebarPresenter(core::LibraryStore& store, WorkspaceState& state, QObject* parent = nullptr);

  SidebarDisplay display() const;
  void choose(const QString& key);

 Q_SIGNALS:
  void changed();

 private:
  void scheduleChanged();

  core::LibraryStore& store_;
  WorkspaceState& state_;
  bool changeScheduled_ = false;
};

}  // namespace sorvan::shell
