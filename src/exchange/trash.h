// Trash and the way out of it. Files stay where they are; nothing here deletes one.
#pragma once

#include <optional>
#include <vector>

#include "core/library_store.h"
#include "exchange/room.h"

namespace sorvan::exchange {

/// Moves items to Trash in one undoable step. Refused while one is a reference of a job that waits or runs. A failure
/// becomes the store's `error`, and then nothing has changed. Answers whether it went through.
bool trash(LibraryStore& store, const std::vector<AssetRef>& assets);

/// How many saved references and contact sheets list items.
struct Holders {
  int references = 0;
  int sheets = 0;
};
/// None when nothing lists any of them.
std::optional<Holders> holdersOf(const LibraryStore& store, const std::vector<AssetRef>& assets);

/// What becomes of the places that list the items: they are there again, or the items are taken out of them.
enum class Rejoin { everywhere, galleryOnly };

/// Takes items out of Trash in one undoable step. Gallery only: they leave every saved reference and contact sheet, and
/// a reference left with no item is deleted. A failure becomes the store's `error`, and then nothing has changed.
/// Answers whether it went through.
bool restore(LibraryStore& store, const std::vector<AssetRef>& assets, Rejoin rejoin);

}  // namespace sorvan::exchange
