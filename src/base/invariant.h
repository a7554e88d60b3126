// Assertions that stay on in every build.
#pragma once

#include <source_location>

namespace sorvan::base {

[[noreturn]] void invariantBroken(const char* what, const std::source_location& where);

// Ends the program with the sentence and the place when the condition does not hold: going on would risk the user's
// work. For what only a fault in our own code can break, never for input.
inline void invariant(bool holds, const char* what,
                      const std::source_location& where = std::source_location::current()) {
  if (!holds) invariantBroken(what, where);
}

}  // namespace sorvan::base
