// Small edits of items. Each is one undoable step: it changes the record and saves; a failed save is rolled back, shown
// as the store's `error`, and leaves memory as the disk has it.
#pragma once

#include <optional>
#include <vector>

#include "core/library_store.h"

namespace sorvan::core {

void toggleFavorite(LibraryStore& store, const AssetRef& asset);
/// All of them in one step and one save, as the one below.
void setFavorite(LibraryStore& store, const std::vector<AssetRef>& assets, bool favorite);
/// 1 to 5; none and 0 clear the rating, other numbers are ignored.
void setRating(LibraryStore& store, const AssetRef& asset, std::optional<int> rating);
void setRating(LibraryStore& store, const std::vector<AssetRef>& assets, std::optional<int> rating);
void setNotes(LibraryStore& store, const AssetRef& asset, std::optional<QString> notes);
void setStatus(LibraryStore& store, const AssetRef& asset, AssetStatus status);
void setStatus(LibraryStore& store, const std::vector<AssetRef>& assets, AssetStatus status);

/// Gives the item's file a new name in the same folder, with a counter at its end. A blank name is refused, and the name
/// that it has, with or without its counter, changes nothing. The file exists under its new name
/// before the record says so, and under the old one until it does: a crash leaves at worst a second name for it.
void rename(LibraryStore& store, const AssetRef& asset, const QString& name);

/// Moves items to a project, or to the Inbox for none: the files into the same sub-folder of the new root, in the same
/// order of steps. Refused while one is a reference of an active job.
void move(LibraryStore& store, const std::vector<AssetRef>& assets, std::optional<QUuid> project);

/// Throws when one of the items is a reference of a job that waits or runs.
void refuseReferencesOfActiveJobs(const LibraryStore& store, const std::vector<AssetRef>& assets);

}  // namespace sorvan::core
