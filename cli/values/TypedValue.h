// SPDX-License-Identifier: MIT
// A parameter's value as people write it: a plain number, or the text that the plug-in shows for it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/values/Numbers.h"

namespace modrift::cli {

struct TypedValue {
  std::optional<float> number;  // finite
  std::string text{};           // where there is no number; never empty then
};

// What is a number is meant as one; in double quotes it is a text all the same. Nothing for an empty value and for
// numbers that no parameter can hold: "nan", "1e99".
[[nodiscard]] inline std::optional<TypedValue> parseTypedValue(std::string_view typed) {
  typed = trimmed(typed);
  if (const auto number = parseParameterValue(typed)) return TypedValue{*number};
  if (isAnyNumber(typed)) return std::nullopt;
  if (typed.size() > 2 && typed.front() == '"' && typed.back() == '"')
    typed = trimmed(typed.substr(1, typed.size() - 2));
  if (typed.empty()) return std::nullopt;
  return TypedValue{std::nullopt, std::string(typed)};
}

}  // namespace modrift::cli
