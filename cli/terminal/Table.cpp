// SPDX-License-Identifier: MIT
#include "cli/terminal/Table.h"

#include <algorithm>
#include <cstddef>
#include <fmt/core.h>

namespace modrift::cli {

void printAligned(const Rows& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) line += fmt::format("{:<{}}  ", row[i], widths[i]);
    fmt::print("{}\n", line.substr(0, line.find_last_not_of(' ') + 1));
  }
}

}  // namespace modrift::cli
