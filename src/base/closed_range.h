// A range with both ends in it; JSON writes it as [lower, upper].
#pragma once

namespace sorvan::base {

template <class T>
struct ClosedRange {
  T lower{};
  T upper{};

  bool contains(const T& value) const { return lower <= value && value <= upper; }
  friend bool operator==(const ClosedRange&, const ClosedRange&) = default;
};

}  // namespace sorvan::base
