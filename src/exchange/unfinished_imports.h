// What a crash in the middle of an import leaves, and how the next opening completes it.
#pragma once

#include <optional>
#include <vector>

#include <boost/describe.hpp>

#include "base/task_scope.h"
#include "core/library_store.h"
#include "exchange/room.h"

namespace sorvan::exchange {

/// Everything that the record of an imported item needs, written down before its file is copied.
struct ImportNote {
  QUuid asset;
  QString path;  ///< of the copy, relative to the workspace
  QString checksum;
  std::optional<QUuid> project;
  QString originalFilename;
  QString source;  ///< raw value of AssetSourceType
  std::optional<Instant> createdAt;
  std::optional<bool> withdrawn;  ///< the import failed: unless its record is there after all, its files go
  bool operator==(const ImportNote&) const = default;
};
BOOST_DESCRIBE_STRUCT(ImportNote, (),
                      (asset, path, checksum, project, originalFilename, source, createdAt, withdrawn))

/// Writes the note durably to `.sorvan/imports/{UUID}.json`. Throws FileError. Any thread.
void writeImportNote(const WorkspaceFiles& files, const ImportNote& note);
/// The note that the file of this item holds. Throws SorvanError for what does not decode, speaks of another item, or
/// names a place where no import goes: anybody may have written it.
ImportNote decodeImportNote(const QByteArray& json, const QUuid& asset);
/// Where the thumbnail of a copy stands, relative to the workspace like the copy.
QString importedThumbnailPath(const ImportNote& note);
/// A note that cannot be removed is found at the next opening, which then sees that nothing is left to do. Any thread.
void dropImportNote(const WorkspaceFiles& files, const QUuid& asset);
/// Removes the thumbnail that was drawn for the note. Blocks.
void dropImportedThumbnail(const WorkspaceFiles& files, const ImportNote& note);
/// Takes the copy, its thumbnail and the note back, or where that fails leaves it to the next opening. Blocks.
void withdrawImport(const WorkspaceFiles& files, const ImportNote& note);
/// Leaves that to the next opening: a database whose write failed may have kept the record all the same. Blocks.
void withdrawImportLater(const WorkspaceFiles& files, ImportNote note);
/// The notes there are. What does not decode, or names a file outside the media folders, is left alone.
std::vector<ImportNote> importNotes(const WorkspaceFiles& files);

/// The item of a note, measured: what both an import and its completion insert. Blocks; on the pool.
Asset importedAsset(const WorkspaceFiles& files, const ImportNote& note, Instant now);
/// Draws the thumbnail of a copy; its path relative to the workspace, or nothing where it could not be drawn. On the
/// pool.
std::optional<QString> drawImportedThumbnail(const WorkspaceFiles& files, const Asset& asset);
/// Inserts, saves and registers, in one block. Throws with nothing inserted.
AssetRef landImport(LibraryStore& store, Asset asset, const std::vector<Generation>& history);

/// Completes, after each opening, the imports that a crash cut off: a file that was copied whole gets its record, and a
/// note without a file goes. Made once beside the store, it adds itself to `afterOpen`. Main thread; the store outlives
/// it or `drain` was awaited.
class UnfinishedImports {
 public:
  explicit UnfinishedImports(LibraryStore& store);
  int running() const { return tasks_.running(); }
  Task<> drain();

 private:
  static Task<> complete(LibraryStore* store, std::vector<ImportNote> notes, std::stop_token stop);
  static Task<> completeOne(LibraryStore* store, ImportNote note, std::stop_token stop);

  LibraryStore& store_;
  TaskScope tasks_;
};

}  // namespace sorvan::exchange
