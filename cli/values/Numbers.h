// SPDX-License-Identifier: MIT
// Numbers and blanks in texts that people write. Independent of the locale; throws nothing.
#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace modrift::cli {

[[nodiscard]] inline std::string_view trimmed(std::string_view text) noexcept {
  constexpr std::string_view kBlanks = " \t\r\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

namespace detail {

// The whole text as a number, "nan" and "inf" included. A leading plus is allowed, as people write it.
template <class Number>
[[nodiscard]] std::optional<Number> parseWhole(std::string_view text) noexcept {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace detail

[[nodiscard]] inline std::optional<double> parseNumber(std::string_view text) noexcept {
  const auto number = detail::parseWhole<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

// A parameter's value: what a float can hold. Mostly 0 to 1, but plug-ins may take more.
[[nodiscard]] inline std::optional<float> parseParameterValue(std::string_view text) noexcept {
  const auto number = detail::parseWhole<float>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

[[nodiscard]] inline std::optional<int> parseInteger(std::string_view text) noexcept {
  return detail::parseWhole<int>(text);
}

// Frames that doubles count one by one: 2 to the 53.
inline constexpr double kMostFrames = 9007199254740992.0;

// Numbers, and also what nobody can compute with: "nan", "inf", "1e999" and their like.
[[nodiscard]] inline bool isAnyNumber(std::string_view text) noexcept {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return !text.empty() && error != std::errc::invalid_argument && end == text.data() + text.size();
}

}  // namespace modrift::cli
