// Pictures of the library as references of a prompt: one after the other, and in another order.
#pragma once

#include <QUuid>

#include <vector>

#include "composer/composer_state.h"
#include "core/library_store.h"

namespace sorvan::composer {

/// Whether the item can be sent: a picture outside Trash whose file is there.
bool canAttach(const LibraryStore& store, const QUuid& item);

/// Attaches items behind those that are attached, with names; what is attached already or cannot be attached is passed
/// over. Answers how many are new. Throws SorvanError when there would be more than a prompt may have; nothing changes.
int attachItems(const LibraryStore& store, const std::vector<QUuid>& items, ComposerState& state);

/// Moves an attached picture to another place in the order of upload; outside the list is its nearest end. A picture
/// with marks stays the first.
void moveAttached(const QUuid& item, int place, ComposerState& state);

}  // namespace sorvan::composer
