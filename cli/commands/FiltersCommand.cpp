// SPDX-License-Identifier: MIT
#include "cli/commands/FiltersCommand.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fmt/core.h>
#include <nlohmann/json.hpp>
#include <span>
#include <string_view>
#include <vector>

#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/pictures/FilterMeasurement.h"
#include "cli/pictures/FilterPicture.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"
#include "cli/terminal/Table.h"
#include "cli/values/NearTexts.h"
#include "cli/values/Numbers.h"
#include "filters/FilterTypes.h"

namespace modrift::cli {
namespace {

// Of the control that differs between the lines.
constexpr auto kCutoffs = std::to_array<float>({0.2f, 0.35f, 0.5f, 0.65f, 0.8f});
constexpr auto kFewCutoffs = std::to_array<float>({0.5f, 0.65f, 0.8f});  // where one line fills the picture
constexpr auto kPositions = std::to_array<float>({0.0f, 0.25f, 0.5f, 0.75f, 1.0f});

// "all" is everything.
std::vector<int> typesFor(const std::string& typed) {
  std::vector<int> all;
  std::vector<std::string> names;
  for (int type = 0; type < filters::kFilterTypes; ++type) {
    all.push_back(type);
    names.emplace_back(filters::typeAt(type).name);
  }
  const std::string_view wanted = trimmed(typed);
  if (equalInAnyCase(wanted, "all")) return all;
  const auto found = std::ranges::find_if(names, [&](const std::string& name) { return equalInAnyCase(name, wanted); });
  if (found != names.end()) return {static_cast<int>(found - names.begin())};
  if (const auto number = parseInteger(wanted)) {
    if (*number >= 0 && *number < filters::kFilterTypes) return {*number};
    throw UsageError(
        fmt::format("TYPE: a number from 0 to {} was expected, not {}", filters::kFilterTypes - 1, *number));
  }
  throw UsageError(
      fmt::format("TYPE: the name or number of a filter type, or all, was expected, not '{}'; near it are {}", wanted,
                  nearTexts(wanted, names)));
}

// With the number before the name, in letters that any system takes: "46-cmb-h6-plus.png".
std::string fileName(int type) {
  std::string name = fmt::format("{:02}", type);
  const std::string_view typeName = filters::typeAt(type).name;
  for (std::size_t i = 0; i < typeName.size(); ++i) {
    const char c = typeName[i];
    const bool isLast = i + 1 == typeName.size();
    const bool isWord = std::isalnum(static_cast<unsigned char>(c)) != 0;
    const bool beginsWord = i == 0 || std::isalnum(static_cast<unsigned char>(typeName[i - 1])) == 0;
    if (isWord && beginsWord) name += '-';
    if (isWord) name += lowered(c);
    if (c == '+') name += "-plus";
    if (c == '-' && isLast) name += "-minus";
  }
  return name + ".png";
}

std::filesystem::path targetFor(const FilterPlotOptions& options, int type) {
  const std::filesystem::path output = options.output;
  return output.extension() == ".png" ? output : output / fileName(type);
}

std::string overFor(const FilterPlotOptions& options, int type) {
  if (!options.over.empty()) return options.over;
  return filters::typeAt(type).trait == filters::Trait::shapedByVar ? "var" : "cutoff";
}

std::span<const float> positionsOf(const std::string& over, int type) {
  if (over != "cutoff") return kPositions;
  const bool isDense = filters::typeAt(type).lines.any() || FilterMeasurement::makesNewTones(type);
  return isDense ? std::span<const float>(kFewCutoffs) : kCutoffs;
}

// The controls that are the same for all lines.
std::string controlsText(const FilterPlotOptions& options, const std::string& over) {
  std::string text;
  const auto add = [&](const char* control, const char* name, double value) {
    if (over != control) text += fmt::format("{}{} {:.2f}", text.empty() ? "" : ", ", name, value);
  };
  add("cutoff", "cutoff", options.cutoff);
  add("res", "resonance", options.resonance);
  add("var", "Var", options.var);
  add("drive", "drive", options.drive);
  return text;
}

FrequencyChart emptyChart(const FilterPlotOptions& options, int type, const std::string& over) {
  const filters::FilterType& row = filters::typeAt(type);
  const std::string var = row.varText == std::string_view("-") ? "no Var" : fmt::format("Var is \"{}\"", row.varText);
  const std::string controls = controlsText(options, over);
  FrequencyChart chart;
  chart.title = row.name;
  chart.facts = fmt::format("number {}, {}, {}", type, row.family, var);
  chart.legend = over == "res" ? "resonance" : over == "var" ? "Var" : over;
  chart.showsLevels = FilterMeasurement::makesNewTones(type);
  const std::string measure = chart.showsLevels
                                  ? fmt::format("No response: what a {:g} Hz sine becomes", FilterMeasurement::kToneHz)
                                  : "Measured with a small impulse";
  chart.caption = fmt::format("{}. {}", measure, controls);
  return chart;
}

FrequencyChart measured(const FilterPlotOptions& options, int type, FilterMeasurement& measurement) {
  static const std::vector<double> hz = chartFrequencies();
  const std::string over = overFor(options, type);
  FrequencyChart chart = emptyChart(options, type, over);
  FilterSettings settings{type, static_cast<float>(options.cutoff), static_cast<float>(options.resonance),
                          static_cast<float>(options.var), static_cast<float>(options.drive)};
  float& moved = over == "res" ? settings.resonance : over == "var" ? settings.var : settings.cutoff;
  for (const float position : positionsOf(over, type)) {
    throwIfInterrupted();
    moved = position;
    chart.curves.push_back({fmt::format("{:.2f}", position), chart.showsLevels
                                                                 ? measurement.spectrumOfTone(settings, hz)
                                                                 : measurement.response(settings, hz)});
  }
  return chart;
}

}  // namespace

void runFilterList(bool asJson) {
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  Rows rows = {{"number", "name", "family", "Var"}};
  for (int type = 0; type < filters::kFilterTypes; ++type) {
    const filters::FilterType& row = filters::typeAt(type);
    json.push_back({{"number", type}, {"name", row.name}, {"family", row.family}, {"var", row.varText}});
    rows.push_back({std::to_string(type), row.name, row.family, row.varText});
  }
  if (asJson) {
    fmt::print("{}\n", json.dump(2));
  } else {
    printAligned(rows);
  }
}

void runFilterPlot(const FilterPlotOptions& options) {
  const std::vector<int> types = typesFor(options.type);
  const bool isPicture = std::filesystem::path(options.output).extension() == ".png";
  if (isPicture && types.size() > 1) throw UsageError("-o: a folder was expected for all types");
  if (!isPicture) makeFolder(options.output.ends_with('/') ? options.output : options.output + '/');
  FilterMeasurement measurement;
  for (const int type : types) {
    const std::filesystem::path target = targetFor(options, type);
    PendingFile pending(target);
    writeFrequencyChart(pending.path(), measured(options, type, measurement));
    pending.commit();
    fmt::print("{} -> {}\n", filters::typeAt(type).name, target.string());
  }
}

}  // namespace modrift::cli
