// SPDX-License-Identifier: MIT
#include "cli/values/ParameterNames.h"

#include <algorithm>
#include <cstddef>
#include <fmt/core.h>
#include <vector>

#include "cli/values/NearTexts.h"
#include "cli/values/Numbers.h"

namespace modrift::cli {
namespace {

constexpr std::size_t kMostShown = 6;  // of the names that an ambiguous beginning could mean

template <class Match>
std::vector<int> indicesWhere(std::span<const std::string> names, Match match) {
  std::vector<int> found;
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (match(trimmed(names[index]))) found.push_back(static_cast<int>(index));
  }
  return found;
}

std::string listed(std::span<const std::string> names, std::span<const int> indices) {
  std::string text;
  for (const int index : indices.first(std::min(indices.size(), kMostShown))) {
    text += fmt::format("{}{} ({})", text.empty() ? "" : ", ", trimmed(names[static_cast<std::size_t>(index)]), index);
  }
  return indices.size() > kMostShown ? text + ", ..." : text;
}

}  // namespace

std::variant<int, std::string> findParameter(std::span<const std::string> names, std::string_view typed) {
  typed = trimmed(typed);
  const auto isExact = [&](std::string_view name) { return name == typed; };
  const auto isSame = [&](std::string_view name) { return equalInAnyCase(name, typed); };
  const auto isBeginning = [&](std::string_view name) { return equalInAnyCase(name.substr(0, typed.size()), typed); };
  if (typed.empty()) return std::string("a parameter's name or index was expected");

  std::vector<int> found = indicesWhere(names, isExact);
  if (found.empty()) found = indicesWhere(names, isSame);
  if (found.empty()) {
    if (const auto index = parseInteger(typed)) {
      if (*index >= 0 && static_cast<std::size_t>(*index) < names.size()) return *index;
      return fmt::format("an index from 0 to {} was expected, not {}", static_cast<int>(names.size()) - 1, *index);
    }
    found = indicesWhere(names, isBeginning);
  }
  if (found.size() == 1) return found.front();
  if (found.empty()) {
    return fmt::format("a parameter of the plug-in was expected, not '{}' ('modrift info' lists them)", typed);
  }
  return fmt::format("one parameter was expected, but '{}' may be {}", typed, listed(names, found));
}

}  // namespace modrift::cli
