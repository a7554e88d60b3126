// What a writer leaves in the workspace when its process ends in the middle of a file.
#pragma once

#include "core/library_store.h"

namespace sorvan::core {

/// Whether the program that had this library last did not come to its end: the database's log goes with the last orderly
/// close. To be asked before the library is opened. Any thread.
bool wasCutOff(const WorkspaceFiles& files);

/// Removes the temporary files of writers that are gone, from the hidden folder and from the media folders of the Inbox
/// and of every project. Only while the lease is held and before anything is written; a file that cannot be removed stays.
/// Nothing else is touched, and no media folder is looked into beyond its own names.
void removeLeftovers(const LibraryStore& store);

}  // namespace sorvan::core
