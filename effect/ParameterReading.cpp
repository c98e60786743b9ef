// SPDX-License-Identifier: MIT
#include "effect/ParameterReading.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace effect {

namespace {

std::string_view trimmed(std::string_view text) noexcept {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

char lowered(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool sameText(std::string_view a, std::string_view b) noexcept {
  return std::ranges::equal(trimmed(a), trimmed(b), {}, lowered, lowered);
}

std::optional<std::size_t> placeOf(std::string_view text, std::span<const char* const> list) noexcept {
  const auto found = std::ranges::find_if(list, [text](const char* entry) { return sameText(entry, text); });
  return found == list.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - list.begin()));
}

std::optional<double> readNumber(std::string_view text, std::string_view unit) noexcept {
  text = trimmed(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto [rest, fault] = std::from_chars(text.data(), end, number);
  if (fault != std::errc{} || !std::isfinite(number)) return std::nullopt;
  const std::string_view behind = trimmed({rest, static_cast<std::size_t>(end - rest)});
  return behind.empty() || sameText(behind, unit) ? std::optional(number) : std::nullopt;
}

std::optional<float> placeBetween(std::optional<double> number, double low, double high) noexcept {
  if (!number || *number < low || *number > high) return std::nullopt;
  return static_cast<float>((*number - low) / (high - low));
}

std::optional<float> ratioBetween(std::optional<double> number, double low, double high) noexcept {
  if (!number || *number < low || *number > high) return std::nullopt;
  return static_cast<float>(std::log(*number / low) / std::log(high / low));
}

std::optional<float> readCount(std::string_view text, int first, int last) noexcept {
  const auto number = readNumber(text);
  if (!number || *number != std::floor(*number)) return std::nullopt;
  return placeBetween(number, first, last);
}

}  // namespace effect
