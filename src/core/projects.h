// Projects: folders of work. Each operation is one undoable step with one save; the main thread.
#pragma once

#include "core/library_store.h"

namespace sorvan::core {

/// Makes a project with its folder on disk and answers it. The name is trimmed; a blank one is refused. Undo takes the
/// record back and leaves the folder, which may hold files by then. Throws SorvanError; then no record is left.
ProjectRef createProject(LibraryStore& store, const QString& name);

/// Gives the project another name; its folder keeps its own, since items name their files by it. A blank name is
/// refused and the same name changes nothing. A failure becomes the store's `error`.
void renameProject(LibraryStore& store, const ProjectRef& project, const QString& name);

/// Takes a project out of the way, or back: an archived one keeps its items and its folder, and is left out where a
/// place is chosen. A failure becomes the store's `error`.
void setArchived(LibraryStore& store, const ProjectRef& project, bool archived);

}  // namespace sorvan::core
