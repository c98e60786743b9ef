// SPDX-License-Identifier: MIT
// Parameter values of the command line, "--set NAME|INDEX=VALUE".
#pragma once

#include <string>
#include <vector>

#include "cli/values/TypedValue.h"
#include "cli/values/ValueTexts.h"
#include "host/OfflineRunner.h"
#include "host/Plugin.h"

namespace modrift::cli {

struct Setting {
  std::string parameter;  // name or index, as typed
  TypedValue value;
};

// Throws UsageError.
[[nodiscard]] std::vector<Setting> parseSettings(const std::vector<std::string>& typed);

// The names of the listed parameters, and for Modrift those of the numbers behind them, blank where there is none.
[[nodiscard]] std::vector<std::string> parameterNames(const host::Plugin& plugin);

// The settings with the plug-in's own indices and values. Throws RunError for a parameter that it has not and a text
// that it does not show.
[[nodiscard]] std::vector<host::ParameterChange> findSettings(const std::vector<Setting>& settings,
                                                              const std::vector<std::string>& names,
                                                              ValueFinder& values);

}  // namespace modrift::cli
