// Small functions that the effect shares.
#pragma once

#include <cmath>

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

[[nodiscard]] inline double finiteOrZero(double value) noexcept { return std::isfinite(value) ? value : 0.0; }

// `value` limited to 0 to 1; NaN gives 0.
[[nodiscard]] inline double limit01(double value) noexcept {
  const double raised = value > 0.0 ? value : 0.0;
  return raised < 1.0 ? raised : 1.0;
}

// x to a power of two or four in steps of squaring, rounded to float once.
[[nodiscard]] inline float fourthPower(float x) noexcept {
  const double square = static_cast<double>(x) * static_cast<double>(x);
  return static_cast<float>(square * square);
}

[[nodiscard]] inline float sixteenthPower(float x) noexcept {
  const double square = static_cast<double>(x) * static_cast<double>(x);
  const double fourth = square * square;
  const double eighth = fourth * fourth;
  return static_cast<float>(eighth * eighth);
}

// Maximum and minimum without a branch.
[[nodiscard]] inline float Ohmax(float a, float b) noexcept { return (std::abs(a - b) + (a - b)) * 0.5f + b; }

[[nodiscard]] inline float Ohmin(float a, float b) noexcept { return (std::abs(b - a) + (b - a)) * -0.5f + b; }

// Byte-order hooks of the file code: stored numbers are little-endian, as this build's are.
[[nodiscard]] inline long lEndi(long value) noexcept { return value; }
[[nodiscard]] inline float fEndi(float value) noexcept { return value; }
[[nodiscard]] inline short sEndi(short value) noexcept { return value; }
[[nodiscard]] inline double dEndi(double value) noexcept { return value; }

// "%7d", cut at 8 characters; "Huge!" from 100000000 on. `text` holds at least 9 bytes.
void mylong2string(long value, char* text) noexcept;
// "%5i", cut at 5 characters; "Huge!" from 1000000 on. `text` holds at least 6 bytes.
void Int2string(int value, char* text) noexcept;
