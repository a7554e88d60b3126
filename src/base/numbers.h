// Rounding, told once. Products of binary fractions miss whole numbers by a hair: 0.07 × 100 is 7.000000000000001.
#pragma once

#include <cmath>
#include <cstdint>

namespace sorvan::base {

inline constexpr double wholeNumberHair = 1e-9;

// Rounded up, but not past a whole number that is only missed by a hair.
inline double roundedUp(double value) { return std::ceil(value - wholeNumberHair); }
// Rounded down, likewise.
inline double roundedDown(double value) { return std::floor(value + wholeNumberHair); }
// Half away from zero: 2.5 is 3, -2.5 is -3.
inline double rounded(double value) { return std::round(value); }
// The nearest integer, half away from zero; numbers beyond the integer's range end at its limits, NaN is 0.
inline std::int64_t roundedInteger(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 9223372036854775807.0) return INT64_MAX;
  if (value <= -9223372036854775808.0) return INT64_MIN;
  return std::llround(value);
}

}  // namespace sorvan::base
