// SPDX-License-Identifier: MIT
#include "effect/Crossover.h"

#include <algorithm>
#include <cmath>

#include "filters/Lanes.h"

namespace {

using dsp::Pair;
using dsp::Quad;

// States at or above this size come out of the flushing of denormals as they went in: 1e-18 is less than half their
// last bit.
constexpr float kFlushMatters = 0x1p-33f;

bool flushMatters(Quad s) noexcept {
  const auto small = (s < kFlushMatters) & (s > -kFlushMatters);
  return (small[0] | small[1] | small[2] | small[3]) != 0;
}

// Both bands of two channels. Lanes: low left, low right, high left, high right.
struct FourLanes {
  FourLanes(const CrossoverState& l, const CrossoverState& r) noexcept
      : b0{l.lowB0, r.lowB0, l.highB0, r.highB0},
        b1{l.lowB1, r.lowB1, l.highB1, r.highB1},
        b2{l.lowB2, r.lowB2, l.highB2, r.highB2},
        a1{l.a1, r.a1, l.a1, r.a1},
        a2{l.a2, r.a2, l.a2, r.a2},
        s1{l.lowS1, r.lowS1, l.highS1, r.highS1},
        s2{l.lowS2, r.lowS2, l.highS2, r.highS2},
        last{l.lastLow, r.lastLow, l.lastHigh, r.lastHigh} {}

  Quad step(Quad x) noexcept {
    const Quad y = b0 * x + s1;
    s1 = b1 * x - a1 * y + s2;
    if (flushMatters(s1)) [[unlikely]]
      s1 = dsp::flushedBySum(s1, dsp::kFlushOffset);
    s2 = b2 * x - a2 * y;
    last = y;
    return y;
  }

  // True where a step on digital silence gives back the same state: what the flushing leaves feeds itself.
  [[nodiscard]] bool restsOnSilence() const noexcept {
    FourLanes next = *this;
    next.step(Quad{});
    const auto same = (next.s1 == s1) & (next.s2 == s2) & (next.last == last) & (last == s1);
    return (same[0] & same[1] & same[2] & same[3]) != 0;
  }

  void storeTo(CrossoverState& state, int channel) const noexcept {
    state.lowS1 = s1[channel];
    state.lowS2 = s2[channel];
    state.highS1 = s1[2 + channel];
    state.highS2 = s2[2 + channel];
    state.lastLow = last[channel];
    state.lastHigh = last[2 + channel];
  }

  Quad b0, b1, b2, a1, a2, s1, s2, last;
};

// What goes on and what is put aside. The high band is inverted in either case, so that the sum is an all-pass.
struct Split {
  Split(Quad bands, bool highProcessed) noexcept {
    const Pair low = dsp::lowPair(bands);
    const Pair high = -dsp::highPair(bands);
    processed = highProcessed ? high : low;
    aside = highProcessed ? low : high;
  }
  Pair processed, aside;
};

bool isSilent(std::span<const float> x) noexcept {
  return std::all_of(x.begin(), x.end(), [](float v) { return v == 0.0f; });
}

}  // namespace

void CrossoverState::setFrequency(float frequencyHz) noexcept {
  piFrequency = frequencyHz * 3.142857f;
  k = twoPi / std::tan(piFrequency / sampleRate);
  kk = k * k;
  twoKk = 2.0f * kk;
  fourPiK = 12.571428f * k;
  const float a0 = kk + piSquared4 + fourPiK;
  invA0 = 1.0f / a0;
  a1 = (piSquared8 - twoKk) / a0;
  a2 = (kk - fourPiK + piSquared4) / a0;
  lowB0 = piSquared4 / a0;
  lowB1 = piSquared8 / a0;
  lowB2 = piSquared4 / a0;
  highB0 = kk / a0;
  highB1 = -twoKk / a0;
  highB2 = kk / a0;
}

void CrossoverState::clear() noexcept { lowS1 = lowS2 = highS1 = highS2 = 0.0f; }

void CrossoverState::dropNonFinite() noexcept {
  if (!std::isfinite((lowS1 + lowS2) * 0.0f + (highS1 + highS2) * 0.0f)) clear();
}

namespace effect {

void splitStereo(CrossoverState& stateLeft, CrossoverState& stateRight, std::span<const float> left,
                 std::span<const float> right, bool highProcessed, const Bands& out) noexcept {
  FourLanes lanes(stateLeft, stateRight);
  if (isSilent(left) && isSilent(right) && lanes.restsOnSilence()) {
    const Split split(lanes.last, highProcessed);
    std::fill(out.processedLeft.begin(), out.processedLeft.end(), split.processed[0]);
    std::fill(out.processedRight.begin(), out.processedRight.end(), split.processed[1]);
    std::fill(out.asideLeft.begin(), out.asideLeft.end(), split.aside[0]);
    std::fill(out.asideRight.begin(), out.asideRight.end(), split.aside[1]);
    return;
  }
  for (std::size_t i = 0; i < left.size(); ++i) {
    const Split split(lanes.step(Quad{left[i], right[i], left[i], right[i]}), highProcessed);
    out.processedLeft[i] = split.processed[0];
    out.processedRight[i] = split.processed[1];
    out.asideLeft[i] = split.aside[0];
    out.asideRight[i] = split.aside[1];
  }
  lanes.storeTo(stateLeft, 0);
  lanes.storeTo(stateRight, 1);
}

void splitMono(CrossoverState& state, std::span<const float> in, bool highProcessed, const Bands& out) noexcept {
  FourLanes lanes(state, state);
  if (isSilent(in) && lanes.restsOnSilence()) {
    const Split split(lanes.last, highProcessed);
    std::fill(out.processedLeft.begin(), out.processedLeft.end(), split.processed[0]);
    std::fill(out.asideLeft.begin(), out.asideLeft.end(), split.aside[0]);
    std::fill(out.asideRight.begin(), out.asideRight.end(), split.aside[1]);
    return;
  }
  for (std::size_t i = 0; i < in.size(); ++i) {
    const Split split(lanes.step(dsp::quadOf(in[i])), highProcessed);
    out.processedLeft[i] = split.processed[0];
    out.asideLeft[i] = split.aside[0];
    out.asideRight[i] = split.aside[1];
  }
  lanes.storeTo(state, 0);
}

}  // namespace effect
