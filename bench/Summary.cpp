// SPDX-License-Identifier: MIT
#include "bench/Summary.h"

#include <algorithm>
#include <cstdio>

#include "bench/Measure.h"

namespace bench {
namespace {

// What may be spent: a row by itself, or above (in multiples of the yardstick) or relative to another row.
enum class Measure { itself, above, relative };

struct Target {
  const char* what;
  const char* row;
  Measure measure;
  const char* other;
  double most;
};

constexpr char kPlain[] = "whole path/filter off/128";

constexpr Target kTargets[] = {
    {"filter off", kPlain, Measure::itself, kPlain, 0.12},
    {"five destinations, on top", "whole path/five destinations", Measure::above, kPlain, 0.14},
    {"crossover, on top", "whole path/crossover", Measure::above, kPlain, 0.09},
    {"scope, on top", "whole path/scope", Measure::above, kPlain, 0.04},
    {"scope at a slow rate, on top", "whole path/scope, slow rate", Measure::above, kPlain, 0.04},
    {"rate change up and down", "rate change/stereo up and down", Measure::itself, kPlain, 0.09},
    {"silence, to signal", "whole path/silence", Measure::relative, kPlain, 1.1},
    {"silence with crossover, to signal", "whole path/crossover, silence", Measure::relative, "whole path/crossover",
     1.1},
    {"blocks of 1, to 128", "whole path/filter off/1", Measure::relative, kPlain, 3.0},
    {"blocks of 12, to 128", "whole path/filter off/12", Measure::relative, kPlain, 1.15},
    {"blocks of 13, to 128", "whole path/filter off/13", Measure::relative, kPlain, 1.25},
    {"blocks of 64, to 128", "whole path/filter off/64", Measure::relative, kPlain, 1.05},
    {"blocks of 4096, to 128", "whole path/filter off/4096", Measure::relative, kPlain, 1.03},
};

double measured(Measure measure, double row, double other) {
  switch (measure) {
    case Measure::above:
      return row - other;
    case Measure::relative:
      return row / other;
    case Measure::itself:
      break;
  }
  return row;
}

}  // namespace

bool Summary::ReportContext(const Context& /*context*/) {
  std::printf("%-44s %10s %12s %18s\n", "subject", "ns/frame", "x yardstick", "least to most");
  return true;
}

void Summary::ReportRuns(const std::vector<Run>& runs) {
  Slices ns, ratios;
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    ns.push_back(run.counters.at(kNsPerFrame));
    ratios.push_back(run.counters.at(kXYardstick));
  }
  if (ns.empty()) return;
  const std::string name = runs.front().run_name.function_name;
  const Figures figures{median(ns), median(ratios)};
  rows_[name] = figures;
  const auto [least, most] = std::minmax_element(ratios.begin(), ratios.end());
  std::printf("%-44s %10.2f %12.3f %9.3f to %5.3f\n", name.c_str(), figures.ns, figures.xYardstick, *least, *most);
  std::fflush(stdout);
}

void Summary::Finalize() {
  std::printf("\n%-44s %10s %12s\n", "against our limits", "measured", "at most");
  for (const Target& t : kTargets) {
    const auto row = rows_.find(t.row);
    const auto other = rows_.find(t.other);
    if (row == rows_.end() || other == rows_.end()) continue;  // left out by the filter
    const double value = measured(t.measure, row->second.xYardstick, other->second.xYardstick);
    std::printf("%-44s %10.3f %12.3f%s\n", t.what, value, t.most, value > t.most ? "  over" : "");
  }
}

}  // namespace bench
