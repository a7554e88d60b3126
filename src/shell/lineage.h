#pragma once

#include "shell/room.h"

#include "core/library_store.h"

#include <QString>
#include <QUuid>

#include <vector>

namespace sorvan::shell {

// A row of the tree that shows what an item was made from and what was made of it.
struct LineageRow {
  QUuid id;
  core::AssetRef asset;  // null: deleted for good, and only its place is kept
  int depth = 0;
  QString label;            // “Original”, “Edited from”, “Shot Set”, “Deleted”
  bool openedFrom = false;  // the item that the tree was opened from
};

// The whole family of an item, each member once, under the first parent that is visited. Roots and children stand in
// the order of their dates, the deleted ones last. Bounded by the family's size, whatever cycles its edges have.
std::vector<LineageRow> lineageRows(const core::LibraryStore& store, const core::Asset& openedFrom);

}  // namespace sorvan::shell
