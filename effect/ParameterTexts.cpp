// SPDX-License-Identifier: MIT
#include "effect/ParameterTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "effect/ExpMapper.h"
#include "effect/Helpers.h"
#include "effect/LfoClock.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterReading.h"
#include "filters/FilterSetup.h"
#include "filters/FilterTypes.h"
#include "model/ParameterIndex.h"
#include "model/WarpTable.h"

namespace effect {

using namespace model;
namespace {

static_assert(kLastFilterType == filters::kFilterTypes - 1);  // stored states count over the same types

constexpr std::size_t kTextBytes = 24;  // what hosts give at the least in practice, closing zero included

double asDouble(float x) noexcept { return static_cast<double>(x); }

// --- Forms of a value. Products are those of single precision, so that 0.29 is 29 percent and not 28.

void wholeNumber(double n, char* text) noexcept { Int2string(integerPart(n), text); }

// At least `width` characters.
void asInteger(int width, double n, char* text) noexcept {
  std::snprintf(text, kTextBytes, "%*i", width, integerPart(n));
}

// For texts that are cut and not rounded: the value whose product reaches the step that it was read from.
std::optional<float> reaching(float steps, std::optional<float> v) noexcept {
  if (!v || asDouble(*v * steps) >= std::round(asDouble(*v) * asDouble(steps))) return v;
  return std::nextafter(*v, 1.0f);
}

void roundTheMiddle(float v, char* text) noexcept {
  wholeNumber(integerPart(asDouble(v * 200.0f) + 0.5) - 100.0, text);
}
// The same, but the floor: a value just below a step reads as the step below.
void pulseWidth(float v, char* text) noexcept { wholeNumber(std::floor(asDouble(v * 200.0f)) - 100.0, text); }
std::optional<float> readRoundTheMiddle(std::string_view text) noexcept {
  return placeBetween(readNumber(text, "%"), -100.0, 100.0);
}

std::optional<float> readPulseWidth(std::string_view text) noexcept {
  return reaching(200.0f, readRoundTheMiddle(text));
}

void degrees(float v, char* text) noexcept { wholeNumber(asDouble(v * 360.0f) + 0.5, text); }
std::optional<float> readDegrees(std::string_view text) noexcept { return placeBetween(readNumber(text), 0.0, 360.0); }

void percent(float v, char* text) noexcept { wholeNumber(asDouble(v * 100.0f), text); }
void nearestPercent(float v, char* text) noexcept { wholeNumber(asDouble(v * 100.0f) + 0.5, text); }
void percentFromTop(double y, char* text) noexcept { wholeNumber(100.0 - integerPart(y * 100.0 + 0.5), text); }
void resonance(float v, char* text) noexcept { asInteger(3, asDouble(v * 100.0f), text); }
std::optional<float> readPercent(std::string_view text) noexcept {
  return placeBetween(readNumber(text, "%"), 0.0, 100.0);
}

std::optional<float> readCutPercent(std::string_view text) noexcept { return reaching(100.0f, readPercent(text)); }

struct SwitchWords {
  const char* off;
  const char* on;
};
constexpr SwitchWords kOnOffWords{"OFF", "ON "}, kYesNoWords{"No  ", "Yes "}, kFilterOnOffWords{"FILT OFF", "FILT ON"},
    kFreeOrBeatWords{"Free", "Beat"}, kHighOrLowWords{"LF_PROC", "HF_PROC"};

template <const SwitchWords& Words>
void word(float v, char* text) noexcept {
  std::strcpy(text, v != 0.0f ? Words.on : Words.off);
}
template <const SwitchWords& Words>
void wordOfOpposite(float v, char* text) noexcept {
  std::strcpy(text, v != 0.0f ? Words.off : Words.on);
}
template <const SwitchWords& Words>
void wordOfNearest(float v, char* text) noexcept {
  word<Words>(static_cast<float>(integerPart(asDouble(v) + 0.5)), text);
}
template <const SwitchWords& Words>
std::optional<float> readWord(std::string_view text) noexcept {
  if (sameText(text, Words.on)) return 1.0f;
  return sameText(text, Words.off) ? std::optional(0.0f) : std::nullopt;
}

double graphOf(float v) noexcept { return std::round(asDouble(v) * kLastGraph); }
void graphNumber(float graph, char* text) noexcept { wholeNumber(asDouble(graph) + 1.0, text); }
void graphNumberOf(float v, char* text) noexcept { wholeNumber(graphOf(v) + 1.0, text); }
void currentGraph(float graph, char* text) noexcept { asInteger(1, asDouble(graph) + 1.0, text); }
void currentGraphOf(float v, char* text) noexcept { asInteger(1, graphOf(v) + 1.0, text); }
std::optional<float> readGraphNumber(std::string_view text) noexcept { return readCount(text, 1, kGraphs); }

void warpName(double entry, char* text) noexcept {
  const int i = integerPart(entry);
  std::strcpy(text, i >= 0 && i < kWarps ? WarpNames[static_cast<std::size_t>(i)] : "??");
}
void warp(float v, char* text) noexcept { warpName(asDouble(v) * kWarpScale + 0.5, text); }
void nearestWarp(float v, char* text) noexcept { warpName(std::round(asDouble(v) * kWarpScale), text); }
std::optional<float> readWarp(std::string_view text) noexcept {
  const auto entry = placeOf(text, WarpNames);
  return entry ? std::optional(valueOfWarp(*entry)) : std::nullopt;
}

void offsetSamples(float samples, char* text) noexcept { asInteger(4, std::floor(asDouble(samples)), text); }
void timing(float v, char* text) noexcept { wholeNumber(samplesOfTiming(v) + 0.5, text); }
std::optional<float> readOffsetSamples(std::string_view text) noexcept {
  return placeBetween(readNumber(text), -kMostTimingSamples, kMostTimingSamples);
}

void crossoverHz(float v, char* text) noexcept {
  asInteger(1, asDouble(crossoverMapper().setAndGetValue(v)) + 0.5, text);
}
std::optional<float> readCrossoverHz(std::string_view text) noexcept {
  return ratioBetween(readNumber(text, "Hz"), asDouble(kLowestXoverHz), asDouble(kHighestXoverHz));
}

void gridCells(float v, char* text) noexcept {
  const int step = integerPart(asDouble(v * static_cast<float>(kGridSteps)) + 0.5);
  asInteger(2, std::max(step + 1.0, static_cast<double>(kFewestGridCells)), text);
}
// One cell is shown as two.
std::optional<float> readGridCells(std::string_view text) noexcept {
  const auto cells = readCount(text, 1, kGridSteps + 1);
  return cells && *cells > 0.0f ? cells : std::nullopt;
}

}  // namespace

constinit const Form kRoundTheMiddle{roundTheMiddle, roundTheMiddle, readRoundTheMiddle};
constinit const Form kPulseWidth{pulseWidth, pulseWidth, readPulseWidth};
constinit const Form kDegrees{degrees, degrees, readDegrees};
constinit const Form kPercent{percent, percent, readCutPercent};
constinit const Form kNearestPercent{nearestPercent, nearestPercent, readPercent};
constinit const Form kResonance{resonance, resonance, readCutPercent};
constinit const Form kOnOff{word<kOnOffWords>, word<kOnOffWords>, readWord<kOnOffWords>};
constinit const Form kYesNo{word<kYesNoWords>, word<kYesNoWords>, readWord<kYesNoWords>};
constinit const Form kFilterOnOff{word<kFilterOnOffWords>, wordOfNearest<kFilterOnOffWords>,
                                  readWord<kFilterOnOffWords>};
constinit const Form kFreeOrBeat{wordOfOpposite<kFreeOrBeatWords>, word<kFreeOrBeatWords>, readWord<kFreeOrBeatWords>};
constinit const Form kHighOrLow{word<kHighOrLowWords>, word<kOnOffWords>, readWord<kHighOrLowWords>};
constinit const Form kGraphNumber{graphNumber, graphNumberOf, readGraphNumber};
constinit const Form kCurrentGraphNumber{currentGraph, currentGraphOf, readGraphNumber};
constinit const Form kWarpName{warp, nearestWarp, readWarp};
constinit const Form kOffsetSamples{offsetSamples, timing, readOffsetSamples};
constinit const Form kCrossoverHz{crossoverHz, crossoverHz, readCrossoverHz};
constinit const Form kGridCells{gridCells, gridCells, readGridCells};

// --- The rate

namespace {

constexpr char kBeyondTheNames[] = "fast";

// With so many decimals, and the unit behind it.
void freeRate(int decimals, const char* unit, float value, char* text) noexcept {
  constexpr double kFastestHz = 1e6;
  const double hertz = asDouble(fourthPower(value)) * kFastestFreeHz;
  if (hertz < kFastestHz) {
    std::snprintf(text, kTextBytes, "%.*f%s", decimals, hertz, unit);
  } else {
    std::strcpy(text, "Huge!");
  }
}

int stepOf(const PadLFO& lfo, float value) noexcept { return rateStep(value, lfo.bTriplet != 0, lfo.bDotted != 0); }

void beatRate(const PadLFO& lfo, float value, char* text) noexcept {
  const auto step = static_cast<std::size_t>(std::max(stepOf(lfo, value), 0));
  std::strcpy(text, step < LFOTimes.size() ? LFOTimes[step] : kBeyondTheNames);
}

// A step that is switched off has no value.
std::optional<float> readBeatRate(const PadLFO& lfo, std::string_view text) noexcept {
  if (sameText(text, kBeyondTheNames)) return 1.0f;
  const auto step = placeOf(text, LFOTimes);
  if (!step) return std::nullopt;
  const float value = middleOfRateStep(*step);
  return stepOf(lfo, value) == static_cast<int>(*step) ? std::optional(value) : std::nullopt;
}

}  // namespace

void rateText(const LfoDSP& effect, int, char* text) {
  const PadLFO& lfo = effect.padLFO;
  lfo.bFreeRun ? freeRate(3, " Hz", lfo.rate, text) : beatRate(lfo, lfo.rate, text);
}

void rateTextOf(const LfoDSP& effect, int, float value, char* text) {
  effect.padLFO.bFreeRun ? freeRate(1, "", value, text) : beatRate(effect.padLFO, value, text);
}

std::optional<float> readRate(const LfoDSP& effect, int, std::string_view text) {
  if (!effect.padLFO.bFreeRun) return readBeatRate(effect.padLFO, text);
  const auto share = placeBetween(readNumber(text, "Hz"), 0.0, kFastestFreeHz);
  return share ? std::optional(static_cast<float>(std::pow(asDouble(*share), 0.25))) : std::nullopt;
}

// --- The cutoff: some types have a frequency range of their own

namespace {

bool hasHertzCutoff(const LfoDSP& effect) noexcept {
  return filters::typeAt(filters::typeIndexOf(effect.filterType)).trait == filters::Trait::hertzCutoff;
}

void mappedCutoffHz(float v, char* text) noexcept { asInteger(5, asDouble(cutoffMapper().setAndGetValue(v)), text); }

}  // namespace

void cutoffText(const LfoDSP& effect, int, char* text) {
  const float cutoff = effect.filterCutoff;
  if (hasHertzCutoff(effect)) return mappedCutoffHz(cutoff, text);
  const float rateHz = effect.sampleRateSafe;
  const auto cycles = static_cast<float>(
      VGlobalCoeffs::cyclesPerSample(filters::pitchEntry(asDouble(cutoff)), filters::kTuningHz, rateHz));
  asInteger(5, asDouble(cycles * rateHz) + 0.5, text);
}

void cutoffTextOf(const LfoDSP&, int, float value, char* text) { mappedCutoffHz(value, text); }

namespace {

// The ends of a range are no whole numbers, so what they read as may lie a little outside.
std::optional<float> readHertz(double shown, double meant, double low, double high) noexcept {
  if (shown < std::floor(low) || shown > std::ceil(high)) return std::nullopt;
  return ratioBetween(std::clamp(meant, low, high), low, high);
}

}  // namespace

// The mapper's texts are cut to whole numbers, so the middle between two is meant; the pitches' are rounded.
std::optional<float> readCutoff(const LfoDSP& effect, int, std::string_view text) {
  const auto hertz = readNumber(text, "Hz");
  if (!hertz) return std::nullopt;
  if (hasHertzCutoff(effect)) {
    auto mapper = cutoffMapper();
    const double low = asDouble(mapper.setAndGetValue(0.0f));
    return readHertz(*hertz, *hertz + 0.5, low, asDouble(mapper.setAndGetValue(1.0f)));
  }
  constexpr double kTuningNote = 69.0;
  const double low = asDouble(filters::kTuningHz) * std::exp2(-kTuningNote / 12.0);
  return readHertz(*hertz, *hertz, low, low * std::exp2(kSevenBitValues / 12.0));
}

// --- Retrigger and controller

void retriggerText(const LfoDSP& effect, int, char* text) {
  std::strcpy(text, effect.bOneShot ? "Env" : effect.bRetrig ? "Trig" : "OFF");
}

void retriggerTextOf(const LfoDSP&, int, float value, char* text) {
  std::strcpy(text, value >= 0.75f ? "ENV" : value >= 0.25f ? "Trig" : "OFF");
}

std::optional<float> readRetrigger(const LfoDSP&, int, std::string_view text) {
  constexpr const char* kPositions[] = {"OFF", "Trig", "Env"};
  const auto position = placeOf(text, kPositions);
  return position ? std::optional(static_cast<float>(*position) * 0.5f) : std::nullopt;
}

void controllerText(const LfoDSP& effect, int, char* text) {
  const int number = effect.ccNumber;
  if (number > 0) {
    wholeNumber(number, text);
  } else {
    std::strcpy(text, " off ");
  }
}

void controllerTextOf(const LfoDSP& effect, int index, float, char* text) { controllerText(effect, index, text); }

std::optional<float> readController(const LfoDSP&, int, std::string_view text) {
  if (sameText(text, "off")) return 0.0f;
  const auto number = readCount(text, 0, static_cast<int>(kSevenBitValues));
  return number && *number < 1.0f ? number : std::nullopt;
}

// --- Warps and the points of graph 1, which have three numbers each

void warpText(const LfoDSP& effect, int index, char* text) {
  warp(effect.padLFO.graphWarp[static_cast<std::size_t>(index - kWarp1)], text);
}

void currentWarpText(const LfoDSP& effect, int, char* text) { warpText(effect, kWarp1 + effect.currentGraph, text); }

namespace {

int pointOf(int index) noexcept { return (index - kPoint1) / kNumbersOfPoint; }

}  // namespace

void pointYText(const LfoDSP& effect, int index, char* text) { percentFromTop(effect.envY[0][pointOf(index)], text); }

void pointYTextOf(const LfoDSP&, int, float value, char* text) { percentFromTop(asDouble(value), text); }

void pointXText(const LfoDSP& effect, int index, char* text) {
  wholeNumber(effect.envX[0][pointOf(index)] * 100.0 / kGraphWidth + 0.5, text);
}

void pointCurveText(const LfoDSP& effect, int index, char* text) {
  wholeNumber(effect.envCurve[0][pointOf(index)] * 100.0 + 0.5, text);
}

// --- Texts that the filter gives, by a normalised type

void filterTypeText(const LfoDSP& effect, int, char* text) {
  effect.writeFilterText(filters::kMode, effect.filterType, text);
}

void filterTypeTextOf(const LfoDSP& effect, int, float type, char* text) {
  effect.writeFilterText(filters::kMode, type / static_cast<float>(filters::kFilterTypes - 1), text);
}

std::optional<float> readFilterType(const LfoDSP&, int, std::string_view text) {
  const auto types = filters::types();
  const auto found =
      std::ranges::find_if(types, [text](const filters::FilterType& type) { return sameText(type.name, text); });
  if (found == types.end()) return std::nullopt;
  return filters::normalisedType(static_cast<int>(found - types.begin()));
}

void varNameText(const LfoDSP& effect, int, char* text) {
  effect.writeFilterText(filters::kVar, effect.filterType, text);
}

// Of a value that counts over 96, not over the types; hosts have always been told so.
void varNameTextOf(const LfoDSP& effect, int, float type, char* text) {
  effect.writeFilterText(filters::kVar, type / 96.0f, text);
}

void scratchTypeText(const LfoDSP& effect, int, char* text) {
  effect.writeFilterText(filters::kMode, effect.filterNameScratch, text);
}

void scratchTypeTextOf(const LfoDSP& effect, int index, float, char* text) { scratchTypeText(effect, index, text); }

}  // namespace effect
