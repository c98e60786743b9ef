#include "effect/ParameterTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "effect/ExpMapper.h"
#include "effect/Fields.h"
#include "effect/Helpers.h"
#include "effect/LfoClock.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"
#include "filters/FilterSetup.h"
#include "filters/FilterTypes.h"
#include "model/WarpTable.h"

namespace {

constexpr std::size_t kTextBytes = 24;  // what hosts give at the least in practice, closing zero included
constexpr int kLastGraph = kGraphs - 1;

double asDouble(float x) noexcept { return static_cast<double>(x); }

// --- Forms of a value. Products are those of single precision, so that 0.29 is 29 percent and not 28.

void wholeNumber(double n, char* text) noexcept { Int2string(integerPart(n), text); }

// At least `width` characters.
void asInteger(int width, double n, char* text) noexcept {
  std::snprintf(text, kTextBytes, "%*i", width, integerPart(n));
}

// -100 to 100.
void roundTheMiddle(float v, char* text) noexcept {
  wholeNumber(integerPart(asDouble(v * 200.0f) + 0.5) - 100.0, text);
}
// The same, but the floor: a value just below a step reads as the step below.
void pulseWidth(float v, char* text) noexcept { wholeNumber(std::floor(asDouble(v * 200.0f)) - 100.0, text); }
void degrees(float v, char* text) noexcept { wholeNumber(asDouble(v * 360.0f) + 0.5, text); }
void percent(float v, char* text) noexcept { wholeNumber(asDouble(v * 100.0f), text); }
void nearestPercent(float v, char* text) noexcept { wholeNumber(asDouble(v * 100.0f) + 0.5, text); }
void percentFromTop(double y, char* text) noexcept { wholeNumber(100.0 - integerPart(y * 100.0 + 0.5), text); }
void resonance(float v, char* text) noexcept { asInteger(3, asDouble(v * 100.0f), text); }

void yesNo(float v, char* text) noexcept { std::strcpy(text, v != 0.0f ? "Yes " : "No  "); }
void onOff(float v, char* text) noexcept { std::strcpy(text, v != 0.0f ? "ON " : "OFF"); }
void beatOrFree(float v, char* text) noexcept { std::strcpy(text, v != 0.0f ? "Beat" : "Free"); }
void freeOrBeat(float v, char* text) noexcept { beatOrFree(v != 0.0f ? 0.0f : 1.0f, text); }
void highOrLow(float v, char* text) noexcept { std::strcpy(text, v != 0.0f ? "HF_PROC" : "LF_PROC"); }
void filterOn(float v, char* text) noexcept { std::strcpy(text, v != 0.0f ? "FILT ON" : "FILT OFF"); }
void filterOnNearest(float v, char* text) noexcept {
  filterOn(static_cast<float>(integerPart(asDouble(v) + 0.5)), text);
}

void graphNumber(float graph, char* text) noexcept { wholeNumber(asDouble(graph) + 1.0, text); }
double graphOf(float v) noexcept { return std::round(asDouble(v) * kLastGraph); }
void nearestGraph(float v, char* text) noexcept { wholeNumber(graphOf(v) + 1.0, text); }
void currentGraph(float graph, char* text) noexcept { asInteger(1, asDouble(graph) + 1.0, text); }
void nearestCurrentGraph(float v, char* text) noexcept { asInteger(1, graphOf(v) + 1.0, text); }

void warpName(double entry, char* text) noexcept {
  const int i = integerPart(entry);
  std::strcpy(text, i >= 0 && i < kWarps ? WarpNames[static_cast<std::size_t>(i)] : "??");
}
void warp(float v, char* text) noexcept { warpName(asDouble(v) * 16.9999 + 0.5, text); }
void nearestWarp(float v, char* text) noexcept { warpName(std::round(asDouble(v) * 16.9999), text); }

void offsetSamples(float samples, char* text) noexcept { asInteger(4, std::floor(asDouble(samples)), text); }
void timing(float v, char* text) noexcept { wholeNumber(asDouble(v) * 8192.0 - 4096.0 + 0.5, text); }

void crossoverHz(float v, char* text) noexcept {
  asInteger(1, asDouble(crossoverMapper().setAndGetValue(v)) + 0.5, text);
}
void mappedCutoffHz(float v, char* text) noexcept { asInteger(5, asDouble(cutoffMapper().setAndGetValue(v)), text); }

void gridCells(float v, char* text) noexcept {
  asInteger(2, std::max(integerPart(asDouble(v * 15.0f) + 0.5) + 1.0, 2.0), text);
}

// --- Texts that more than one field goes into

// With so many decimals, and the unit behind it.
void freeRate(int decimals, const char* unit, float value, char* text) noexcept {
  constexpr double kFastestHz = 1e6;
  const double hertz = asDouble(fourthPower(value)) * 440.0;
  if (hertz < kFastestHz) {
    std::snprintf(text, kTextBytes, "%.*f%s", decimals, hertz, unit);
  } else {
    std::strcpy(text, "Huge!");
  }
}

void beatRate(const PadLFO& lfo, float value, char* text) noexcept {
  const auto step = static_cast<std::size_t>(std::max(rateStep(value, lfo.bTriplet != 0, lfo.bDotted != 0), 0));
  std::strcpy(text, step < LFOTimes.size() ? LFOTimes[step] : "fast");
}

void rate(const LfoDSP& effect, int, char* text) noexcept {
  const PadLFO& lfo = effect.padLFO;
  lfo.bFreeRun ? freeRate(3, " Hz", lfo.rate, text) : beatRate(lfo, lfo.rate, text);
}
void rateOf(const LfoDSP& effect, int, float v, char* text) noexcept {
  effect.padLFO.bFreeRun ? freeRate(1, "", v, text) : beatRate(effect.padLFO, v, text);
}

// Some types have a frequency range of their own.
void cutoffHz(const LfoDSP& effect, int, char* text) noexcept {
  const float cutoff = effect.filterCutoff;
  const filters::FilterType& type = filters::typeAt(filters::typeIndexOf(effect.filterType));
  if (type.trait == filters::Trait::hertzCutoff) return mappedCutoffHz(cutoff, text);
  const float rateHz = effect.sampleRateSafe;
  const auto cycles =
      static_cast<float>(VGlobalCoeffs::cyclesPerSample(filters::pitchEntry(asDouble(cutoff)), kTuningHz, rateHz));
  asInteger(5, asDouble(cycles * rateHz) + 0.5, text);
}

void retrigger(const LfoDSP& effect, int, char* text) noexcept {
  std::strcpy(text, effect.bOneShot ? "Env" : effect.bRetrig ? "Trig" : "OFF");
}
void retriggerOf(const LfoDSP&, int, float v, char* text) noexcept {
  std::strcpy(text, v >= 0.75f ? "ENV" : v >= 0.25f ? "Trig" : "OFF");
}

void controller(const LfoDSP& effect, int, char* text) noexcept {
  const int number = effect.ccNumber;
  if (number > 0) {
    wholeNumber(number, text);
  } else {
    std::strcpy(text, " off ");
  }
}
void controllerOf(const LfoDSP& effect, int index, float, char* text) noexcept { controller(effect, index, text); }

// The points of graph 1 by their three numbers each.
int pointOf(int index) noexcept { return (index - kPoint1) / 3; }

void pointY(const LfoDSP& effect, int index, char* text) noexcept {
  percentFromTop(effect.envY[0][pointOf(index)], text);
}
void pointYOf(const LfoDSP&, int, float v, char* text) noexcept { percentFromTop(asDouble(v), text); }
void pointX(const LfoDSP& effect, int index, char* text) noexcept {
  wholeNumber(effect.envX[0][pointOf(index)] * 100.0 / kGraphWidth + 0.5, text);
}
void pointCurve(const LfoDSP& effect, int index, char* text) noexcept {
  wholeNumber(effect.envCurve[0][pointOf(index)] * 100.0 + 0.5, text);
}

// --- Texts that the filter gives, by a normalised type

template <long Entry>
void filterText(const LfoDSP& effect, int, char* text) noexcept {
  effect.writeFilterText(Entry, effect.filterType, text);
}
template <long Entry, int Types>
void filterTextOf(const LfoDSP& effect, int, float type, char* text) noexcept {
  effect.writeFilterText(Entry, type / static_cast<float>(Types), text);
}
void scratchType(const LfoDSP& effect, int, char* text) noexcept {
  effect.writeFilterText(filters::kMode, effect.filterNameScratch, text);
}
void scratchTypeOf(const LfoDSP& effect, int index, float, char* text) noexcept { scratchType(effect, index, text); }

// --- The table

using Format = void (*)(float v, char* text) noexcept;

template <Format Form>
void formatted(const LfoDSP&, int, float value, char* text) noexcept {
  Form(value, text);
}

template <auto Field, Format Form>
void formattedField(const LfoDSP& effect, int, char* text) noexcept {
  Form(static_cast<float>(field<Field>(effect)), text);
}

template <Format Form>
void formattedWarp(const LfoDSP& effect, int index, char* text) noexcept {
  const int g = index == kCurrentWarp ? int{effect.currentGraph} : index - kWarp1;
  Form(effect.padLFO.graphWarp[static_cast<std::size_t>(g)], text);
}

// A field and a value passed in, by the same form or by one each.
template <auto Field, Format Form, Format FormOfValue = Form>
consteval ParameterTexts row() {
  return {formattedField<Field, Form>, formatted<FormOfValue>};
}

using Table = std::array<ParameterTexts, kParameterRows>;

consteval void addNotes(Table& rows) {
  rows[kRetrigger] = {retrigger, retriggerOf};
  rows[kGateMode] = row<&LfoDSP::bGateMode, onOff>();
  rows[kVelToPwm] = row<&LfoDSP::bVelToPwm, onOff>();
  rows[kNoteToRate] = row<&LfoDSP::bNoteToRate, onOff>();
  rows[kNoteToCutoff] = row<&LfoDSP::bNoteToCutoff, onOff>();
}

consteval void addClock(Table& rows) {
  rows[kRate] = {rate, rateOf};
  rows[kSwing] = row<&PadLFO::swing, roundTheMiddle>();
  rows[kPhase] = row<&PadLFO::phase, degrees>();
  rows[kPwm] = row<&PadLFO::pwm, pulseWidth>();
  rows[kDepthCut] = row<&PadLFO::depthCut, roundTheMiddle>();
  rows[kDepthRes] = row<&PadLFO::depthRes, roundTheMiddle>();
  rows[kDepthVol] = row<&PadLFO::depthVol, roundTheMiddle>();
  rows[kDepthPan] = row<&PadLFO::depthPan, roundTheMiddle>();
  rows[kDepthVar] = row<&PadLFO::depthVar, roundTheMiddle>();
  rows[kBpmSync] = row<&PadLFO::bFreeRun, freeOrBeat, beatOrFree>();
  rows[kDotted] = row<&PadLFO::bDotted, yesNo>();
  rows[kTriplet] = row<&PadLFO::bTriplet, yesNo>();
  rows[kSmooth] = row<&LfoDSP::lfoSmooth, percent>();
  rows[kDepthKnob] = row<&PadLFO::depthKnob, nearestPercent>();
  rows[kTiming] = row<&LfoDSP::timingOffset, offsetSamples, timing>();
}

// The number of a type stands for the type where a value is passed in; for "Var", 96 of them fill the range.
consteval void addFilter(Table& rows) {
  rows[kFilterCutoff] = {cutoffHz, formatted<mappedCutoffHz>};
  rows[kFilterReso] = row<&LfoDSP::filterReso, resonance>();
  rows[kFilterOn] = row<&LfoDSP::filterOnFlag, filterOn, filterOnNearest>();
  rows[kFilterDrive] = row<&LfoDSP::filterDrive, percent>();
  rows[kFilterVar] = row<&LfoDSP::filterVar, percent>();
  rows[kFilterMix] = row<&LfoDSP::filterMix, percent>();
  rows[kFilterType] =
      rows[kFilterNameScratch] = {filterText<filters::kMode>, filterTextOf<filters::kMode, filters::kFilterTypes - 1>};
  rows[kVarName] = {filterText<filters::kVar>, filterTextOf<filters::kVar, 96>};
  rows[kTypeOfScratch] = {scratchType, scratchTypeOf};
  rows[kXoverOn] = row<&LfoDSP::bXoverOn, onOff>();
  rows[kXoverInvert] = row<&LfoDSP::bXoverInvert, highOrLow, onOff>();
  rows[kXoverFrequency] = row<&LfoDSP::xoverFrequency, crossoverHz>();
}

consteval void addGraphs(Table& rows) {
  rows[kRouteCut] = row<&LfoDSP::routeCut, graphNumber, nearestGraph>();
  rows[kRouteRes] = row<&LfoDSP::routeRes, graphNumber, nearestGraph>();
  rows[kRouteVol] = row<&LfoDSP::routeVol, graphNumber, nearestGraph>();
  rows[kRoutePan] = row<&LfoDSP::routePan, graphNumber, nearestGraph>();
  rows[kRouteVar] = row<&LfoDSP::routeVar, graphNumber, nearestGraph>();
  rows[kCurrentGraph] = row<&LfoDSP::currentGraph, currentGraph, nearestCurrentGraph>();
  rows[kGridSize] = row<&LfoDSP::gridSize, gridCells>();
  rows[kCcNumber] = {controller, controllerOf};
  for (std::size_t g = 0; g < kGraphs; ++g) rows[kWarp1 + g] = {formattedWarp<warp>, formatted<nearestWarp>};
  rows[kCurrentWarp] = {formattedWarp<warp>, nullptr};
  for (std::size_t i = kPoint1; i < kPoint1 + kAutomatedPoints; i += 3) {
    rows[i] = {pointY, pointYOf};
    rows[i + 1] = {pointX, formatted<nearestPercent>};
    rows[i + 2] = {pointCurve, formatted<nearestPercent>};
  }
}

consteval Table makeTable() {
  Table rows{};
  addClock(rows);
  addNotes(rows);
  addFilter(rows);
  addGraphs(rows);
  return rows;
}

constexpr Table kTexts = makeTable();

}  // namespace

const ParameterTexts* parameterTexts(int index) noexcept {
  return index >= 0 && index < kParameterRows ? &kTexts[static_cast<std::size_t>(index)] : nullptr;
}
