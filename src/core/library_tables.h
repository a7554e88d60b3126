// The set that names the tables of the library.
#pragma once

#include <cstdint>

#include "core/room.h"

namespace sorvan::core {

/// Which tables to read again after a save. An empty set reads none.
struct LibraryTables {
  std::uint64_t bits = 0;

  constexpr bool has(LibraryTables other) const { return (bits & other.bits) != 0; }
  constexpr bool isEmpty() const { return bits == 0; }
  constexpr bool operator==(const LibraryTables&) const = default;
  friend constexpr LibraryTables operator|(LibraryTables left, LibraryTables right) { return {left.bits | right.bits}; }

  static const LibraryTables none;
  static const LibraryTables projects;
  static const LibraryTables assets;
  static const LibraryTables generations;
  static const LibraryTables relationships;
  static const LibraryTables references;
  static const LibraryTables jobs;
  static const LibraryTables savedReferences;
  static const LibraryTables contactSheets;
  static const LibraryTables sequences;
  static const LibraryTables all;
};

inline constexpr LibraryTables LibraryTables::none{0};
inline constexpr LibraryTables LibraryTables::projects{1};
inline constexpr LibraryTables LibraryTables::assets{2};
inline constexpr LibraryTables LibraryTables::generations{4};
inline constexpr LibraryTables LibraryTables::relationships{8};
inline constexpr LibraryTables LibraryTables::references{16};
inline constexpr LibraryTables LibraryTables::jobs{32};
inline constexpr LibraryTables LibraryTables::savedReferences{64};
inline constexpr LibraryTables LibraryTables::contactSheets{128};
inline constexpr LibraryTables LibraryTables::sequences{256};
inline constexpr LibraryTables LibraryTables::all{511};

}  // namespace sorvan::core
