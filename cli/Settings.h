// Parameter values of the command line, "--set NAME|INDEX=VALUE".
#pragma once

#include <string>
#include <vector>

#include "host/OfflineRunner.h"
#include "host/Plugin.h"

namespace modrift::cli {

struct Setting {
  std::string parameter;  // name or index, as typed
  float value = 0.0f;     // finite
};

// Throws UsageError.
[[nodiscard]] std::vector<Setting> parseSettings(const std::vector<std::string>& typed);

// The names of the listed parameters, and for Modrift those of the numbers behind them, blank where there is none.
[[nodiscard]] std::vector<std::string> parameterNames(const host::Plugin& plugin);

// The settings with the plug-in's own indices. Throws RunError for a parameter that it has not.
[[nodiscard]] std::vector<host::ParameterChange> findSettings(const std::vector<Setting>& settings,
                                                              const std::vector<std::string>& names);

}  // namespace modrift::cli
