// SPDX-License-Identifier: MIT
// Conversions that hold for any number, however wild: stored files and automation bring them all.
#pragma once

namespace model {

// Truncates towards zero; values beyond an int (wild parameters reach any number) give the nearest one, NaN gives 0.
[[nodiscard]] inline int integerPart(double value) noexcept {
  constexpr double kLimit = 2147483647.0;
  if (!(value > -kLimit)) return value <= -kLimit ? -2147483647 : 0;
  return value < kLimit ? static_cast<int>(value) : 2147483647;
}

// value - floor(value), 0 to 1; 0 for numbers too large to have a fraction, infinities and NaN.
[[nodiscard]] inline double fraction(double value) noexcept {
  constexpr double kNoFraction = 4503599627370496.0;  // 2 to the 52
  if (!(value < kNoFraction && value > -kNoFraction)) return 0.0;
  const double whole = static_cast<double>(static_cast<long long>(value));
  return value - (whole > value ? whole - 1.0 : whole);
}

// `value` limited to 0 to 1; NaN gives 0.
[[nodiscard]] inline double limit01(double value) noexcept {
  const double raised = value > 0.0 ? value : 0.0;
  return raised < 1.0 ? raised : 1.0;
}

}  // namespace model
