// SPDX-License-Identifier: MIT
// Finding a plug-in's parameter by what a user typed.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace modrift::cli {

// The index of the parameter that `typed` means, or a sentence part saying what was expected instead. Tried in this
// order: the exact name, the name in any case, an index, the beginning of one name in any case. Blanks round names do
// not count. Pure.
[[nodiscard]] std::variant<int, std::string> findParameter(std::span<const std::string> names, std::string_view typed);

}  // namespace modrift::cli
