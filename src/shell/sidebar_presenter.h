#pragma once

#include "shell/once_per_turn.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QUuid>

#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class WorkspaceState;

// The foot stands at the lower end of the list.
enum class SidebarSection { library, projects, everywhere, foot };

// What a row is beside a place to go to.
enum class SidebarRowKind { plain, project, archivedProject };

struct SidebarRow {
  QString key;  // what `choose` takes
  SidebarSection section = SidebarSection::library;
  QString title;          // “All Media”
  QString iconName;       // file name in the icon set, without its ending
  QString countText;      // “2,418”, “1 active”, or empty
  QString thumbnailPath;  // a project's cover; empty: the icon
  bool current = false;
  SidebarRowKind kind = SidebarRowKind::plain;
  bool takesItems = false;  // items of the library can be dropped on it
  bool attention = false;   // the count tells of something to look after
};

struct SidebarDisplay {
  QString workspaceName;
  QString workspacePath;    // with ~ for the home folder
  QString projectsTitle;    // “Projects”
  QString everywhereTitle;  // “Everywhere”
  QString addTitle;         // “New Project…”: the button beside the projects; empty: none
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

  // Each is one step of Undo; a failure becomes the store's `error`. A new project opens.
  void createProject(const QString& name);
  void renameProject(const QString& key, const QString& name);
  // An archived project leaves the list for the archived ones at its end. Its items stay where they are.
  void setArchived(const QString& key, bool archived);

 Q_SIGNALS:
  void changed();
  // The row of Workspace Health was chosen.
  void healthRequested();

 private:
  void leaveLostLocation();
  void addProjects(SidebarDisplay& display, const QHash<QUuid, qsizetype>& counts) const;
  void addEverywhere(SidebarDisplay& display) const;
  void addFoot(SidebarDisplay& display, qsizetype inTrash) const;
  bool isCurrent(const QString& location) const;

  core::LibraryStore& store_;
  WorkspaceState& state_;
  OncePerTurn changeSoon_{[this] { Q_EMIT changed(); }};
  bool archivedShown_ = false;
};

}  // namespace sorvan::shell
