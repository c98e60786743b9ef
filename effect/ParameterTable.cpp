#include "effect/ParameterTable.h"

#include <algorithm>
#include <string_view>
#include <type_traits>

#include "effect/Fields.h"
#include "effect/Helpers.h"
#include "effect/LfoDSP.h"

using namespace model;

namespace {

void tellClock(LfoDSP& effect) { effect.setParameter(kNoticeClock, kNoticeClockValue); }

template <auto Field>
void setValue(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value;
}

template <auto Field>
float getValue(LfoDSP& effect, int) {
  return field<Field>(effect);
}

template <auto Field>
void setClockValue(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value;
  tellClock(effect);
}

template <auto Field>
void setSwitch(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value != 0.0f;
}

template <auto Field>
float getSwitch(LfoDSP& effect, int) {
  return field<Field>(effect) ? 1.0f : 0.0f;
}

// --- Clock

void setRate(LfoDSP& effect, int, float value) {
  effect.padLFO.rate = value;
  effect.setFreeLFOTime();
  tellClock(effect);
}

// A switch of the clock changes what the rate means, so the rate is set again.
template <auto Field>
void setClockSwitch(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value != 0.0f;
  effect.setParameter(kRate, effect.getParameter(kRate));
  tellClock(effect);
}

void setBpmSync(LfoDSP& effect, int index, float value) {
  setClockSwitch<&PadLFO::bFreeRun>(effect, index, 1.0f - value);
}

float getBpmSync(LfoDSP& effect, int) { return effect.padLFO.bFreeRun ? 0.0f : 1.0f; }

void setTiming(LfoDSP& effect, int, float value) {
  effect.timing = value;
  effect.timingOffset = static_cast<float>(static_cast<double>(value) * 8192.0 - 4096.0);
  effect.CalculateTrigOffset();
}

void setAnchor(LfoDSP& effect, int, float value) {
  effect.bAnchor = value != 0.0f;
  if (value == 0.0f) effect.setFreeLFOTime();
}

// --- Notes

// Off, retrigger, one-shot. A fresh one-shot rests at the end of the cycle until a note arrives.
void setRetrigger(LfoDSP& effect, int, float value) {
  const bool bWasOneShot = effect.bOneShot;
  effect.bRetrig = value >= 0.25f;
  effect.bOneShot = value >= 0.75f;
  effect.bOneShotDone = false;
  if (bWasOneShot || !effect.bOneShot) return;
  for (const std::int8_t route : effect.routes()) {
    const auto g = static_cast<std::size_t>(route);
    effect.padLFO.graphOut[g] = static_cast<float>(effect.graphTable[g][kGraphTableSize - 1]);
  }
}

float getRetrigger(LfoDSP& effect, int) {
  if (effect.bOneShot) return 1.0f;
  return effect.bRetrig ? 0.5f : 0.0f;
}

// The switch itself closes the gate; a note opens it.
void setGateMode(LfoDSP& effect, int, float value) {
  effect.bGateMode = value != 0.0f;
  effect.padLFO.bLfoOpen = value == 0.0f;
}

// 1.0 becomes 128, which the signed field keeps as a negative number: off.
void setCcNumber(LfoDSP& effect, int, float value) {
  effect.ccNumber = static_cast<std::int8_t>(integerPart(static_cast<double>(value) * 128.0 + 0.5) & 0xff);
}

float getCcNumber(LfoDSP& effect, int) { return static_cast<float>(effect.ccNumber) * 0.0078125f; }

void exportMidi(LfoDSP& effect, int, float value) {
  effect.saveMIDIFile(integerPart(static_cast<double>(value) + 0.5));
}

// --- Filter

void setFilterOn(LfoDSP& effect, int, float value) {
  effect.filterOn = value;
  effect.filterOnFlag = static_cast<std::int8_t>(std::clamp(integerPart(static_cast<double>(value) + 0.5), -1, 1));
}

// --- Graphs and routes

template <auto Field>
void setRoute(LfoDSP& effect, int, float value) {
  field<Field>(effect) = static_cast<std::int8_t>(nearestGraph(value));
}

template <auto Field>
float getGraphNumber(LfoDSP& effect, int) {
  return valueOfGraph(field<Field>(effect));
}

template <auto Field>
void stepRoute(LfoDSP& effect, int index, float value) {
  const int stepped = std::clamp(
      field<Field>(effect) + std::clamp(integerPart(static_cast<double>(value)), -kGraphs, kGraphs), 0, kLastGraph);
  effect.setParameter(kRouteCut + (index - kStepRouteCut), valueOfGraph(stepped));
}

// The graph on show takes its warp by the editor's own number, so that the editor follows.
void setWarpOf(LfoDSP& effect, int index, float value) {
  const int g = index - kWarp1;
  if (g == effect.currentGraph) {
    effect.setParameter(kCurrentWarp, value);
  } else {
    effect.setWarp(g, value);
  }
}

float getWarpOf(LfoDSP& effect, int index) { return effect.padLFO.graphWarp[static_cast<std::size_t>(index - kWarp1)]; }

void setCurrentWarp(LfoDSP& effect, int, float value) {
  effect.setWarp(effect.currentGraph, std::clamp(value, 0.0f, 1.0f));
}

float getCurrentWarp(LfoDSP& effect, int) {
  return effect.padLFO.graphWarp[static_cast<std::size_t>(effect.currentGraph)];
}

void setCurrentGraph(LfoDSP& effect, int, float value) {
  const std::int8_t before = effect.currentGraph;
  effect.currentGraph = static_cast<std::int8_t>(nearestGraph(value));
  if (effect.currentGraph == before) return;
  effect.setParameter(kNoticeGraph, 0.0f);
  effect.RenderEnvsInCaseGUIClosed(false);
}

void copyGraph(LfoDSP& effect, int, float) { effect.copyEnv(effect.currentGraph); }

void pasteGraph(LfoDSP& effect, int, float value) {
  if (value > kPasteIntoAll) {
    for (int g = 0; g < kGraphs; ++g) effect.pasteEnv(g);
  } else {
    effect.pasteEnv(effect.currentGraph);
  }
}

// --- Files

constexpr float kCommandThreshold = 0.5f;

// The block after it plays the new graph whole.
void loadShape(LfoDSP& effect, int, float value) {
  if (value < kCommandThreshold) return;
  const AudioGate::Hold hold(effect.gate);
  effect.LoadShape();
  effect.setParameter(kNoticeGraph, 0.0f);
  effect.RenderEnvsInCaseGUIClosed(false);
}

void loadPreset(LfoDSP& effect, int, float value) {
  if (value >= kCommandThreshold) effect.LoadPreset();
}

// --- Points of graph 1

enum class PointValue { y, x, curve };

struct PointParameter {
  explicit PointParameter(int index)
      : point((index - kPoint1) / 3),
        value(static_cast<PointValue>((index - kPoint1) % 3)),
        pending(static_cast<std::size_t>(index - kPoint1)) {}
  int point;
  PointValue value;
  std::size_t pending;
};

// The first and the last point of a graph stay at one height.
void setPointY(LfoDSP& effect, int point, float value) {
  const int last = std::clamp<int>(effect.envNumPoints[0], 0, kGraphSlots - 1);
  const double y = 1.0 - static_cast<double>(value);
  effect.envY[0][point] = y;
  if (point == 0) effect.envY[0][last] = y;
  if (point == last) effect.envY[0][0] = y;
}

// Between its neighbours; the ends of the graph do not move.
bool setPointX(LfoDSP& effect, int point, float value) {
  if (point == 0 || point >= effect.envNumPoints[0]) return false;
  const double right = effect.envX[0][point + 1];
  const double left = effect.envX[0][point - 1];
  effect.envX[0][point] = std::max(std::min(static_cast<double>(value) * kGraphWidth, right), left);
  return true;
}

bool setPointCurve(LfoDSP& effect, int point, float value) {
  if (point >= effect.envNumPoints[0]) return false;
  effect.envCurve[0][point] = std::clamp(static_cast<double>(value), 0.0, 1.0);
  return true;
}

bool changePoint(LfoDSP& effect, const PointParameter& p, float value) {
  switch (p.value) {
    case PointValue::x:
      return setPointX(effect, p.point, value);
    case PointValue::curve:
      return setPointCurve(effect, p.point, value);
    case PointValue::y:
      break;
  }
  setPointY(effect, p.point, value);
  return true;
}

void setPoint(LfoDSP& effect, int index, float value) {
  const PointParameter p(index);
  if (!effect.bWarmedUp) {
    effect.pendingPoints[p.pending] = value;
    return;
  }
  if (!changePoint(effect, p, value)) return;
  effect.bGraphsDirty.publish(true);
  if (AEffEditor* const editor = effect.getEditor()) editor->setParameter(kNoticePoint, 1.0f);
}

float getPoint(LfoDSP& effect, int index) {
  const PointParameter p(index);
  if (!effect.bWarmedUp) return effect.pendingPoints[p.pending];
  switch (p.value) {
    case PointValue::x:
      return static_cast<float>(effect.envX[0][p.point] / kGraphWidth);
    case PointValue::curve:
      return static_cast<float>(effect.envCurve[0][p.point]);
    case PointValue::y:
      break;
  }
  return static_cast<float>(1.0 - effect.envY[0][p.point]);
}

// --- The table

using Table = std::array<ParameterRow, kParameterRows>;

consteval std::array<char, 12> nameOf(std::string_view text) {
  std::array<char, 12> name{};
  std::copy(text.begin(), text.end(), name.begin());  // too long a name does not compile
  return name;
}

template <auto Field>
consteval ParameterRow plain(std::string_view name = "") {
  return {nameOf(name), setValue<Field>, getValue<Field>};
}

template <auto Field>
consteval ParameterRow clockValue(std::string_view name) {
  return {nameOf(name), setClockValue<Field>, getValue<Field>};
}

template <auto Field>
consteval ParameterRow clockSwitch(std::string_view name) {
  return {nameOf(name), setClockSwitch<Field>, getSwitch<Field>};
}

template <auto Field>
consteval ParameterRow onOff(std::string_view name = "") {
  return {nameOf(name), setSwitch<Field>, getSwitch<Field>};
}

template <auto Field>
consteval ParameterRow route(std::string_view name) {
  return {nameOf(name), setRoute<Field>, getGraphNumber<Field>};
}

template <auto Field>
consteval ParameterRow routeStep() {
  return {{}, stepRoute<Field>, nullptr};
}

consteval void addWarps(Table& rows) {
  for (std::size_t g = 0; g < kGraphs; ++g) {
    ParameterRow& row = rows[kWarp1 + g];
    row = {nameOf("Warp 00"), setWarpOf, getWarpOf};
    row.name[5] = static_cast<char>('0' + (g + 1) / 10);
    row.name[6] = static_cast<char>('0' + (g + 1) % 10);
  }
}

consteval void addPoints(Table& rows) {
  for (std::size_t p = 0; p < kAutomatedPoints / 3; ++p) {
    const std::array<std::string_view, 3> names = {"Point Y0", "Point X0", "Curve  1"};
    for (std::size_t k = 0; k < names.size(); ++k) {
      ParameterRow& row = rows[kPoint1 + 3 * p + k];
      row = {nameOf(names[k]), setPoint, getPoint};
      row.name[7] = static_cast<char>(row.name[7] + static_cast<char>(p));
    }
  }
}

consteval Table makeTable() {
  Table rows{};
  rows[kRate] = {nameOf("Rate"), setRate, getValue<&PadLFO::rate>};
  rows[kSwing] = clockValue<&PadLFO::swing>("Swing");
  rows[kPhase] = clockValue<&PadLFO::phase>("Phase");
  rows[kPwm] = clockValue<&PadLFO::pwm>("PWM");
  rows[kDepthCut] = clockValue<&PadLFO::depthCut>(">cut");
  rows[kDepthRes] = clockValue<&PadLFO::depthRes>(">res");
  rows[kDepthVol] = clockValue<&PadLFO::depthVol>(">vol");
  rows[kDepthPan] = clockValue<&PadLFO::depthPan>(">pan");
  rows[kDepthVar] = clockValue<&PadLFO::depthVar>(">var");
  rows[kBpmSync] = {nameOf("BPMSync"), setBpmSync, getBpmSync};
  rows[kDotted] = clockSwitch<&PadLFO::bDotted>("Dotted");
  rows[kTriplet] = clockSwitch<&PadLFO::bTriplet>("Triplet");
  rows[kFilterCutoff] = plain<&LfoDSP::filterCutoff>("F.Cutoff");
  rows[kFilterReso] = plain<&LfoDSP::filterReso>("F.Reso");
  rows[kFilterOn] = {nameOf("F.On Off"), setFilterOn, getValue<&LfoDSP::filterOn>};
  rows[kFilterDrive] = plain<&LfoDSP::filterDrive>("F.Drive");
  rows[kSmooth] = plain<&LfoDSP::lfoSmooth>("Smooth");
  rows[kRetrigger] = {nameOf("In>Rerig"), setRetrigger, getRetrigger};
  rows[kGateMode] = {nameOf("In>Gate"), setGateMode, getSwitch<&LfoDSP::bGateMode>};
  rows[kVelToPwm] = onOff<&LfoDSP::bVelToPwm>("InVel>PW");
  rows[kNoteToRate] = onOff<&LfoDSP::bNoteToRate>("In>Rate");
  rows[kRouteCut] = route<&LfoDSP::routeCut>("LFOn>Fil");
  rows[kRouteRes] = route<&LfoDSP::routeRes>("LFOn>Res");
  rows[kRouteVol] = route<&LfoDSP::routeVol>("LFOn>Vol");
  rows[kRoutePan] = route<&LfoDSP::routePan>("LFOn>Pan");
  rows[kRouteVar] = route<&LfoDSP::routeVar>("LFOn>Var");
  addWarps(rows);
  rows[kDepthKnob] = plain<&PadLFO::depthKnob>("LFO Depth");
  rows[kFilterVar] = plain<&LfoDSP::filterVar>("VF Var");
  rows[kFilterMix] = plain<&LfoDSP::filterMix>("VF Mix");
  rows[kTiming] = {nameOf("Timing"), setTiming, getValue<&LfoDSP::timing>};
  addPoints(rows);
  rows[kFilterType] = plain<&LfoDSP::filterType>("FilType");
  rows[kXoverOn] = onOff<&LfoDSP::bXoverOn>("Xov On");
  rows[kXoverInvert] = onOff<&LfoDSP::bXoverInvert>("Xov Inv");
  rows[kXoverFrequency] = plain<&LfoDSP::xoverFrequency>("Xov Freq");
  rows[kFilterNameScratch] = {{}, setValue<&LfoDSP::filterNameScratch>, nullptr};
  rows[kNoteToCutoff] = onOff<&LfoDSP::bNoteToCutoff>("In>Cutoff");
  rows[kAnchor] = {{}, setAnchor, getSwitch<&LfoDSP::bAnchor>};
  rows[kCopyGraph] = {{}, copyGraph, nullptr};
  rows[kPasteGraph] = {{}, pasteGraph, nullptr};
  rows[kLoadShape] = {{}, loadShape, nullptr};
  rows[kCurrentGraph] = {nameOf("Which Env"), setCurrentGraph, getGraphNumber<&LfoDSP::currentGraph>};
  rows[kGridSize] = plain<&LfoDSP::gridSize>();
  rows[kCcNumber] = {nameOf("CC Out"), setCcNumber, getCcNumber};
  rows[kLoadPreset] = {{}, loadPreset, nullptr};
  rows[kCurrentWarp] = {{}, setCurrentWarp, getCurrentWarp};
  rows[kStepRouteCut] = routeStep<&LfoDSP::routeCut>();
  rows[kStepRouteCut + 1] = routeStep<&LfoDSP::routeRes>();
  rows[kStepRouteCut + 2] = routeStep<&LfoDSP::routeVol>();
  rows[kStepRouteCut + 3] = routeStep<&LfoDSP::routePan>();
  rows[kStepRouteCut + 4] = routeStep<&LfoDSP::routeVar>();
  rows[kCcLock] = onOff<&LfoDSP::bCCLock>();
  rows[kExportMidi] = {{}, exportMidi, nullptr};
  return rows;
}

constexpr Table kParameters = makeTable();

}  // namespace

const ParameterRow* parameterRow(int index) noexcept {
  return index >= 0 && index < kParameterRows ? &kParameters[static_cast<std::size_t>(index)] : nullptr;
}
