// SPDX-License-Identifier: MIT
// `modrift filters`: the filter types, as a list and as pictures of what they do.
#pragma once

#include <string>

namespace modrift::cli {

struct FilterPlotOptions {
  std::string type;    // name, number, or "all"
  std::string output;  // a folder, or for one type a picture
  std::string over;    // the control that differs between the lines: cutoff, res, var; empty for what suits the type
  double cutoff = 0.6, resonance = 0.5, var = 0.5, drive = 0.0;  // 0 to 1
};

void runFilterList(bool asJson);
// Throws UsageError, RunError and Interrupted.
void runFilterPlot(const FilterPlotOptions& options);

}  // namespace modrift::cli
