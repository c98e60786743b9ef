// SPDX-License-Identifier: MIT
// Maps a normalised value to a range by equal ratios, as pitch and cutoff are heard.
#pragma once

#include "filters/FilterCoefs.h"

namespace Lumbrix::Utility {

class CExpMapper {
 public:
  // A minimum of 0 or below becomes 1. `start` is a normalised value.
  CExpMapper(float min, float max, float start) noexcept;
  // Sets the ends of the range and keeps the current value.
  void setRange(float min, float max) noexcept;
  void setValue(float normalised) noexcept;
  [[nodiscard]] float getValue() const noexcept { return current; }
  float setAndGetValue(float normalised) noexcept;

 private:
  float current = 0.0f;
  float minimum = 1.0f;
  float maximum = 1.0f;
  float range = 0.0f;
  float lastRaw = 0.0f;
  float logMinimum = 0.0f;
  float logMaximum = 0.0f;
  float lastLog = 0.0f;
  float logRange = 0.0f;
};

}  // namespace Lumbrix::Utility

namespace effect {

inline constexpr float kLowestXoverHz = 20.0f;
inline constexpr float kHighestXoverHz = 20000.0f;

// The effect's two ranges, in hertz: the cutoff of the clean filter types, and the crossover.
[[nodiscard]] inline Lumbrix::Utility::CExpMapper cutoffMapper() noexcept {
  return {filters::kLowestCleanHz, filters::kHighestCleanHz, 0.9166667f};
}
[[nodiscard]] inline Lumbrix::Utility::CExpMapper crossoverMapper() noexcept {
  return {kLowestXoverHz, kHighestXoverHz, 0.5f};
}

}  // namespace effect
