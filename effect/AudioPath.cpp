// SPDX-License-Identifier: MIT
// The road of one block: crossover, then tick by tick the filter and the gains, then the bypassed band comes back.
#include <algorithm>
#include <cmath>

#include "effect/LfoDSP.h"
#include "effect/ModulationLaws.h"

using namespace model;
using namespace effect;

namespace {

// Longer calls are cut into slices of whole ticks, so that they sound like one long block.
constexpr int kSliceFrames = kLongestBlock - kLongestBlock % kTickFrames;

std::size_t at(int i) noexcept { return static_cast<std::size_t>(i); }

void copySamples(const float* from, float* to, int count) noexcept {
  if (from != to) std::copy_n(from, count, to);
}

constexpr float kCentre = 0.5f;  // of the pan

bool hasPointers(float** channels, int last) noexcept { return channels && channels[0] && channels[last]; }

}  // namespace

void LfoDSP::processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) noexcept {
  const AudioGate::Block block(gate);
  if (block.held() && !bAudioHold) return keepMidiForNextBlock();  // the state is being rebuilt
  if (bGraphsDirty && bGraphsDirty.take(false)) RenderEnvsInCaseGUIClosed(true);
  processBufferSetup(block.held());
  if (block.held() || bAudioHold) return keepMidiForNextBlock();
  const int last = lastIn;
  if (!hasPointers(inputs, last) || !hasPointers(outputs, 1)) return keepMidiForNextBlock();
  dropNonFinite();
  followXoverFrequency();
  bSplit_ = bXoverOn;
  gainSmoothing_ = gainSmoothing(lfoSmooth);
  for (int start = 0; start == 0 || start < sampleFrames;) {
    const int frames = sampleFrames > kLongestBlock ? std::min(sampleFrames - start, kSliceFrames) : sampleFrames;
    const Slice slice{outputs[0] + start, outputs[1] + start, outputs[last] + start, start, std::max(frames, 0)};
    splitBands(inputs[0] + start, inputs[last] + start, slice);
    if (start == 0) {
      blockStart();
      blockClock_ = clockSettings();
    }
    processTicks(slice);
    joinBands(slice);
    start += std::max(frames, 1);
  }
  endMidiBlock();
}

void LfoDSP::processBufferSetup(bool held) noexcept {
  bWarmedUp = true;
  if (bFiltersWarm_ || held) return;
  bFiltersWarm_ = true;
  filterStage_.warmUp();
}

// A NaN or an infinity that another plug-in sent must not circulate here for good.
void LfoDSP::dropNonFinite() noexcept {
  if (bSplit_) {
    xoverLeft_.dropNonFinite();
    xoverRight_.dropNonFinite();
  }
  if (bFiltered_) filterStage_.dropNonFinite();
  bFiltered_ = false;
}

// The coefficients belong to the audio thread, so that no block ever meets half a set.
void LfoDSP::followXoverFrequency() noexcept {
  const float wanted = xoverFrequency;
  if (wanted == xoverApplied_) return;
  xoverApplied_ = wanted;
  const float hertz = xoverMapper_.setAndGetValue(wanted);
  xoverLeft_.setFrequency(hertz);
  xoverRight_.setFrequency(hertz);
}

void LfoDSP::splitBands(const float* left, const float* right, const Slice& slice) noexcept {
  const bool mono = lastIn == 0;
  if (!bSplit_) {
    copySamples(left, slice.left, slice.frames);
    if (!mono) copySamples(right, slice.right, slice.frames);
    return;
  }
  const std::size_t n = at(slice.frames);
  const Bands bands{{slice.left, n}, {slice.right, n}, {asideLeft_.data(), n}, {asideRight_.data(), n}};
  if (mono) {
    splitMono(xoverLeft_, {left, n}, bXoverInvert, bands);
  } else {
    splitStereo(xoverLeft_, xoverRight_, {left, n}, {right, n}, bXoverInvert, bands);
  }
}

void LfoDSP::joinBands(const Slice& slice) noexcept {
  if (!bSplit_) return;
  for (int i = 0; i < slice.frames; ++i) {
    slice.left[i] += asideLeft_[at(i)];
    slice.right[i] += asideRight_[at(i)];
  }
}

// A tick's notes act before all of it, so that they steer the settings of their own tick.
void LfoDSP::processTicks(const Slice& slice) noexcept {
  const auto play = [this](const WaitingNote& n) {
    ProcessWaitingNote(static_cast<char>(n.note), 0, static_cast<char>(n.velocity), static_cast<int>(n.frame), false);
  };
  for (int start = 0; start < slice.frames; start += kTickFrames) {
    const int frames = std::min(kTickFrames, slice.frames - start);
    if (noteQueue.play(slice.offset + start, frames, play)) blockClock_ = clockSettings();
    controlTick(slice, start, frames);
  }
}

// Settings first, then the samples move the clock: what steers the filter in a tick is the graphs' position at the end
// of the tick before.
void LfoDSP::controlTick(const Slice& slice, int start, int frames) noexcept {
  TickBuffer tick;
  for (int j = 0; j < frames; ++j) {
    dsp::storePair(&tick[at(2 * j)], dsp::Pair{slice.left[start + j], slice.tickRight[start + j]});
  }
  if (bScopeOn) scopeIn.captureInput(displayIndex, tick[0]);
  const auto params = updateFilterSettings();
  sendCutoffController(slice.offset + start + frames - 1);
  if (filterOnFlag > 0) {
    bFiltered_ = true;
    filterStage_.process(params.data(), filterMix, tick, frames);
  }
  playTick(slice, start, tick, frames);
}

std::array<float, filters::kFilterParams> LfoDSP::updateFilterSettings() noexcept {
  const auto graphOf = [this](std::int8_t route) -> float { return padLFO.graphOut[static_cast<std::size_t>(route)]; };
  const float knob = padLFO.depthKnob;
  cutMod =
      activeCut ? cutoffLaw(filterCutoff, padLFO.depthCut, knob, graphOf(routeCut)) : static_cast<float>(filterCutoff);
  varMod = activeVar ? linearLaw(static_cast<double>(filterVar), depthOf(padLFO.depthVar, knob), graphOf(routeVar))
                     : static_cast<float>(filterVar);
  cutSmoothed = smoothedCutoff(cutSmoothed, cutMod, cutoffSmoothing(lfoSmooth));
  const double resonance =
      activeRes ? resonanceLaw(filterReso, padLFO.depthRes, knob, graphOf(routeRes)) : static_cast<double>(filterReso);
  resoMod = static_cast<float>(limit01(resonance));
  const std::array<float, filters::kFilterParams> params = {filterDrive, 1.0f,   filterType, cutSmoothed,
                                                            resoMod,     varMod, 1.0f};
  std::copy(params.begin(), params.end(), filterParams.begin());
  return params;
}

// Moves the clock over the tick, then applies pan and volume sample by sample.
void LfoDSP::playTick(const Slice& slice, int start, TickBuffer& tick, int frames) noexcept {
  const ClockSettings settings = blockClock_;
  ClockState clock = clockState();
  std::array<double, kTickFrames> positions;
  int moved = 0;  // samples that moved the position; a finished one-shot holds the rest
  // With nothing that follows the clock sample by sample, the tick's last position is all that counts.
  const int skipped = settings.oneShotOnBeat || bScopeOn || !gainsRest() ? 0 : frames - 1;
  for (int j = 0; j < skipped; ++j) skipSample(clock, settings);
  for (int j = skipped; j < frames; ++j) {
    if (advanceClock(clock, settings)) positions[at(moved++)] = clock.lfoPhase;
    clock.beatPos += settings.beatsPerSample;
  }
  storeClock(clock);
  const std::span<const double> track(positions.data(), at(moved));
  applyGains(tick, frames, track);
  for (int j = 0; j < frames; ++j) {
    slice.left[start + j] = tick[at(2 * j)];
    slice.right[start + j] = tick[at(2 * j + 1)];
  }
  if (bScopeOn) captureOutput(tick, frames, track);
  if (moved > 0) readGraphs(track.back());
}

bool LfoDSP::gainsRest() const noexcept { return !activeVol && !activePan && panSmoothed == kCentre; }

void LfoDSP::applyGains(TickBuffer& tick, int frames, std::span<const double> track) noexcept {
  if (!gainsRest()) return applyMovingGains(tick, frames, track);
  volSmoothed = 1.0f;
  const dsp::Pair gains = {gainL, gainR};
  for (int j = 0; j < frames; ++j) dsp::storePair(&tick[at(2 * j)], dsp::loadPair(&tick[at(2 * j)]) * gains);
}

void LfoDSP::applyMovingGains(TickBuffer& tick, int frames, std::span<const double> track) noexcept {
  const GraphReader panGraph = graphReader(routePan);
  const GraphReader volGraph = graphReader(routeVol);
  const bool panActive = activePan;
  const bool volActive = activeVol;
  const float knob = padLFO.depthKnob;
  const float depthVol = padLFO.depthVol;
  const double panDepth = depthOf(padLFO.depthPan, knob);
  const bool atOnce = lfoSmooth <= 0.0f;
  const double smoothing = gainSmoothing_;
  float panValue = padLFO.graphOut[at(routePan)];
  float volValue = padLFO.graphOut[at(routeVol)];
  float pan = panSmoothed;
  float volume = volSmoothed;
  dsp::Pair gains = {gainL, gainR};
  for (int j = 0; j < frames; ++j) {
    if (at(j) < track.size()) {
      panValue = panGraph.read(track[at(j)]);
      volValue = volGraph.read(track[at(j)]);
    }
    const float panTarget = panActive ? linearLaw(kCentre, panDepth, panValue) : kCentre;
    if (pan != panTarget) {
      pan = smoothed(pan, panTarget, atOnce, smoothing);
      gains = panGains(pan);
    }
    dsp::Pair out = dsp::loadPair(&tick[at(2 * j)]) * gains;
    if (volActive) {
      const float volTarget = volumeLaw(depthVol, knob, volValue);
      if (volume != volTarget) volume = smoothed(volume, volTarget, atOnce, smoothing);
      out *= volume;
    } else {
      volume = 1.0f;
    }
    dsp::storePair(&tick[at(2 * j)], out);
  }
  panSmoothed = pan;
  volSmoothed = volume;
  gainL = gains[0];
  gainR = gains[1];
}

void LfoDSP::captureOutput(const TickBuffer& tick, int frames, std::span<const double> track) noexcept {
  const bool open = padLFO.bLfoOpen != 0;
  const double warp = warpMult[at(currentGraph)];
  ScopeTrace::Writer writer(scopeOut);
  int index = displayIndex;
  for (int j = 0; j < frames; ++j) {
    if (at(j) < track.size()) index = open ? GraphReader::shownIndex(track[at(j)], warp) : 0;
    writer.captureOutput(index, tick[at(2 * j)]);
  }
}
