// The promise of every stored value: what was read is written so that it reads back equal.
#pragma once

#include "base/json.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

/// Reads `json` as a T and, where it holds one, writes and reads it again. Gives the value.
template <class T>
std::optional<T> readTwice(const QByteArray& json) {
  std::optional<T> value = readOrRefused([&] { return base::decodeJson<T>(json); });
  if (!value) return value;
  const QByteArray written = base::encodeJson(*value);
  const auto again = readOrRefused([&] { return base::decodeJson<T>(written); });
  require(again.has_value(), "what was written can be read");
  require(*again == *value, "what was written reads back equal");
  require(base::encodeJson(*again) == written, "a second writing is the first, byte for byte");
  return value;
}

}  // namespace sorvan::fuzz
