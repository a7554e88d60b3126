// What a contact sheet lists.
#pragma once

#include "core/library_store.h"

namespace sorvan::core {

/// The ids that a sheet lists, in its order, whether their items are in Trash, lost or neither: for a comparison the
/// outputs of its jobs in the order of the requests, then the items that were added by hand. What was taken out of the
/// sheet is left out.
std::vector<QUuid> listedOn(const LibraryStore& store, const ContactSheet& sheet);

}  // namespace sorvan::core
