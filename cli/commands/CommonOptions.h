// SPDX-License-Identifier: MIT
// Options and checks that several commands share.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace modrift::cli {

// Both ends belong to the range.
[[nodiscard]] CLI::Validator numberWithin(double lowest, double highest);
[[nodiscard]] CLI::Validator wholeNumberWithin(int lowest, int highest);

// What the plug-in is set to before it plays: --preset, --shape, --set.
void addState(CLI::App& command, std::string& preset, std::vector<std::string>& shapes,
              std::vector<std::string>& settings);

}  // namespace modrift::cli
