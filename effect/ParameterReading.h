// SPDX-License-Identifier: MIT
// Small parts of reading a parameter's text. Pure; nothing here allocates.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace effect {

// Blanks round the texts do not count, nor does the case of ASCII letters.
[[nodiscard]] bool sameText(std::string_view a, std::string_view b) noexcept;
// The place of `text` in a list; nothing if it is not there.
[[nodiscard]] std::optional<std::size_t> placeOf(std::string_view text, std::span<const char* const> list) noexcept;
// A finite number, with the unit behind it or without.
[[nodiscard]] std::optional<double> readNumber(std::string_view text, std::string_view unit = "") noexcept;
// What lies between `low` and `high` as the place between them, 0 to 1; nothing else.
[[nodiscard]] std::optional<float> placeBetween(std::optional<double> number, double low, double high) noexcept;
// The same by equal ratios.
[[nodiscard]] std::optional<float> ratioBetween(std::optional<double> number, double low, double high) noexcept;
// The place of a whole number between `first` and `last`.
[[nodiscard]] std::optional<float> readCount(std::string_view text, int first, int last) noexcept;

}  // namespace effect
