// SPDX-License-Identifier: MIT
#include "cli/commands/CommonOptions.h"

#include <fmt/core.h>

#include "cli/values/Numbers.h"

namespace modrift::cli {
namespace {

template <class Number, class Parse>
CLI::Validator within(Number lowest, Number highest, Parse parse, const char* what) {
  const auto check = [=](const std::string& text) {
    const auto number = parse(text);
    if (number && *number >= lowest && *number <= highest) return std::string();
    return fmt::format("{} from {} to {} was expected, not '{}'", what, lowest, highest, text);
  };
  return {check, ""};
}

}  // namespace

CLI::Validator numberWithin(double lowest, double highest) { return within(lowest, highest, parseNumber, "a number"); }

CLI::Validator wholeNumberWithin(int lowest, int highest) {
  return within(lowest, highest, parseInteger, "a whole number");
}

void addState(CLI::App& command, std::string& preset, std::vector<std::string>& shapes,
              std::vector<std::string>& settings) {
  command.add_option("--preset", preset, "A preset file to begin with")->type_name("FILE.fxp");
  command.add_option("--shape", shapes, "A shape file for a graph from 1 to 12; may come often")
      ->type_name("GRAPH=FILE.shp")
      ->allow_extra_args(false);
  command.add_option("--set", settings, "A parameter's value from the start, a number or its text; may come often")
      ->type_name("NAME|INDEX=VALUE")
      ->allow_extra_args(false);
}

}  // namespace modrift::cli
