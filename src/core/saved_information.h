// What the sidecar files hold, and whether each of them can be opened again.
#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

#include "core/library_store.h"

namespace sorvan::core {

/// One sidecar file of the open workspace.
struct SavedInformation {
  QString id;         ///< "prompts", "reviews", "spending" or "draft"
  QString title;      ///< as Workspace Health shows it
  std::size_t count;  ///< entries in memory; for the draft 1 when one is kept
  std::optional<QString> issue;

  bool operator==(const SavedInformation&) const = default;
};

/// The four rows as memory knows them: prompts, reviews, spending, draft. Reads the draft's file. Main thread.
std::vector<SavedInformation> savedInformation(const LibraryStore& store);

/// Opens the file of each row that has no issue yet and says what is wrong with it; a file that was never written is no
/// issue. Reads only. Any thread; blocks for as long as reading takes.
std::vector<SavedInformation> inspectSavedInformation(const WorkspaceFiles& files, std::vector<SavedInformation> rows);

/// Whether writing from memory would help the row: its ledger is in memory although its file cannot be opened.
bool canSaveFromMemory(const SavedInformation& row);

/// Tries all pending writes again, and writes the ledgers of the rows that memory can make whole. Each failure becomes
/// the store's `error` and the ledger's issue. Nothing during a backup.
void saveInformationAgain(LibraryStore& store, const std::vector<SavedInformation>& rows);

}  // namespace sorvan::core
