// The wrapper of every edit that the user can take back.
#pragma once

#include <QString>
#include <optional>
#include <type_traits>
#include <vector>

#include "core/library_store.h"

namespace sorvan::core {

/// Which records an edit may touch.
struct UndoScope {
  std::optional<std::vector<AssetRef>> assets;  ///< none means every item
  LibraryTables tables;
};

/// Runs an edit that saves by itself. Throws during a backup, before it runs. When the edit throws, its unsaved changes
/// are rolled back and the failure goes on. `name` is the words of the menu, such as "Move Items". The edit does not
/// pause: what awaits cannot run inside.
template <class Body>
auto undoable(LibraryStore& store, [[maybe_unused]] const QString& name, [[maybe_unused]] const UndoScope& scope,
              Body&& body) -> std::invoke_result_t<Body&> {
  store.refuseDuringBackup();
  try {
    return body();
  } catch (...) {
    store.rollBack();
    throw;
  }
}

}  // namespace sorvan::core
