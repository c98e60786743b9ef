// SPDX-License-Identifier: MIT
#include "presets/generator/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "effect/ExpMapper.h"
#include "effect/Helpers.h"
#include "effect/LfoClock.h"
#include "effect/PadLFO.h"
#include "effect/ParameterTable.h"
#include "effect/ParameterTexts.h"
#include "filters/FilterTypes.h"
#include "model/WarpTable.h"

using namespace model;
using namespace effect;

namespace modrift::factory {
namespace {

std::optional<double> inRange(std::optional<double> value, double least, double most) {
  return value && *value >= least && *value <= most ? value : std::nullopt;
}

std::optional<float> asFloat(std::optional<double> value) {
  return value ? std::optional(static_cast<float>(*value)) : std::nullopt;
}

template <class Names>
std::optional<std::size_t> placeOf(std::string_view text, const Names& names) {
  const auto place = std::ranges::find_if(names, [text](std::string_view name) { return trimmed(name) == text; });
  if (place == std::end(names)) return std::nullopt;
  return static_cast<std::size_t>(place - std::begin(names));
}

// --- Values

std::optional<float> readRate(std::string_view text) {
  if (const auto hertz = inRange(readQuantity(text, "Hz"), 0.0, kFastestFreeHz)) {
    return static_cast<float>(std::pow(*hertz / kFastestFreeHz, 0.25));
  }
  const auto step = placeOf(text, LFOTimes);
  return step ? std::optional(middleOfRateStep(*step)) : std::nullopt;
}

std::optional<float> readShare(std::string_view text) {
  const auto percent = readQuantity(text, "%");
  return asFloat(inRange(percent ? *percent / 100.0 : readNumber(text), 0.0, 1.0));
}

std::optional<float> readRoundTheMiddle(std::string_view text) {
  const auto percent = readQuantity(text, "%");
  return asFloat(inRange(percent ? 0.5 + *percent / 200.0 : readNumber(text), 0.0, 1.0));
}

std::optional<float> readSwitch(std::string_view text) {
  if (text == "on") return 1.0f;
  return text == "off" ? std::optional(0.0f) : std::nullopt;
}

std::optional<float> readRetrigger(std::string_view text) {
  if (text == "off") return 0.0f;
  if (text == "Trig") return 0.5f;
  return text == "Env" ? std::optional(1.0f) : std::nullopt;
}

// A whole number of `least` to `most` as the place between `least` and `top`.
std::optional<float> readCount(std::string_view text, double least, double most, double top) {
  const auto number = inRange(readNumber(text), least, most);
  if (!number || *number != std::floor(*number)) return std::nullopt;
  return static_cast<float>((*number - least) / (top - least));
}

std::optional<float> readGraphNumber(std::string_view text) { return readCount(text, 1.0, kGraphs, kGraphs); }
std::optional<float> readController(std::string_view text) {
  return readCount(text, 0.0, kSevenBitValues - 1.0, kSevenBitValues);
}

// The effect keeps one cell less than it shows.
std::optional<float> readGrid(std::string_view text) {
  const auto cells = readCount(text, 1.0, kGridSteps + 1.0, kGridSteps + 1.0);
  return cells && *cells > 0.0f ? cells : std::nullopt;
}

std::optional<float> readWarp(std::string_view text) {
  const auto entry = placeOf(text, WarpNames);
  return entry ? std::optional(valueOfWarp(*entry)) : std::nullopt;
}

std::optional<float> readFilterType(std::string_view text) {
  const auto type =
      std::ranges::find(filters::types(), text, [](const filters::FilterType& t) { return std::string_view(t.name); });
  if (type == filters::types().end()) return std::nullopt;
  return filters::normalisedType(static_cast<int>(type - filters::types().begin()));
}

std::optional<float> readXoverFrequency(std::string_view text) {
  constexpr auto kLowestHz = static_cast<double>(kLowestXoverHz);
  constexpr auto kHighestHz = static_cast<double>(kHighestXoverHz);
  const auto hertz = inRange(readQuantity(text, "Hz"), kLowestHz, kHighestHz);
  if (!hertz) return std::nullopt;
  return static_cast<float>(std::log(*hertz / kLowestHz) / std::log(kHighestHz / kLowestHz));
}

// --- The parameters by number; names come from the effect's own table, but for the few that have none there.

std::vector<ParameterWord> makeParameters() {
  constexpr std::string_view kShareText = "a percentage from 0% to 100%, or a number from 0 to 1";
  constexpr std::string_view kMiddleText = "a percentage from -100% to 100%, or a number from 0 to 1";
  constexpr std::string_view kSwitchText = "on or off";
  std::vector<ParameterWord> words = {
      {kRate, "a rate step such as 1/4 or 2 bar, or a frequency up to 440 Hz", readRate},
      {kRetrigger, "off, Trig or Env", readRetrigger},
      {kFilterType, "the name of a filter type", readFilterType},
      {kXoverFrequency, "a frequency from 20 Hz to 20000 Hz", readXoverFrequency},
      {kGridSize, "a number of cells from 2 to 16", readGrid},
      {kCcNumber, "a controller number from 0 to 127", readController},
  };
  for (const int index : {kSwing, kPwm, kDepthCut, kDepthRes, kDepthVol, kDepthPan, kDepthVar, kTiming})
    words.push_back({index, kMiddleText, readRoundTheMiddle});
  for (const int index :
       {kPhase, kFilterCutoff, kFilterReso, kFilterDrive, kSmooth, kDepthKnob, kFilterVar, kFilterMix})
    words.push_back({index, kShareText, readShare});
  for (const int index : {kBpmSync, kDotted, kTriplet, kFilterOn, kGateMode, kVelToPwm, kNoteToRate, kXoverOn,
                          kXoverInvert, kNoteToCutoff, kAnchor})
    words.push_back({index, kSwitchText, readSwitch});
  for (const int index : {kRouteCut, kRouteRes, kRouteVol, kRoutePan, kRouteVar})
    words.push_back({index, "the number of a graph from 1 to 12", readGraphNumber});
  for (int g = 0; g < kGraphs; ++g) words.push_back({kWarp1 + g, "a warp such as 1/2, 1x, 1.5x or 16x", readWarp});
  return words;
}

std::string_view nameOf(int index) {
  switch (index) {
    case kNoteToCutoff:
      return "In>Cutoff";
    case kAnchor:
      return "Anchor";
    case kGridSize:
      return "Grid";
    default:
      return effect::parameterRow(index)->name.data();
  }
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> readNumber(std::string_view text) {
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto [rest, fault] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
  if (fault != std::errc{} || !std::isfinite(number)) return std::nullopt;
  if (rest == end) return number;
  if (*rest != '/') return std::nullopt;
  const std::string_view below(rest + 1, static_cast<std::size_t>(end - rest - 1));
  const auto divisor = below.find('/') == std::string_view::npos ? readNumber(below) : std::nullopt;
  return divisor && *divisor > 0.0 ? std::optional(number / *divisor) : std::nullopt;
}

std::optional<double> readQuantity(std::string_view text, std::string_view unit) {
  if (!text.ends_with(unit)) return std::nullopt;
  return readNumber(trimmed(text.substr(0, text.size() - unit.size())));
}

std::optional<Length> readLength(std::string_view text) {
  constexpr double kLongestBeats = 64.0;
  Length length;
  if (const auto step = placeOf(text, LFOTimes)) {
    length.beats = kLongestBeats / rateDivider(middleOfRateStep(*step), true, true);
  } else if (const auto beats = readQuantity(text, "beats")) {
    length.beats = *beats;
  } else if (const auto seconds = readQuantity(text, "s")) {
    length.seconds = *seconds;
  }
  return length.beats > 0.0 || length.seconds > 0.0 ? std::optional(length) : std::nullopt;
}

const ParameterWord* findParameter(std::string_view name) {
  static const std::vector<ParameterWord> words = makeParameters();
  const auto word = std::ranges::find_if(words, [name](const ParameterWord& w) { return nameOf(w.index) == name; });
  return word == words.end() ? nullptr : &*word;
}

}  // namespace modrift::factory
