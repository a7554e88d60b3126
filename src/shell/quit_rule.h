#pragma once

#include "shell/room.h"

#include <QString>

#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

// What to ask before the program ends, or nothing when it may end right away. A job that is only fetched invisibly
// after a cancel asks nothing: it is marked at the next opening, and Retry reconnects.
std::optional<QString> quitQuestion(const core::LibraryStore& store);

}  // namespace sorvan::shell
