// SPDX-License-Identifier: MIT
// How many times faster than the clock a graph is read, by its warp parameter.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/Numbers.h"

namespace model {

inline constexpr int kWarps = 18;
inline constexpr float kWarpOne = 0.46666667f;  // the parameter's default; lands on 1x

inline constexpr std::array<double, kWarps> multtimes = {
    1.0 / 16.0, 1.0 / 8.0, 1.0 / 4.0, 1.0 / 3.0, 3.0 / 8.0, 1.0 / 2.0, 2.0 / 3.0, 3.0 / 4.0, 1.0,
    1.25,       4.0 / 3.0, 1.5,       5.0 / 3.0, 2.0,       3.0,       4.0,       8.0,       16.0};

inline constexpr std::array<const char*, kWarps> WarpNames = {"1/16", "1/8", "1/4", "1/3",  "3/8",  "1/2",
                                                              "2/3",  "3/4", "1x ", "1.25", "1.33", "1.5x",
                                                              "1.66", "2x ", "3x ", "4x ",  "8x ",  "16x"};

inline constexpr double kWarpScale = 16.9999;  // and not 17: stored projects rely on it

// Values outside 0 to 1 get the nearest end.
[[nodiscard]] inline int warpEntry(float warp) noexcept {
  return std::clamp(integerPart(static_cast<double>(warp) * kWarpScale + 0.5), 0, kWarps - 1);
}

// The parameter's value at an entry.
[[nodiscard]] constexpr float valueOfWarp(std::size_t entry) noexcept {
  return static_cast<float>(entry) / static_cast<float>(kWarps - 1);
}

[[nodiscard]] inline double warpMultiplier(float warp) noexcept {
  return multtimes[static_cast<std::size_t>(warpEntry(warp))];
}

}  // namespace model
