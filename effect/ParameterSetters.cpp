// SPDX-License-Identifier: MIT
#include "effect/ParameterSetters.h"

#include <algorithm>

#include "effect/Helpers.h"
#include "effect/LfoDSP.h"
#include "model/ParameterIndex.h"

namespace effect {

using namespace model;

void tellClock(LfoDSP& effect) { effect.setParameter(kNoticeClock, kNoticeClockValue); }

// --- Clock

void setRate(LfoDSP& effect, int, float value) {
  effect.padLFO.rate = value;
  effect.setFreeLFOTime();
  tellClock(effect);
}

void repeatRate(LfoDSP& effect) { effect.setParameter(kRate, effect.getParameter(kRate)); }

void setBpmSync(LfoDSP& effect, int, float value) {
  effect.padLFO.bFreeRun = value != 1.0f;
  repeatRate(effect);
  tellClock(effect);
}

float getBpmSync(const LfoDSP& effect, int) { return effect.padLFO.bFreeRun ? 0.0f : 1.0f; }

void setTiming(LfoDSP& effect, int, float value) {
  effect.timing = value;
  effect.timingOffset = static_cast<float>(samplesOfTiming(value));
  effect.CalculateTrigOffset();
}

void setAnchor(LfoDSP& effect, int, float value) {
  effect.bAnchor = value != 0.0f;
  if (value == 0.0f) effect.setFreeLFOTime();
}

// --- Notes

// Off, retrigger, one-shot. A fresh one-shot rests at the end of the cycle until a note arrives.
void setRetrigger(LfoDSP& effect, int, float value) {
  const bool wasOneShot = effect.bOneShot;
  effect.bRetrig = value >= 0.25f;
  effect.bOneShot = value >= 0.75f;
  effect.bOneShotDone = false;
  if (wasOneShot || !effect.bOneShot) return;
  for (const std::int8_t route : effect.routes()) {
    const auto g = static_cast<std::size_t>(route);
    effect.padLFO.graphOut[g] = static_cast<float>(effect.graphTable[g][kGraphTableSize - 1]);
  }
}

float getRetrigger(const LfoDSP& effect, int) {
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
  effect.ccNumber = static_cast<std::int8_t>(integerPart(static_cast<double>(value) * kSevenBitValues + 0.5) & 0xff);
}

float getCcNumber(const LfoDSP& effect, int) { return valueOfController(effect.ccNumber); }

void exportMidi(LfoDSP& effect, int, float value) {
  effect.saveMIDIFile(integerPart(static_cast<double>(value) + 0.5));
}

// --- Filter

void setFilterOn(LfoDSP& effect, int, float value) {
  effect.filterOn = value;
  effect.filterOnFlag = static_cast<std::int8_t>(std::clamp(integerPart(static_cast<double>(value) + 0.5), -1, 1));
}

// --- Graphs and routes

// The graph on show takes its warp by the editor's own number, so that the editor follows.
void setWarpOf(LfoDSP& effect, int index, float value) {
  const int g = index - kWarp1;
  if (g == effect.currentGraph) {
    effect.setParameter(kCurrentWarp, value);
  } else {
    effect.setWarp(g, value);
  }
}

float getWarpOf(const LfoDSP& effect, int index) {
  return effect.padLFO.graphWarp[static_cast<std::size_t>(index - kWarp1)];
}

double loadWarp(const LfoDSP& effect, int index) { return static_cast<double>(getWarpOf(effect, index)); }

// Its multiplier follows once the whole state is there.
void storeWarp(LfoDSP& effect, int index, double value) {
  effect.padLFO.graphWarp[static_cast<std::size_t>(index - kWarp1)] = static_cast<float>(value);
}

void setCurrentWarp(LfoDSP& effect, int, float value) {
  effect.setWarp(effect.currentGraph, std::clamp(value, 0.0f, 1.0f));
}

float getCurrentWarp(const LfoDSP& effect, int) {
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

namespace {
constexpr float kCommandThreshold = 0.5f;
}  // namespace

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

namespace {

enum class PointValue { y, x, curve };

struct PointParameter {
  explicit PointParameter(int index)
      : point((index - kPoint1) / kNumbersOfPoint),
        value(static_cast<PointValue>((index - kPoint1) % kNumbersOfPoint)),
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

}  // namespace

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

float getPoint(const LfoDSP& effect, int index) {
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

}  // namespace effect
