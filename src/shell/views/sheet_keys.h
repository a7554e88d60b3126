// The keys of items where single digits choose places.
#pragma once

#include <optional>

#include "shell/actions.h"
#include "shell/views/room.h"

class QKeyEvent;

namespace sorvan::views {

// The action on the selected items that this key stands for: the keys of the gallery, but ratings are Alt and a digit.
std::optional<ActionId> itemActionFor(const QKeyEvent& event);

// 0 to 8 for the digit keys that choose the first to the ninth place; -1 for all others.
int placeFor(const QKeyEvent& event);

}  // namespace sorvan::views
