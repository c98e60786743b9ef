// The frame of every kernel: one block's job, the input and output stages, and what is checked at a block's end.
//
// A kernel is a small class over the sample type: it takes coefficients and state to registers when it is made, turns
// one input into one output per call, and gives its state back with `keep`. `run` is the loop round it.
#pragma once

#include "filters/FilterMemory.h"

namespace kernels {

// Looks at all that stays behind at a block's end: values that grew beyond reason or stopped being numbers mark their
// channel as broken, and traces too small to be heard become zero before they turn into denormal numbers.
template <class S>
class Watch {
 public:
  static constexpr float kBeyondReason = 1e6f;
  static constexpr float kTrace = 1e-18f;

  void keep(S& field, S value) noexcept {
    look(value);
    field = dsp::withoutTraces(value, kTrace);
  }
  void look(S value) noexcept;
  // Frames of a finished block. Read as they were written, one by one: a wider load would wait for the stores.
  void lookAll(const float* frames, long count) noexcept {
    for (long i = 0; i < count; ++i) look(dsp::loadFrame<S>(frames + i * dsp::kLanes<S>));
  }
  [[nodiscard]] bool anyBroken() const noexcept;
  [[nodiscard]] bool broken(int lane) const noexcept;

 private:
  typename dsp::Mask<S> broken_{};
};

template <>
inline void Watch<float>::look(float value) noexcept {
  broken_ = broken_ || !(std::fabs(value) <= kBeyondReason);
}
template <>
inline bool Watch<float>::anyBroken() const noexcept {
  return broken_;
}
template <>
inline bool Watch<float>::broken(int) const noexcept {
  return broken_;
}

template <>
inline void Watch<dsp::Quad>::look(dsp::Quad value) noexcept {
  broken_ |= ~(dsp::magnitude(value) <= dsp::quadOf(kBeyondReason));
}
template <>
inline bool Watch<dsp::Quad>::anyBroken() const noexcept {
  return (broken_[0] | broken_[1]) != 0;
}
template <>
inline bool Watch<dsp::Quad>::broken(int lane) const noexcept {
  return broken_[lane] != 0;
}

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

template <class S, class K>
void run(Job<S>& job) noexcept {
  K kernel(job);
  const float* const in = job.in;
  float* const out = job.out;
  const long last = job.count * dsp::kLanes<S>;
  for (long i = 0; i < last; i += dsp::kLanes<S>) dsp::storeFrame(out + i, kernel(dsp::loadFrame<S>(in + i)));
  kernel.keep(job);
}

// `Kind` names a kernel of any sample type: Kind::Of<S>.
template <class Kind>
inline constexpr Kernels kKernels = {&run<float, typename Kind::template Of<float>>,
                                     &run<dsp::Quad, typename Kind::template Of<dsp::Quad>>};

// Cubic limiter: +-1 at an input of +-1.5, with zero slope there, and constant beyond.
template <class S>
[[nodiscard]] inline S softClip(S x) noexcept {
  const S t = dsp::limited(x, -1.5f, 1.5f);
  return t - 0.14814815f * (t * t * t);
}

// Below this, no cube moves the last bit of what it is taken from.
inline constexpr float kCubeCounts = 1e-10f;

// The same from one stage to the next, where a signal may die slowly.
template <class S>
[[nodiscard]] inline S clippedBetween(S x) noexcept {
  return dsp::anyAbove(x, kCubeCounts) ? softClip(x) : x;
}

// The drive in front of nearly all types.
template <class S>
class DriveStage {
 public:
  explicit DriveStage(const FilterCoefs& k) noexcept : gain_(dsp::both<S>(k.driveGain)) {}
  [[nodiscard]] S operator()(S in) const noexcept { return softClip(in * gain_); }

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

}  // namespace kernels
