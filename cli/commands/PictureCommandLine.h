// SPDX-License-Identifier: MIT
// The command lines of `wave` and `filters`, the commands that draw what they measure.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/commands/FiltersCommand.h"
#include "cli/commands/WaveCommand.h"

namespace modrift::cli {

struct PictureOptions {
  WaveOptions wave;
  bool filtersAsJson = false;
  FilterPlotOptions filterPlot;
};

// `options` must live as long as `app`.
void addWaveCommand(CLI::App& app, PictureOptions& options);
void addFiltersCommand(CLI::App& app, PictureOptions& options);

// Runs the one that was typed, if any. Throws what the commands throw.
void runPictureCommand(const CLI::App& app, const PictureOptions& options);

}  // namespace modrift::cli
