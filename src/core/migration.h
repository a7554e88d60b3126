// The care around an upgrade of the library database: which form it has, and the snapshot that is taken before.
#pragma once

#include <QString>
#include <optional>

#include "core/workspace_files.h"

namespace sorvan::core {

/// What stands in `.sorvan/schema-version`.
struct SchemaMarker {
  /// The number it names; nothing when it is absent, unreadable or no whole number. A number too large to hold counts
  /// as the largest.
  std::optional<int> version;
  /// Whether it is exactly the number of the present form. "+7" names that number too, but nothing ever wrote it so.
  bool isCurrent = false;
};
SchemaMarker readSchemaMarker(const WorkspaceFiles& files);

/// Writes the number of the present form to the marker, durably, unless exactly that stands there already.
void writeSchemaMarker(const WorkspaceFiles& files);

/// The `user_version` of the library database; nothing when it cannot be read. Throws SorvanError when somebody keeps
/// it locked for a second, and when the file is no database.
std::optional<int> databaseVersion(const WorkspaceFiles& files);

/// Called once the lease is held and before the database is opened for writing, which upgrades it. When the database or
/// its marker is older than the present form, or of unknown age, a whole and checked copy of it is on the disk under
/// `.sorvan/backups/pre-v7-<UUID>/library.store` when this returns; a new or current workspace gets none. Throws
/// SorvanError for a newer workspace and when the copy fails: then the folder that this call made is gone again and
/// nothing else has changed. Snapshots are never deleted by the program; what a crash left of an unfinished one goes
/// once the new one stands. Blocks for as long as the copy takes.
void prepareMigration(const WorkspaceFiles& files);

}  // namespace sorvan::core
