// SPDX-License-Identifier: MIT
#include "cli/pictures/Levels.h"

#include <algorithm>
#include <cmath>
#include <fmt/core.h>

namespace modrift::cli {

Levels measureLevels(std::span<const std::vector<float>> channels) {
  Levels levels;
  double squares = 0.0;
  std::int64_t count = 0;
  for (const std::vector<float>& channel : channels) {
    for (const float sample : channel) {
      if (!std::isfinite(sample)) {
        ++levels.notFinite;
        continue;
      }
      const double x = sample;
      levels.peak = std::max(levels.peak, std::abs(x));
      squares += x * x;
      ++count;
    }
  }
  if (count > 0) levels.rms = std::sqrt(squares / static_cast<double>(count));
  return levels;
}

std::string decibelText(double magnitude) {
  if (magnitude <= 0.0) return "-inf dB";
  const double tenths = std::round(200.0 * std::log10(magnitude));
  return fmt::format("{:.1f} dB", (tenths + 0.0) / 10.0);  // the sum turns a minus zero into a plain one
}

}  // namespace modrift::cli
