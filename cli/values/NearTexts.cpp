// SPDX-License-Identifier: MIT
#include "cli/values/NearTexts.h"

#include <algorithm>
#include <cmath>
#include <fmt/core.h>
#include <numeric>
#include <utility>
#include <vector>

#include "cli/values/Numbers.h"

namespace modrift::cli {
namespace {

constexpr std::size_t kMostShown = 4;

std::string loweredText(std::string_view text) {
  std::string copy(text);
  std::transform(copy.begin(), copy.end(), copy.begin(), lowered);
  return copy;
}

// Letters to change, add or take away on the way from one to the other (Levenshtein).
std::size_t editDistance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, diagonal + 1, row[j] + 1});
    }
  }
  return row.back();
}

double numberDistance(const Quantity& typed, std::string_view text) {
  const auto other = splitQuantity(text);
  return other && other->hasUnit(typed.unit) ? std::abs(other->number - typed.number) : HUGE_VAL;
}

double letterDistance(std::string_view typed, std::string_view text) {
  const std::string word = loweredText(typed), other = loweredText(text);
  const auto distance = static_cast<double>(editDistance(word, other));
  return other.find(word) != std::string::npos ? 1.0 - 1.0 / (1.0 + distance) : distance;
}

}  // namespace

char lowered(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equalInAnyCase(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lowered(x) == lowered(y); });
}

std::optional<Quantity> splitQuantity(std::string_view text) noexcept {
  text = trimmed(text);
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  Quantity quantity;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), quantity.number);
  if (error != std::errc{} || !std::isfinite(quantity.number)) return std::nullopt;
  quantity.unit = trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
  return quantity;
}

std::string nearTexts(std::string_view typed, std::span<const std::string> texts) {
  const auto quantity = splitQuantity(typed);
  const bool byNumber = quantity && std::any_of(texts.begin(), texts.end(), [&](const std::string& text) {
                          return numberDistance(*quantity, text) < HUGE_VAL;
                        });
  std::vector<std::pair<double, std::string_view>> ranked;
  ranked.reserve(texts.size());
  for (const std::string& text : texts) {
    const double distance = byNumber ? numberDistance(*quantity, text) : letterDistance(trimmed(typed), text);
    if (distance < HUGE_VAL) ranked.emplace_back(distance, text);
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::string list;
  for (std::size_t i = 0; i < std::min(ranked.size(), kMostShown); ++i)
    list += fmt::format("{}'{}'", i == 0 ? "" : ", ", ranked[i].second);
  return list;
}

}  // namespace modrift::cli
