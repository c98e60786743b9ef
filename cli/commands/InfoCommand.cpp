// SPDX-License-Identifier: MIT
#include "cli/commands/InfoCommand.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fmt/core.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/commands/PluginLocation.h"
#include "cli/terminal/Table.h"
#include "cli/values/Numbers.h"
#include "host/Plugin.h"

namespace modrift::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr auto kFlagNames = std::to_array<std::pair<VstInt32, std::string_view>>({
    {effFlagsHasEditor, "has editor"},
    {effFlagsCanMono, "can mono"},
    {effFlagsCanReplacing, "can replace"},
    {effFlagsProgramChunks, "programs are chunks"},
    {effFlagsIsSynth, "is synth"},
    {effFlagsNoSoundInStop, "no sound in stop"},
    {effFlagsCanDoubleReplacing, "can double replace"},
});

// What hosts ask plug-ins about.
constexpr auto kQuestions = std::to_array<const char*>({
    "sendVstEvents",
    "sendVstMidiEvent",
    "receiveVstEvents",
    "receiveVstMidiEvent",
    "receiveVstTimeInfo",
    "offline",
    "plugAsChannelInsert",
    "plugAsSend",
    "midiProgramNames",
    "bypass",
    "1in1out",
    "1in2out",
    "2in1out",
    "2in2out",
    "2in4out",
    "FileSelector",
    "wantsUTF8Paths",
});

// In the order of VstPlugCategory.
constexpr auto kCategories = std::to_array<std::string_view>({
    "unknown",
    "effect",
    "synth",
    "analysis",
    "mastering",
    "spacializer",
    "room effect",
    "surround effect",
    "restoration",
    "offline process",
    "shell",
    "generator",
});

// Plug-ins that claim thousands of pins are wrong; the first ones tell enough.
constexpr int kMostPins = 64;

std::string idText(VstInt32 id) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto c = static_cast<char>((static_cast<std::uint32_t>(id) >> shift) & 0xFF);
    text += c >= ' ' && c <= '~' ? c : '?';
  }
  return text;
}

std::string categoryText(VstIntPtr category) {
  const auto index = static_cast<std::size_t>(category);
  return std::string(index < kCategories.size() ? kCategories[index] : kCategories.front());
}

Json describeRecord(const host::Plugin& plugin) {
  const AEffect& record = plugin.record();
  Json json;
  json["file"] = plugin.path().string();
  json["name"] = plugin.effectName();
  json["product"] = plugin.productName();
  json["vendor"] = plugin.vendorName();
  json["category"] = categoryText(plugin.dispatch(effGetPlugCategory));
  json["uniqueId"] = idText(record.uniqueID);
  json["uniqueIdHex"] = fmt::format("0x{:08X}", static_cast<std::uint32_t>(record.uniqueID));
  json["version"] = record.version;
  json["vendorVersion"] = plugin.dispatch(effGetVendorVersion);
  json["vstVersion"] = plugin.dispatch(effGetVstVersion);
  json["programs"] = record.numPrograms;
  json["parameterCount"] = record.numParams;
  json["inputs"] = record.numInputs;
  json["outputs"] = record.numOutputs;
  json["initialDelay"] = record.initialDelay;
  return json;
}

Json describeFlags(VstInt32 flags) {
  Json json = Json::array();
  for (const auto& [flag, name] : kFlagNames) {
    if ((flags & flag) != 0) json.push_back(name);
  }
  return json;
}

Json describePin(VstInt32 index, const std::optional<VstPinProperties>& pin) {
  Json json;
  json["index"] = index;
  json["label"] = pin ? pin->label : "";
  json["active"] = pin && (pin->flags & kVstPinIsActive) != 0;
  json["stereo"] = pin && (pin->flags & kVstPinIsStereo) != 0;
  return json;
}

Json describePins(const host::Plugin& plugin) {
  Json inputs = Json::array();
  Json outputs = Json::array();
  for (VstInt32 i = 0; i < std::min(plugin.inputCount(), kMostPins); ++i) {
    inputs.push_back(describePin(i, plugin.inputPin(i)));
  }
  for (VstInt32 i = 0; i < std::min(plugin.outputCount(), kMostPins); ++i) {
    outputs.push_back(describePin(i, plugin.outputPin(i)));
  }
  return {{"inputs", std::move(inputs)}, {"outputs", std::move(outputs)}};
}

Json describeCanDo(const host::Plugin& plugin) {
  Json json = Json::object();
  for (const char* question : kQuestions) {
    const VstIntPtr answer = plugin.canDo(question);
    json[question] = answer > 0 ? "yes" : answer < 0 ? "no" : "unknown";
  }
  return json;
}

Json describeParameters(const host::Plugin& plugin) {
  Json json = Json::array();
  for (VstInt32 index = 0; index < plugin.parameterCount(); ++index) {
    Json parameter;
    parameter["index"] = index;
    parameter["name"] = plugin.parameterName(index);
    parameter["value"] = plugin.parameter(index);
    parameter["text"] = plugin.parameterDisplay(index);
    parameter["label"] = plugin.parameterLabel(index);
    json.push_back(std::move(parameter));
  }
  return json;
}

Json describe(const host::Plugin& plugin) {
  Json json = describeRecord(plugin);
  json["flags"] = describeFlags(plugin.record().flags);
  json["pins"] = describePins(plugin);
  json["canDo"] = describeCanDo(plugin);
  json["parameters"] = describeParameters(plugin);
  return json;
}

// What one cell shows: texts as they are, numbers without a tail of digits.
std::string cell(const Json& value) {
  if (value.is_string()) return std::string(trimmed(value.get_ref<const std::string&>()));
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  if (value.is_number_float()) return fmt::format("{:.6f}", value.get<double>());
  if (!value.is_array()) return value.dump();
  std::string text;
  for (const Json& item : value) text += (text.empty() ? "" : ", ") + cell(item);
  return text;
}

// A heading, and a list of objects with the same keys as a table.
void printList(std::string_view title, const Json& list) {
  fmt::print("\n{}\n", title);
  if (list.empty()) {
    fmt::print("none\n");
    return;
  }
  Rows rows(1);
  for (const auto& [key, value] : list.front().items()) rows.front().push_back(key);
  for (const Json& item : list) {
    std::vector<std::string>& row = rows.emplace_back();
    for (const auto& [key, value] : item.items()) row.push_back(cell(value));
  }
  printAligned(rows);
}

// Texts with their labels behind them, as hosts show them: "25 %".
Json withLabels(Json parameters) {
  for (Json& parameter : parameters) {
    const std::string label = cell(parameter["label"]);
    parameter["text"] = cell(parameter["text"]) + (label.empty() ? "" : " " + label);
    parameter.erase("label");
  }
  return parameters;
}

void printTables(const Json& json) {
  Rows facts;
  for (const auto& [key, value] : json.items()) {
    if (!value.is_object() && key != "parameters") facts.push_back({key, cell(value)});
  }
  printAligned(facts);
  printList("Input pins", json["pins"]["inputs"]);
  printList("Output pins", json["pins"]["outputs"]);
  fmt::print("\nCan do\n");
  Rows answers;
  for (const auto& [question, answer] : json["canDo"].items()) answers.push_back({question, cell(answer)});
  printAligned(answers);
  printList("Parameters", withLabels(json["parameters"]));
}

}  // namespace

void runInfo(const InfoOptions& options) {
  const host::Plugin plugin(std::make_shared<host::Module>(pluginPath(options.plugin)));
  const Json json = describe(plugin);
  if (options.json) {
    // Plug-ins' texts need not be UTF-8, and values need not be numbers (null then).
    fmt::print("{}\n", json.dump(2, ' ', false, Json::error_handler_t::replace));
  } else {
    printTables(json);
  }
}

}  // namespace modrift::cli
