// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <exception>
#include <fmt/format.h>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/ModriftCalls.h"
#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetCommands.h"
#include "cli/commands/Settings.h"
#include "cli/files/StoredFiles.h"
#include "cli/terminal/Table.h"
#include "cli/values/GraphText.h"
#include "cli/values/Numbers.h"
#include "model/StateFields.h"

using namespace model;

namespace modrift::cli {
namespace {

using Json = nlohmann::ordered_json;
using model::Field;
using model::FieldType;

// Empty when Modrift is not at hand; presets can be read without it.
std::vector<std::string> modriftNames() {
  try {
    const host::Plugin plugin(std::make_shared<host::Module>(pluginPath("")));
    if (isModrift(plugin)) return parameterNames(plugin);
  } catch (const std::exception&) {
  }
  return {};
}

std::string nameOf(const std::vector<std::string>& names, int parameter) {
  const auto index = static_cast<std::size_t>(parameter);
  return parameter >= 0 && index < names.size() ? std::string(trimmed(names[index])) : "";
}

std::string_view typeName(FieldType type) {
  switch (type) {
    case FieldType::flag:
      return "flag";
    case FieldType::i8:
      return "i8";
    case FieldType::u8:
      return "u8";
    case FieldType::i16:
      return "i16";
    case FieldType::i32:
      return "i32";
    case FieldType::f32:
      return "f32";
    case FieldType::f64:
      break;
  }
  return "f64";
}

std::string_view layoutName(model::Layout layout) { return layout == model::Layout::current ? "current" : "old"; }

// The version of a state is the file's, not the one that reading has brought it to.
bool isVersion(const Field& field) { return field.name == "version"; }

bool isFresh(const GraphPoints& points) {
  const GraphPoints fresh = freshGraph();
  const auto isSame = [&](const auto& a, const auto& b) {
    return std::equal(a.begin(), a.begin() + fresh.lastPoint + 1, b.begin());
  };
  return points.lastPoint == fresh.lastPoint && isSame(points.x, fresh.x) && isSame(points.y, fresh.y) &&
         isSame(points.curve, fresh.curve);
}

// --- As JSON: every byte that has a meaning, exactly

Json valueJson(const Field& field, double value) {
  if (field.type == FieldType::flag) return value != 0.0;
  if (field.type == FieldType::f32 || field.type == FieldType::f64) return value;
  return static_cast<int>(value);
}

// One value, an array, or for points twelve arrays of a graph each.
Json valuesJson(const Field& field, const model::State& state) {
  if (field.count == 1) return valueJson(field, field.get(state, 0));
  Json values = Json::array();
  for (int i = 0; i < field.count; ++i) {
    if (field.type != FieldType::f64) {
      values.push_back(valueJson(field, field.get(state, i)));
      continue;
    }
    if (i % kStoredSlots == 0) values.push_back(Json::array());
    values.back().push_back(field.get(state, i));
  }
  return values;
}

Json fieldsJson(const model::State& state, const std::vector<std::string>& names) {
  Json fields = Json::object();
  for (const Field& field : model::stateFields()) {
    if (isVersion(field)) continue;
    Json json;
    json["value"] = valuesJson(field, state);
    json["type"] = typeName(field.type);
    if (field.parameter >= 0) json["parameter"] = field.parameter;
    if (const std::string name = nameOf(names, field.parameter); !name.empty()) json["parameterName"] = name;
    fields[std::string(field.name)] = std::move(json);
  }
  return fields;
}

void printJson(const std::string& file, const model::LoadedState& loaded, const std::vector<std::string>& names) {
  Json json;
  json["file"] = file;
  json["version"] = loaded.version;
  json["layout"] = layoutName(loaded.layout);
  json["fields"] = fieldsJson(loaded.state, names);
  json["graphs"] = Json::array();
  for (int g = 0; g < kGraphs; ++g) {
    const GraphPoints points = model::pointsOf(loaded.state, g);
    json["graphs"].push_back({{"graph", g + 1}, {"fresh", isFresh(points)}, {"points", pointsJson(points)}});
  }
  fmt::print("{}\n", json.dump(2, ' ', false, Json::error_handler_t::replace));
}

// --- As text: what a reader wants to know

std::string valueText(const Field& field, double value) {
  if (field.type == FieldType::flag) return value != 0.0 ? "on" : "off";
  if (field.type == FieldType::f32) return fmt::format("{}", static_cast<float>(value));
  const std::string number = fmt::format("{}", value);
  return field.high == kLastGraph ? fmt::format("{} (graph {})", number, value + 1.0) : number;
}

std::string valuesText(const Field& field, const model::State& state) {
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(field.count));
  for (int i = 0; i < field.count; ++i) texts.push_back(valueText(field, field.get(state, i)));
  if (texts.size() > 1 && std::count(texts.begin(), texts.end(), texts[0]) == field.count) return texts[0] + " each";
  return fmt::format("{}", fmt::join(texts, " "));
}

std::string parameterText(const Field& field) {
  if (field.parameter < 0) return "";
  return field.count == 1 ? std::to_string(field.parameter)
                          : fmt::format("{} to {}", field.parameter, field.parameter + field.count - 1);
}

std::string namesText(const Field& field, const std::vector<std::string>& names) {
  std::string first = nameOf(names, field.parameter);
  if (field.count == 1 || first.empty()) return first;
  return first + " to " + nameOf(names, field.parameter + field.count - 1);
}

void printFields(const model::State& state, const std::vector<std::string>& names) {
  Rows rows = {{"field", "parameter", "name", "value"}};
  for (const Field& field : model::stateFields()) {
    if (field.isReserved() || isVersion(field) || field.type == FieldType::f64) continue;  // points come below
    rows.push_back({std::string(field.name), parameterText(field), namesText(field, names), valuesText(field, state)});
  }
  printAligned(rows);
}

void printText(const std::string& file, const model::LoadedState& loaded, const std::vector<std::string>& names) {
  printAligned({{"file", file},
                {"version", fmt::format("{}", loaded.version)},
                {"layout", std::string(layoutName(loaded.layout))}});
  fmt::print("\n");
  printFields(loaded.state, names);
  int fresh = 0;
  for (int g = 0; g < kGraphs; ++g) {
    const GraphPoints points = model::pointsOf(loaded.state, g);
    if (isFresh(points)) {
      ++fresh;
      continue;
    }
    fmt::print("\nGraph {}\n", g + 1);
    printAligned(pointRows(points));
  }
  fmt::print("\n{} graphs are as they start: from the top to the bottom and back, in straight lines\n", fresh);
}

}  // namespace

void runPresetShow(const PresetShowOptions& options) {
  const model::LoadedState loaded = readPreset(options.input);
  const std::vector<std::string> names = modriftNames();
  options.json ? printJson(options.input, loaded, names) : printText(options.input, loaded, names);
}

}  // namespace modrift::cli
