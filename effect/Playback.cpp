// SPDX-License-Identifier: MIT
// From the host's song position to graph values: block start, the clock, and the reading of the tables.
#include <cmath>

#include "effect/Helpers.h"
#include "effect/LfoDSP.h"
#include "effect/ModulationLaws.h"
#include "model/WarpTable.h"

using namespace model;
using namespace effect;

namespace {

// What the effect reads of the host's clock.
constexpr VstInt32 kTimeFilter =
    kVstTransportChanged | kVstTransportCycleActive | kVstTransportRecording | kVstPpqPosValid | kVstTempoValid;

// Positions before the trigger point move up by whole longest cycles; far beyond that no fraction is left.
double wrapAboveZero(double beats) noexcept {
  if (!std::isfinite(beats)) return 0.0;
  if (beats >= 0.0) return beats;
  const double wrapped = beats + kSongWrapBeats * std::ceil(-beats / kSongWrapBeats);
  return wrapped < 0.0 ? wrapped + kSongWrapBeats : wrapped;
}

bool moves(const Shared<float>& depth) noexcept { return depth != kNoDepth; }

}  // namespace

void LfoDSP::blockStart() noexcept {
  timeInfo = getTimeInfo(kTimeFilter);
  const double hostTempo = timeInfo ? finiteOrZero(timeInfo->tempo) : 0.0;
  lastHostTempo = hostTempo;
  if (!timeInfo) return standStill(false);
  const bool firstBlock = beatsPerSample > 1.0;
  if (hostTempo != tempo || firstBlock) followHostTempo(hostTempo);
  beatPos = wrapAboveZero(finiteOrZero(timeInfo->ppqPos) - trigOffset);
  tempo = hostTempo;
  activeVol = moves(padLFO.depthVol);
  activeVar = moves(padLFO.depthVar);
  activePan = moves(padLFO.depthPan);
  activeCut = moves(padLFO.depthCut);
  activeRes = moves(padLFO.depthRes);
  if (!(timeInfo->flags & kVstTransportPlaying)) standStill(!bAnchor);
}

void LfoDSP::followHostTempo(double hostTempo) noexcept {
  tempo = std::max(hostTempo, 1.0);
  const double samplesPerBeat = std::max(static_cast<double>(sampleRateSafe) * 60.0 / tempo, 1.0);
  beatsPerSample = 1.0 / samplesPerBeat;
  if (!bAnchor) setFreeLFOTime();
  CalculateTrigOffset();
}

// The song stands, or there is none: the beat clock rests at 0. `modulate` leaves the free clock its destinations.
void LfoDSP::standStill(bool modulate) noexcept {
  trigPos = 0.0;
  padLFO.cyclePos = 0.0f;
  tempo = 0.0;
  heldNotes = 0;
  beatsPerSample = 0.0;
  beatPos = 0.0;
  if (!modulate) activeVol = activeVar = activePan = activeCut = activeRes = false;
}

void LfoDSP::CalculateTrigOffset() noexcept {
  trigOffset = trigPos - static_cast<double>(timingOffset) * beatsPerSample;
}

double LfoDSP::divider() const noexcept { return rateDivider(padLFO.rate, padLFO.bTriplet != 0, padLFO.bDotted != 0); }

void LfoDSP::setFreeLFOTime() noexcept {
  const double perTable = static_cast<double>(kGraphTableSize) / static_cast<double>(sampleRateSafe);
  double increment = 0.0;
  if (padLFO.bFreeRun) {
    increment = static_cast<double>(fourthPower(padLFO.rate)) * kFastestFreeHz * perTable * 1.52587890625e-05;
  } else {
    increment = (tempo / 60.0) * perTable * (divider() * kDividerScale) * 6.103515625e-05;
  }
  freePhase = static_cast<double>(padLFO.cyclePos);  // so that a rate change does not jump
  if (!(increment >= kSlowestIncrement)) increment = kSlowestIncrement;
  freeIncrement = std::min(increment, kFastestIncrement);
}

ClockSettings LfoDSP::clockSettings() const noexcept {
  ClockSettings s;
  s.onBeat = !padLFO.bFreeRun && bAnchor;
  s.oneShot = bOneShot;
  s.oneShotOnBeat = s.oneShot && bRetrig;
  s.beatsPerSample = beatsPerSample;
  s.oneShotLength = oneShotLength;
  s.freeIncrement = freeIncrement;
  s.phase = static_cast<double>(padLFO.phase);
  if (s.onBeat) {
    s.cyclesPerBeat = divider() * kDividerScale * 4.0;
  }
  const float swing = padLFO.swing;
  s.hasSwing = swing != 0.5f;
  if (s.hasSwing) {
    s.swing = static_cast<double>(swing);
    s.swingFirst = floatReciprocal(s.swing);
    s.swingSecond = floatReciprocal(1.0 - s.swing);
  }
  setPwm(s, padLFO.pwm);
  return s;
}

ClockState LfoDSP::clockState() const noexcept { return {beatPos, freePhase, lfoPhase, padLFO.cyclePos, bOneShotDone}; }

void LfoDSP::storeClock(const ClockState& state) noexcept {
  beatPos = state.beatPos;
  freePhase = state.freePhase;
  lfoPhase = state.lfoPhase;
  padLFO.cyclePos = state.cyclePos;
  bOneShotDone = state.oneShotDone;
}

GraphReader LfoDSP::graphReader(int g) const noexcept {
  const auto i = static_cast<std::size_t>(g);
  return {graphTable[i].get(), warpMult[i], padLFO.bLfoOpen != 0};
}

void LfoDSP::readGraphs(double position) noexcept {
  const auto shown = static_cast<std::size_t>(currentGraph);
  const int index = GraphReader::shownIndex(position, warpMult[shown]);
  padLFO.graphOut[shown] = static_cast<float>(graphTable[shown][static_cast<std::size_t>(index)]);
  const bool open = padLFO.bLfoOpen != 0;
  displayIndex = open ? index : 0;
  displayPos = static_cast<float>(displayIndex * 1.5258789e-5);
  if (!open) lfoPhase = 0.0;
  int last = -1;  // routes that share a graph read the same value
  for (const int g : routes()) {
    if (g == last) continue;
    padLFO.graphOut[static_cast<std::size_t>(g)] = graphReader(g).read(position);
    last = g;
  }
}

void LfoDSP::ProcessPadLFO() noexcept {
  ClockState state = clockState();
  const bool moved = advanceClock(state, clockSettings());
  storeClock(state);
  if (moved) readGraphs(lfoPhase);
}
