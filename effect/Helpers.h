// SPDX-License-Identifier: MIT
// Small functions that the effect shares.
#pragma once

#include <cmath>

#include "model/Numbers.h"

namespace effect {

[[nodiscard]] inline double finiteOrZero(double value) noexcept { return std::isfinite(value) ? value : 0.0; }

// The values of a MIDI data byte: notes and controllers spread their parameters over as many steps.
inline constexpr double kSevenBitValues = 128.0;

[[nodiscard]] inline float valueOfController(int number) noexcept {
  return static_cast<float>(number / kSevenBitValues);
}

// The timing parameter goes so many samples either way.
inline constexpr double kMostTimingSamples = 4096.0;
[[nodiscard]] inline double samplesOfTiming(float timing) noexcept {
  return static_cast<double>(timing) * (2.0 * kMostTimingSamples) - kMostTimingSamples;
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

}  // namespace effect

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
