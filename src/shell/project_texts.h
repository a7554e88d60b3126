#pragma once

#include "shell/room.h"

#include <QString>

// What the sidebar and its projects say.
namespace sorvan::shell::texts {

inline const QString newProject = QStringLiteral("New Project…");
inline const QString archivedProjects = QStringLiteral("Archived");
inline const QString workspaceHealthRow = QStringLiteral("Workspace Health");

}  // namespace sorvan::shell::texts
