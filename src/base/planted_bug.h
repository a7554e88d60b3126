// Bugs that can be switched on to prove that the torture harness would find them. They exist only in the torture driver
// that is built for that: everywhere else `planted` is the constant false and nothing of them is compiled.
#pragma once

#ifdef SORVAN_PLANTED_BUGS
#include <cstdlib>
#include <string_view>
#endif

namespace sorvan::base {

#ifdef SORVAN_PLANTED_BUGS
// Whether SORVAN_PLANTED_BUG names this one.
inline bool planted(const char* bug) {
  const char* chosen = std::getenv("SORVAN_PLANTED_BUG");
  return chosen && std::string_view(chosen) == bug;
}
#else
consteval bool planted(const char*) { return false; }
#endif

}  // namespace sorvan::base
