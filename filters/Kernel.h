// SPDX-License-Identifier: MIT
// The frame of every kernel: one block's job, the input and output stages, and what is checked at a block's end.
// A block is what is played with one set of coefficients: in the effect a control tick, 24 samples at twice the rate.
//
// A kernel is a small class over the sample type: it takes coefficients and state to registers when it is made, turns
// one input into one output per call, and gives its state back with `keep`. `run` is the loop round it.
#pragma once

#include "filters/FilterMemory.h"

namespace filters::kernels {

// Looks at all that stays behind at a block's end: traces are flushed before they turn into denormal numbers, and a
// single bit tells whether any value reached 2 or became a NaN.
template <class S>
class Watch {
 public:
  void keep(S& field, S value) noexcept {
    look(value);
    field = dsp::flushed(value);
  }
  void look(S value) noexcept { seen_ |= dsp::bitsOf(value); }
  // Whether a channel may hold what a filter must not go on with; then its fields are worth a closer look.
  [[nodiscard]] bool suspicious() const noexcept { return dsp::anyBit(seen_, kTopExponentBit); }

 private:
  static constexpr int kTopExponentBit = 0x40000000;  // set from 2 on, in infinities and in NaNs

  dsp::Bits<S> seen_{};
};

template <class S>
struct Job {
  SignalMemory<S>& memory;
  DelayLines<S>& lines;
  FilterClock& clock;
  const FilterCoefs& coefs;
  Watch<S>& watch;
  const float* in;  // frames; may be `out`
  float* out;
  long count;
};

template <class S>
using KernelFunction = void (*)(Job<S>& job) noexcept;

// One kernel for one channel and for a pair.
struct Kernels {
  KernelFunction<float> mono;
  KernelFunction<dsp::Quad> stereo;
};

// Flattened, so that the whole kernel lives in registers.
template <class S, class K>
[[gnu::flatten]] void run(Job<S>& job) noexcept {
  K kernel(job);
  const float* const in = job.in;
  float* const out = job.out;
  const long last = job.count * dsp::kLanes<S>;
  Watch<S> watch;
  for (long i = 0; i < last; i += dsp::kLanes<S>) {
    const S result = kernel(dsp::loadFrame<S>(in + i));
    watch.look(result);
    dsp::storeFrame(out + i, result);
  }
  job.watch = watch;
  kernel.keep(job);
}

// `Kind` names a kernel of any sample type: Kind::Of<S>.
template <class Kind>
inline constexpr Kernels kKernels = {&run<float, typename Kind::template Of<float>>,
                                     &run<dsp::Quad, typename Kind::template Of<dsp::Quad>>};

// Two kernels that sound the same, the first one faster where it applies: `Fast::appliesTo(job)`.
template <class S, class Fast, class Full>
void runEither(Job<S>& job) noexcept {
  if (Fast::appliesTo(job)) {
    run<S, typename Fast::template Of<S>>(job);
  } else {
    run<S, typename Full::template Of<S>>(job);
  }
}
template <class Fast, class Full>
inline constexpr Kernels kEither = {&runEither<float, Fast, Full>, &runEither<dsp::Quad, Fast, Full>};

// Cubic limiter: +-1 at an input of +-1.5, with zero slope there, and constant beyond.
template <class S>
[[nodiscard]] inline S softClip(S x) noexcept {
  constexpr float kCubic = 0.14814815f;  // 4/27, which is 1 / (3 * 1.5^2)
  const S t = dsp::limited(x, -1.5f, 1.5f);
  return t - kCubic * (t * t * t);
}

// Where loops of phasers, combs and flangers are cut off: 5/6, the most that comes back.
inline constexpr float kLoopLimit = 0.8333333f;

// Below this, no cube moves the last bit of what it is taken from.
inline constexpr float kCubeCounts = 1e-10f;

// The same from one stage to the next, where a signal may die slowly.
template <class S>
[[nodiscard]] inline S clippedBetween(S x) noexcept {
  return dsp::anyAbove(x, kCubeCounts) ? softClip(x) : x;
}

// One sample of a filter that takes two steps per sample: the tap before, between and after them, weighted 1/4, 1/2,
// 1/4. That is a low-pass with its zero at half the rate of the steps, the simplest way back from two steps to one
// sample.
template <class S, class Steps, class Tap>
[[nodiscard]] inline S twoSteps(Steps& filter, const Tap& tap, S first, S second) noexcept {
  const S before = tap(filter);
  filter.step(first);
  const S between = tap(filter);
  filter.step(second);
  return 0.25f * before + 0.5f * between + 0.25f * tap(filter);
}

// Both steps hear the same input in nearly all types.
template <class S, class Steps, class Tap>
[[nodiscard]] inline S twoSteps(Steps& filter, const Tap& tap, S u) noexcept {
  return twoSteps(filter, tap, u, u);
}

// The drive in front of nearly all types.
template <class S>
class DriveStage {
 public:
  explicit DriveStage(const FilterCoefs& k) noexcept : gain_(dsp::both<S>(k.driveGain)) {}
  [[nodiscard]] S operator()(S in) const noexcept { return softClip(in * gain_); }
  // For what comes back from a loop.
  [[nodiscard]] S between(S x) const noexcept { return clippedBetween(x * gain_); }

 private:
  S gain_;
};

// tap * wet + dry signal * dry.
template <class S>
class MixStage {
 public:
  explicit MixStage(const FilterCoefs& k) noexcept : wet_(dsp::both<S>(k.wet)), dry_(dsp::both<S>(k.dry)) {}
  [[nodiscard]] S operator()(S tap, S through) const noexcept { return tap * wet_ + through * dry_; }

 private:
  S wet_, dry_;
};

// Input and output stage round an `Inner` kernel that makes a tap of the driven sample.
template <class Inner>
struct Mixed {
  template <class S>
  [[nodiscard]] static bool appliesTo(const Job<S>& job) noexcept {
    return Inner::appliesTo(job);
  }

  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : drive_(job.coefs), mix_(job.coefs), inner_(job) {}
    S operator()(S in) noexcept {
      const S y = drive_(in);
      return mix_(inner_.tap(y), y);
    }
    void keep(Job<S>& job) noexcept { inner_.keep(job); }

   private:
    DriveStage<S> drive_;
    MixStage<S> mix_;
    typename Inner::template Of<S> inner_;
  };
};

}  // namespace filters::kernels
