// SPDX-License-Identifier: MIT
// Levels over frequency as a PNG: one line for each setting, on a logarithmic axis from 20 Hz to 20 kHz.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace modrift::cli {

struct FrequencyCurve {
  std::string label;
  std::vector<float> db;  // one value for each of the chart's frequencies
};

struct FrequencyChart {
  std::string title;         // on top, large
  std::string facts;         // behind it
  std::string caption;       // what was measured, below
  std::string legend;        // before the labels of the curves
  bool showsLevels = false;  // levels of full scale, which end at 0 dB, and not gains
  std::vector<FrequencyCurve> curves;
};

// The frequencies, in hertz, at which the chart shows its curves: rising, several to a pixel.
[[nodiscard]] std::vector<double> chartFrequencies();

// Writes straight to `png`, so callers pass the path of a PendingFile. Throws RunError.
void writeFrequencyChart(const std::filesystem::path& png, const FrequencyChart& chart);

}  // namespace modrift::cli
