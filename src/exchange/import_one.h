// One file from outside becomes an item of the library: a copy in the workspace and a record beside it.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QImage>

#include "base/task.h"
#include "core/library_store.h"
#include "exchange/room.h"

namespace sorvan::exchange {

/// Makes the records of an item's history for the item itself. Runs on the main thread, in the block that inserts.
using HistoryWriter = std::function<std::vector<Generation>(const Asset&)>;

/// What other readers know about a file before it comes in. All of it runs on the pool; an empty port knows nothing.
struct ImportPorts {
  /// The history that was saved beside the file. An empty writer: there is none. What it throws refuses the import
  /// before anything is copied.
  std::function<HistoryWriter(const QString& path, const QString& checksum)> provenance;
  /// The prompt that another program wrote into a picture, asked only where there is no provenance.
  std::function<HistoryWriter(const QString& path)> recoveredPrompt;
};

struct ImportOrder {
  QString path;                   ///< absolute; a link stands for the file at its end
  std::optional<QUuid> project;   ///< none: the Inbox
  QString folder;                 ///< inside the project's folder or the Inbox: "imported" or "references"
  AssetSourceType source = AssetSourceType::imported;
  std::optional<QString> checksum = {};  ///< of the file, when it is known already
  std::optional<QString> name = {};      ///< what the item is called, when not as the file
  /// Whether a live item of the same bytes is answered in the place of a copy, also one that came in meanwhile.
  bool reuses = false;
};

/// Imports one file. Its source is never moved or changed. When it returns, the copy, its thumbnail and the record are
/// on the disk; when it throws, nothing of them is in the workspace. A crash in between leaves a note from which the
/// next opening completes the import. No history is remembered: that is the batch's. SorvanError with what is wrong,
/// or Cancelled.
Task<AssetRef> importOne(LibraryStore* store, ImportPorts ports, ImportOrder order, std::stop_token stop);

/// What an import as a reference came to.
struct ImportedReference {
  AssetRef item;
  bool isNew = false;  ///< false: it was in the library already
};

/// Imports a picture as a reference, into "references": a live item of its bytes is answered instead of a copy, while
/// one in Trash counts for nothing. Refuses what is no picture, and a picture that does not decode to its end.
Task<ImportedReference> importReference(LibraryStore* store, ImportPorts ports, QString path,
                                        std::optional<QUuid> project, std::stop_token stop);
/// The same for a picture without a file, from the clipboard or another program.
Task<ImportedReference> importPastedReference(LibraryStore* store, ImportPorts ports, QImage picture,
                                              std::optional<QUuid> project, std::stop_token stop);

/// The newest item outside Trash with these bytes whose file is there; null without one.
AssetRef liveItemOf(const LibraryStore& store, const QString& checksum);

}  // namespace sorvan::exchange
