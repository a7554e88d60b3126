// The workspaces that were opened lately, kept in the user's settings.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "core/library_store.h"

namespace sorvan::core {

inline constexpr std::size_t mostRecentWorkspaces = 8;

struct RecentWorkspace {
  QString path;         ///< absolute, as it is shown
  QByteArray bookmark;  ///< the path's bytes in UTF-8

  bool operator==(const RecentWorkspace&) const = default;
};
BOOST_DESCRIBE_STRUCT(RecentWorkspace, (), (path, bookmark))

/// The list, the latest first, at most eight and no path twice. An entry that cannot be read is left out.
std::vector<RecentWorkspace> recentWorkspaces(const LibraryStore& store);

/// The list without the open workspace. One whose drive is away stays in it: see `isAvailable`.
std::vector<RecentWorkspace> otherRecentWorkspaces(const LibraryStore& store);

/// Whether the folder is there and holds a workspace, so that opening it would not make a new one in an empty place.
bool isAvailable(const RecentWorkspace& recent);

/// Puts a folder first in the list. Throws SorvanError when the settings cannot be written.
void noteRecent(LibraryStore& store, const QString& folder);

/// Opens and remembers it. A failure, an absent folder for one, becomes the store's `error`; the entry stays.
void openRecent(LibraryStore& store, const RecentWorkspace& recent);

/// Empties the list. A failure to write the settings becomes the store's `error`.
void clearRecentWorkspaces(LibraryStore& store);

}  // namespace sorvan::core
