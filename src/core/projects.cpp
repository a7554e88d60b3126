#include "core/projects.h"

#include "core/history.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

QString checkedName(const QString& name) {
  const QString trimmed = name.trimmed();
  if (trimmed.isEmpty()) throw SorvanError(texts::nameBlank());
  return trimmed;
}

const UndoScope projectsOnly{{}, LibraryTables::projects};

template <class Change>
void editProject(LibraryStore& store, const QString& name, const ProjectRef& project, Change&& change) {
  performUndoable(store, name, projectsOnly, [&] {
    Project& edited = store.context().edit(project);
    change(edited);
    edited.updatedAt = store.now();
    store.save(LibraryTables::projects);
  });
}

}  // namespace

ProjectRef createProject(LibraryStore& store, const QString& name) {
  if (!store.hasWorkspace()) throw SorvanError(texts::workspaceUnavailable());
  const QString wanted = checkedName(name);
  return undoable(store, texts::createProject(), projectsOnly, [&] {
    // The folder first: a record never names a folder that is not there.
    const QString folder = store.files().createProjectFolder(wanted);
    const ProjectRef project = store.context().insert(Project(wanted, folder, store.now()));
    store.save(LibraryTables::projects);
    return project;
  });
}

void renameProject(LibraryStore& store, const ProjectRef& project, const QString& name) {
  if (name.trimmed() == project->name) return;
  editProject(store, texts::renameProject(), project, [&](Project& edited) { edited.name = checkedName(name); });
}

void setArchived(LibraryStore& store, const ProjectRef& project, bool archived) {
  if (project->archived == archived) return;
  editProject(store, archived ? texts::archiveProject() : texts::unarchiveProject(), project,
              [&](Project& edited) { edited.archived = archived; });
}

}  // namespace sorvan::core
