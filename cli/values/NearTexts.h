// SPDX-License-Identifier: MIT
// Which of many words a mistyped one may have meant.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace modrift::cli {

// ASCII only: plug-ins' names are, and a locale must not change what a script means.
[[nodiscard]] char lowered(char c) noexcept;
[[nodiscard]] bool equalInAnyCase(std::string_view a, std::string_view b) noexcept;

// A number and what stands behind it, as in "440.000 Hz".
struct Quantity {
  double number = 0.0;  // finite
  std::string_view unit;
  [[nodiscard]] bool hasUnit(std::string_view other) const noexcept { return equalInAnyCase(unit, other); }
};
[[nodiscard]] std::optional<Quantity> splitQuantity(std::string_view text) noexcept;

// A few of the texts, the likeliest first, in quotes and with commas between: those of nearest number where the unit is
// the same, else those that hold the word or take the fewest changes of letters. Pure.
[[nodiscard]] std::string nearTexts(std::string_view typed, std::span<const std::string> texts);

}  // namespace modrift::cli
