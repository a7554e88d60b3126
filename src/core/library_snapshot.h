// What an edit may touch, noted before it, and the difference afterwards.
#pragma once

#include <tuple>
#include <vector>

#include "core/library_history.h"
#include "core/library_store.h"

namespace sorvan::core {

/// Which records an edit may touch. Every caller names the items, so that marking one never captures the whole library.
struct UndoScope {
  std::vector<AssetRef> assets;
  LibraryTables tables;  ///< of projects, saved references, contact sheets and sequences: those that are noted whole
};

/// Copies of records as they are now. Values are shared until somebody changes them, so a copy costs little.
class LibrarySnapshot {
 public:
  LibrarySnapshot(const LibraryStore& store, const UndoScope& scope);

  /// How many records were captured.
  qsizetype size() const;
  /// What differs between then and now, in the order of kind and id. A record that is new becomes a patch without
  /// `before`. Throws SorvanError when a value cannot be encoded.
  LibraryEdit edit(const QString& name) const;

 private:
  template <class R>
  void compare(std::vector<Patch>& patches) const;

  const LibraryStore& store_;
  LibraryTables tables_;
  std::tuple<std::vector<Project>, std::vector<Asset>, std::vector<SavedReference>, std::vector<ContactSheet>,
             std::vector<ClipSequence>>
      records_;
  ProjectsByID watched_;
  ProjectsByID charges_;
};

/// The patch of an item that came in: taking it back sends it to Trash, and never deletes a file.
Patch addedAssetPatch(const Asset& asset, Instant now);

}  // namespace sorvan::core
