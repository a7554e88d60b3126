// What is looked at before a folder is touched as a workspace.
#pragma once

#include <QString>

#include "core/workspace_files.h"

namespace sorvan::core {

/// Refuses a folder that this version must not open, before anything is made in it. Throws SorvanError when it belongs
/// to a newer version, by its marker or by its database, and when it once held a library whose database is missing or
/// empty: going on would replace the library by an empty one. The sentence then names the newest snapshot.
void refuseUnsafeWorkspace(const WorkspaceFiles& files);

}  // namespace sorvan::core
