// SPDX-License-Identifier: MIT
// Tables on standard output.
#pragma once

#include <string>
#include <vector>

namespace modrift::cli {

using Rows = std::vector<std::vector<std::string>>;

// Columns as wide as their widest cell, two blanks apart; the last one ends ragged.
void printAligned(const Rows& rows);

}  // namespace modrift::cli
