// SPDX-License-Identifier: MIT
#include "cli/commands/Settings.h"

#include <array>
#include <fmt/core.h>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "cli/commands/ModriftCalls.h"
#include "cli/terminal/Errors.h"
#include "cli/values/Numbers.h"
#include "cli/values/ParameterNames.h"

namespace modrift::cli {

std::vector<Setting> parseSettings(const std::vector<std::string>& typed) {
  std::vector<Setting> settings;
  for (const std::string& text : typed) {
    const std::size_t equals = text.rfind('=');  // the last one, as names may hold others
    if (equals == std::string::npos || equals == 0) {
      throw UsageError(fmt::format("--set: NAME=VALUE or INDEX=VALUE was expected, not '{}'", text));
    }
    std::optional<TypedValue> value = parseTypedValue(std::string_view(text).substr(equals + 1));
    if (!value) throw UsageError(fmt::format("--set: a number or a text after the = was expected, not '{}'", text));
    settings.push_back({text.substr(0, equals), std::move(*value)});
  }
  return settings;
}

std::vector<std::string> parameterNames(const host::Plugin& plugin) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(plugin.parameterCount()));
  for (VstInt32 index = 0; index < plugin.parameterCount(); ++index) names.push_back(plugin.parameterName(index));
  if (!isModrift(plugin)) return names;
  for (VstInt32 index = plugin.parameterCount(); index < kModriftNumbers; ++index) {
    std::array<char, kVstMaxNameLen> name{};
    plugin.dispatch(effGetParamName, index, 0, name.data());
    names.emplace_back(name.data());
  }
  return names;
}

std::vector<host::ParameterChange> findSettings(const std::vector<Setting>& settings,
                                                const std::vector<std::string>& names, ValueFinder& values) {
  std::vector<host::ParameterChange> changes;
  for (const Setting& setting : settings) {
    const auto found = findParameter(names, setting.parameter);
    if (const auto* expected = std::get_if<std::string>(&found)) throw RunError("--set: " + *expected);
    const int index = std::get<int>(found);
    const auto value = values.take(index, names[static_cast<std::size_t>(index)], setting.value);
    if (const auto* expected = std::get_if<std::string>(&value)) throw RunError("--set: " + *expected);
    changes.push_back({0, index, std::get<float>(value)});
  }
  return changes;
}

}  // namespace modrift::cli
