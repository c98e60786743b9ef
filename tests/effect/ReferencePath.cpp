#include "tests/effect/ReferencePath.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "model/ParameterIndex.h"

namespace {

constexpr double kPi = std::numbers::pi;

float toFloat(double x) { return static_cast<float>(x); }

double clampUnit(double x) { return std::clamp(x, 0.0, 1.0); }

const double kMultipliers[18] = {1.0 / 16, 1.0 / 8, 1.0 / 4, 1.0 / 3, 3.0 / 8, 1.0 / 2, 2.0 / 3, 3.0 / 4, 1.0,
                                 1.25,     4.0 / 3, 1.5,     5.0 / 3, 2.0,     3.0,     4.0,     8.0,     16.0};

struct CurveLaw {
  double e, s, r;
  CurveLaw(double c, int length) {
    if (c <= 0.0) c = 1e-14;
    if (c == 0.5) c = 0.4999999998;
    if (c >= 1.0) c = 0.9999999998;
    const double t = c > 0.5 ? 2.0 * (1.0 - c) : 2.0 * c;
    double q = c > 0.5 ? 1.0 - t * t * t / 2.0 : t * t * t / 2.0;
    if (q <= 0.0) q = 1e-14;
    if (q >= 1.0) q = 0.99999999999999;
    const double k = kPi / std::log(1.0 / q - 1.0);
    e = std::exp(-2.0 * kPi / k);
    s = 1.0 / (1.0 - e);
    r = std::exp(-2.0 * kPi / (length * k));
  }
};

float panGain(double x) { return toFloat((x * double{1.831783f} + x * double{-0.83178306f} * x) * double{1.413f}); }

}  // namespace

ReferenceGraph::ReferenceGraph() {
  curve.fill(0.4999999701976776);
  x.fill(65536.0);
  x[0] = 0.0;
  x[1] = 32768.0;
  y[1] = 1.0;
  render();
}

void ReferenceGraph::render() {
  table[0] = toFloat(1.0 - y[0]);
  int i = 0, cur = 0;
  while (i < 65536) {
    if (i > x[std::size_t(cur)]) cur = std::min(cur + 1, lastPoint + 1);
    const auto left = std::size_t(cur);
    const int length = cur > lastPoint ? 0 : static_cast<int>(x[left + 1] - x[left] + 0.5);
    if (length < 2 || x[left] >= 65536.0 || cur > lastPoint) {
      if (i > 0) table[std::size_t(i)] = table[std::size_t(i) - 1];
      ++i;
      continue;
    }
    const CurveLaw law(curve[left], length);
    const float y0 = toFloat(y[left]), d = toFloat(y[left + 1] - y[left]);
    double p = 1.0;
    for (int j = 1; j <= length; ++j) {
      p *= law.r;
      const double height = d - (p - law.e) * d * law.s + y0;
      if (i + j < 65536) table[std::size_t(i + j)] = toFloat(1.0 - height);
    }
    i += length;
  }
}

void ReferenceCrossover::tune(float value, float rateHz) {
  const float logMin = toFloat(std::log(20.0)), logMax = toFloat(std::log(20000.0)), logRange = logMax - logMin;
  const float logHz = toFloat(double{logRange} * value + logMin);
  const float hz = std::clamp(toFloat(std::exp(double{logHz})), 20.0f, 20000.0f);
  const float k = 6.285714f / std::tan(hz * 3.142857f / rateHz);
  const float k2 = k * k, a0 = k2 + 39.5102f + 12.571428f * k;
  a1_ = (79.0204f - 2.0f * k2) / a0;
  a2_ = (k2 - 12.571428f * k + 39.5102f) / a0;
  low_.b0 = low_.b2 = 39.5102f / a0;
  low_.b1 = 79.0204f / a0;
  high_.b0 = high_.b2 = k2 / a0;
  high_.b1 = -2.0f * k2 / a0;
}

float ReferenceCrossover::run(Band& band, float in) const {
  const float out = band.b0 * in + band.state1;
  band.state1 = band.b1 * in - a1_ * out + band.state2;
  band.state1 = toFloat(double{band.state1} + 1e-18);
  band.state1 = toFloat(double{band.state1} - 1e-18);
  band.state2 = band.b2 * in - a2_ * out;
  return out;
}

void ReferenceCrossover::split(float in, float& low, float& high) {
  low = run(low_, in);
  high = run(high_, in);
}

ReferencePath::ReferencePath(float hostRateHz) : rateHz_(double{hostRateHz < 44000.0f ? 44100.0f : hostRateHz}) {
  graphWarp.fill(0.46666667f);
  warpMult.fill(1.0);
  depth.fill(0.5f);
  resume();
}

void ReferencePath::resume() {
  crossovers_ = {};
  for (auto& c : crossovers_) c.tune(crossoverValue_, toFloat(rateHz_));
  setFreeTime();
}

void ReferencePath::renderAll() {
  for (auto& g : graphs) g.render();
}

void ReferencePath::setWarp(int graph, float value) {
  if (graph == currentGraph) value = toFloat(clampUnit(value));
  graphWarp[std::size_t(graph)] = value;
  warpMult[std::size_t(graph)] = kMultipliers[static_cast<int>(double{value} * 16.9999 + 0.5)];
}

void ReferencePath::setPoint(int p, int kind, float value) {
  if (!warmedUp_) return;
  auto& g = graphs[0];
  const auto at = std::size_t(p), last = std::size_t(g.lastPoint);
  if (kind == 0) {
    g.y[at] = 1.0 - double{value};
    if (p == 0) g.y[last] = g.y[at];
    if (at == last) g.y[0] = g.y[at];
  } else if (kind == 1 && p > 0 && at < last) {
    g.x[at] = std::max(std::min(double{value} * 65536.0, g.x[at + 1]), g.x[at - 1]);
  } else if (kind == 2 && at < last) {
    g.curve[at] = clampUnit(value);
  }
  graphDirty_ = true;
}

void ReferencePath::set(int index, float value) {
  using Path = ReferencePath;
  static constexpr std::pair<int, float Path::*> kNumbers[] = {{kRate, &Path::rate},
                                                               {kSwing, &Path::swing},
                                                               {kPhase, &Path::phase},
                                                               {kFilterCutoff, &Path::filterCutoff},
                                                               {kFilterReso, &Path::filterReso},
                                                               {kSmooth, &Path::lfoSmooth},
                                                               {kDepthKnob, &Path::depthKnob},
                                                               {kFilterVar, &Path::filterVar}};
  static constexpr std::pair<int, bool Path::*> kSwitches[] = {{kDotted, &Path::dotted},
                                                               {kTriplet, &Path::triplet},
                                                               {kXoverOn, &Path::crossoverOn},
                                                               {kXoverInvert, &Path::crossoverInverted},
                                                               {kAnchor, &Path::anchor}};
  const bool on = value != 0.0f;
  for (const auto& [number, field] : kNumbers) {
    if (index == number) this->*field = value;
  }
  for (const auto& [number, field] : kSwitches) {
    if (index == number) this->*field = on;
  }
  if (index >= kDepthCut && index <= kDepthVar) depth[std::size_t(index - kDepthCut)] = value;
  if (index == kBpmSync) freeRun = 1.0 - double{value} != 0.0;
  if (index == kRate || (index >= kBpmSync && index <= kTriplet) || (index == kAnchor && !on)) setFreeTime();
  if (index == kRetrigger) setRetrigger(value);
  if (index == kGateMode) lfoOpen = !on;
  if (index >= kRouteCut && index <= kRouteVar)
    route[std::size_t(index - kRouteCut)] = static_cast<int>(double{value} * 11 + 0.5);
  if (index >= kWarp1 && index < kDepthKnob) setWarp(index - kWarp1, value);
  if (index == kTiming) {
    timingOffset = toFloat(double{value} * 8192 - 4096);
    trigOffset = trigPos - double{timingOffset} * beatsPerSample;
  }
  if (index >= kPoint1 && index < kFilterType) setPoint((index - kPoint1) / 3, (index - kPoint1) % 3, value);
  if (index == kXoverFrequency) {
    crossoverValue_ = value;
    for (auto& c : crossovers_) c.tune(value, toFloat(rateHz_));
  }
  if (index == kCurrentGraph) {
    const int was = std::exchange(currentGraph, static_cast<int>(double{value} * 11 + 0.5));
    if (currentGraph != was) renderAll();
  }
}

void ReferencePath::setRetrigger(float value) {
  const bool was = oneShot;
  retrig = value >= 0.25f;
  oneShot = value >= 0.75f;
  oneShotDone = false;
  if (!oneShot || was) return;
  for (const int r : route) graphOut[std::size_t(r)] = graphs[std::size_t(r)].table[65535];
}

double ReferencePath::divider() const {
  const float f = rate * 42.0f;
  const int i = static_cast<int>(f);
  const double v = std::ldexp(1.0, static_cast<int>(double{f} / 3.0));
  if (triplet && i % 3 == 2) return v * 1.5;
  if (dotted && i % 3 > 0) return v * 1.33333;
  return v;
}

void ReferencePath::setFreeTime() {
  if (freeRun) {
    freeIncrement = double{rate * rate * rate * rate} * 440.0 * (65536.0 / rateHz_) * 1.52587890625e-05;
  } else {
    freeIncrement = (tempo / 60.0) * (65536.0 / rateHz_) * (divider() * 0.00390625) * 6.103515625e-05;
  }
  freePhase = double{cyclePos};
  if (freeIncrement < 1e-11) freeIncrement = 1e-11;
}

void ReferencePath::stopClock() {
  trigPos = tempo = beatsPerSample = beatPos = 0.0;
  cyclePos = 0.0f;
}

void ReferencePath::startBlock(const VstTimeInfo* time) {
  if (!time) {
    stopClock();
    active_.fill(false);
    return;
  }
  if (time->tempo != tempo) {
    tempo = std::max(time->tempo, 1.0);
    beatsPerSample = 1.0 / std::max(rateHz_ * 60.0 / tempo, 1.0);
    if (!anchor) setFreeTime();
    trigOffset = trigPos - double{timingOffset} * beatsPerSample;
  }
  beatPos = time->ppqPos - trigOffset;
  while (beatPos < 0.0) beatPos += 64.0;
  tempo = time->tempo;
  for (std::size_t d = 0; d < 5; ++d) active_[d] = depth[d] != 0.5f;
  if (time->flags & kVstTransportPlaying) return;
  stopClock();
  if (anchor) active_.fill(false);
}

bool ReferencePath::clockPosition(double& p) {
  if (freeRun || !anchor) {
    freePhase += freeIncrement;
    if (freePhase >= 1.0) freePhase = oneShot ? 0.9999999999999 : freePhase - 1.0;
    p = freePhase;
    return true;
  }
  if (oneShot && retrig) {
    // No note has started a cycle, so the cycle's length is 0 beats and over at once.
    if (!oneShotDone && beatPos >= 0.0) oneShotDone = true;
    return false;
  }
  const double cycles = std::abs(beatPos) * (divider() * 0.00390625 * 4.0);
  p = cycles - std::floor(cycles);
  if (swing != 0.5f) {
    const double half = cycles * 0.5, x = half - std::floor(half);
    const float perFirst = toFloat(1.0 / double{swing}), perSecond = toFloat(1.0 / (1.0 - double{swing}));
    p = x >= double{swing} ? (x - double{swing}) * double{perSecond} : x * double{perFirst};
  }
  return true;
}

void ReferencePath::moveClock() {
  double p = 0.0;
  if (!clockPosition(p)) return;
  cyclePos = toFloat(p);
  double x = double{phase} + p;
  if (x < 0.0) x += 1.0;
  if (x > 1.0) x -= std::floor(x);
  lfoPhase = x;
  const auto shown = std::size_t(currentGraph);
  displayIndex = static_cast<int>(lfoPhase * warpMult[shown] * 65535.0) % 65536;
  graphOut[shown] = graphs[shown].table[std::size_t(displayIndex)];
  if (!lfoOpen) {
    displayIndex = 0;
    lfoPhase = 0.0;
  }
  const double y = lfoPhase * 65535.0;
  for (const int r : route) {
    const auto g = std::size_t(r);
    graphOut[g] = graphs[g].table[static_cast<std::size_t>(y * warpMult[g]) % 65536];
  }
}

double ReferencePath::offset(Destination d) const {
  return (double{graphOut[std::size_t(route[d])]} - 0.5) * 2.0 * (double{depth[d]} - 0.5) * double{depthKnob};
}

void ReferencePath::controlTick(float in) {
  if (scopeOn) {
    for (int i = scopeInMark_; i <= displayIndex; ++i) scopeIn[std::size_t(i)] = in;
    scopeInMark_ = displayIndex;
  }
  const auto cubed = [this](Destination d) {
    const double m = 2.0 * (double{depth[d]} - 0.5) * double{depthKnob};
    return (double{graphOut[std::size_t(route[d])]} - 0.5) * (m * m * m);
  };
  cutMod = active_[cut] ? toFloat(double{filterCutoff} + 2.0 * cubed(cut)) : filterCutoff;
  varMod = active_[var] ? toFloat(clampUnit(double{filterVar} + offset(var))) : filterVar;
  const double s = std::min(double{lfoSmooth} + 0.1, 0.99);
  cutSmoothed = toFloat(clampUnit(double{cutMod} * (1.0 - s) + s * double{cutSmoothed}));
  resoMod = toFloat(clampUnit(active_[res] ? double{filterReso} + cubed(res) : double{filterReso}));
}

void ReferencePath::smooth(float& value, float target, double step) const {
  if (value == target) return;
  const float moved = toFloat(double{value} * (1.0 - step) + step * double{target});
  value = lfoSmooth <= 0.0f || std::abs(double{moved} - double{target}) < 1e-8 ? target : moved;
}

void ReferencePath::playSample(float& left, float& right, double step) {
  moveClock();
  smooth(panSmoothed, active_[pan] ? toFloat(clampUnit(0.5 + offset(pan))) : 0.5f, step);
  gainL = panGain(1.0 - double{panSmoothed});
  gainR = panGain(double{panSmoothed});
  left *= gainL;
  right *= gainR;
  if (active_[vol]) {
    const double k = double{depth[vol]} - 0.5;
    smooth(volSmoothed, toFloat(clampUnit((1.0 - std::abs(k) * double{depthKnob}) + offset(vol))), step);
    left *= volSmoothed;
    right *= volSmoothed;
  } else {
    volSmoothed = 1.0f;
  }
  if (scopeOn) capture(left);
  beatPos += beatsPerSample;
}

void ReferencePath::capture(float out) {
  if (scopeOutMark_ > displayIndex) scopeOutMark_ = -1;
  scopeOut[std::size_t(displayIndex)] = out;
  for (int i = scopeOutMark_ + 1; i < displayIndex; ++i) scopeOut[std::size_t(i)] = out;
  scopeOutMark_ = displayIndex;
}

void ReferencePath::play(const float* left, const float* right, float* outLeft, float* outRight, int frames,
                         const VstTimeInfo* time) {
  if (graphDirty_) graphs[0].render();
  graphDirty_ = false;
  warmedUp_ = true;
  const std::array<const float*, 2> in{left, right ? right : left};
  std::array<std::vector<float>, 2> band, aside;
  for (std::size_t c = 0; c < 2; ++c) {
    band[c].assign(in[c], in[c] + frames);
    aside[c].assign(std::size_t(frames), 0.0f);
    if (!crossoverOn) continue;
    if (c == 1 && !right) {
      band[1] = band[0];
      aside[1] = aside[0];
      continue;
    }
    for (std::size_t i = 0; i < band[c].size(); ++i) {
      float low = 0.0f, high = 0.0f;
      crossovers_[c].split(in[c][i], low, high);
      band[c][i] = crossoverInverted ? -high : low;
      aside[c][i] = crossoverInverted ? low : -high;
    }
  }
  startBlock(time);
  const double slow = 1.0 - double{lfoSmooth}, step = slow * slow * slow * 0.06;
  for (std::size_t i = 0; i < band[0].size(); ++i) {
    if (i % 12 == 0) controlTick(band[0][i]);
    playSample(band[0][i], band[1][i], step);
    outLeft[i] = crossoverOn ? band[0][i] + aside[0][i] : band[0][i];
    outRight[i] = crossoverOn ? band[1][i] + aside[1][i] : band[1][i];
  }
}
