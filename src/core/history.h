// The wrapper of every edit that the user can take back, and Undo and Redo themselves.
#pragma once

#include <QString>
#include <memory>
#include <type_traits>
#include <vector>

#include "core/library_snapshot.h"
#include "core/library_store.h"

namespace sorvan::core {

/// An edit while it runs: notes what it may touch, and remembers what it changed. Nested in another one it does
/// neither, since the outer one remembers for all.
class UndoableEdit {
 public:
  /// Throws during a backup.
  UndoableEdit(LibraryStore& store, const QString& name, const UndoScope& scope);
  /// Called once the edit is saved.
  void remember();

 private:
  LibraryStore& store_;
  QString name_;
  std::unique_ptr<const LibrarySnapshot> before_;
  LibraryHistory::Nesting nesting_;
};

/// Runs an edit that saves by itself. Throws during a backup, before it runs. When the edit throws, its unsaved changes
/// are rolled back, the failure goes on and nothing is remembered. `name` is the words of the menu, such as "Move
/// Items". The edit does not pause: what awaits cannot run inside and calls `rememberAddedAssets` at its end.
template <class Body>
auto undoable(LibraryStore& store, const QString& name, const UndoScope& scope, Body&& body)
    -> std::invoke_result_t<Body&> {
  UndoableEdit edit(store, name, scope);
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body&>>) {
      body();
      edit.remember();
    } else {
      auto result = body();
      edit.remember();
      return result;
    }
  } catch (...) {
    store.rollBack();
    throw;
  }
}

/// As `undoable` for a user's operation: a failure becomes the store's `error`, and memory is what the disk has.
/// Answers whether it went through.
template <class Body>
bool performUndoable(LibraryStore& store, const QString& name, const UndoScope& scope, Body&& body) {
  try {
    undoable(store, name, scope, body);
    return true;
  } catch (...) {
    store.failOperation(std::current_exception());
    return false;
  }
}

/// Remembers items that an operation with pauses has made, such as an import: Undo sends them to Trash. Throws when an
/// item cannot be encoded; then nothing is remembered.
void rememberAddedAssets(LibraryStore& store, const std::vector<AssetRef>& assets, const QString& name);

/// Whether a step can be taken now: not while a job, its invisible fetching, an import, an export, a backup or a local
/// operation runs.
bool canTake(const LibraryStore& store, HistoryDirection direction);

/// Takes one step back or forth: files first under both names, then the records in one save, then the old names go. A
/// failure becomes the store's `error`, and both stacks, records and files stay as they were. Does nothing while
/// `canTake` says no.
void applyHistory(LibraryStore& store, HistoryDirection direction);

/// The most bytes that an edit of one mark (a rating, a status, Trash) of so many items adds to the history.
qint64 historyBytesOfMarks(qsizetype items);
/// The same for an edit that gives files new paths.
qint64 historyBytesOfMoves(const std::vector<AssetRef>& assets);

}  // namespace sorvan::core
