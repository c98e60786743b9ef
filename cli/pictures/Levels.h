// SPDX-License-Identifier: MIT
// Loudness figures of a piece of audio, for the summary lines.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace modrift::cli {

struct Levels {
  double peak = 0.0;           // largest magnitude; full scale is 1
  double rms = 0.0;            // over all channels
  std::int64_t notFinite = 0;  // samples that are NaN or infinite; they count nowhere else
};

[[nodiscard]] Levels measureLevels(std::span<const std::vector<float>> channels);

// "-6.0 dB"; silence is "-inf dB".
[[nodiscard]] std::string decibelText(double magnitude);

}  // namespace modrift::cli
