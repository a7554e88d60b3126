#pragma once

#include "shell/room.h"

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

#include "shell/workspace_mode.h"

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

// The name of a location of the sidebar, or of everything for an unknown one.
QString locationTitle(const core::LibraryStore& store, const QString& location);
// The project that a location stands for; nothing for the others.
std::optional<QUuid> locationProject(const core::LibraryStore& store, const QString& location);
// The views of a location, in the order of their tabs: projects have all four, Trash has no references, all media and
// the Inbox neither, recent items and favourites have their gallery alone.
std::vector<ModeKind> modesAt(const core::LibraryStore& store, const QString& location);
// Whether the view is the wall of a location: its gallery, or the results of a search through everything.
bool showsGallery(ModeKind view);
// Where outputs go: the project's name, or “Inbox”.
QString destinationName(const core::LibraryStore& store, const std::optional<QUuid>& project);

}  // namespace sorvan::shell
