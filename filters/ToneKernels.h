// SPDX-License-Identifier: MIT
// Equalisers, ring modulators, sample and hold, and the sub-harmonic enhancer.
//
// Equalisers are exact where they leave the signal flat, but their boost grows by the cube, most of it near the end of
// the knob. Ring modulators make bells that follow no key; their carrier needs a moment to swing up. Sample and hold is
// rough on purpose: its images and steps are not filtered away. The enhancer thickens soft bass; loud sounds fold back
// on themselves.
#pragma once

#include <numbers>

#include "filters/StateVariableKernels.h"

namespace filters::kernels {

// The band of a stage added to the whole signal by a signed gain.
template <class Kind, class Tap>
struct Equaliser {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : a_(job, Slot::a), gain_(dsp::both<S>(job.coefs.bandGain)) {}
    S tap(S y) noexcept { return twoSteps(a_, Tap{}, y) * gain_ + y; }
    void keep(Job<S>& job) noexcept { a_.keep(job, Slot::a); }

   private:
    typename Kind::template Stage<S, Tap::kNeeds> a_;
    S gain_;
  };
};

// A stage that oscillates by itself, from the seed that a change of type leaves in it. It stays as it is: what passes
// through zero must not be taken for silence.
template <class S, Slot kSlot>
class Oscillator {
 public:
  explicit Oscillator(Job<S>& job) noexcept : stage_(job, kSlot) {}
  S operator()() noexcept { return twoSteps(stage_, Low{}, dsp::both<S>(0.0f)); }
  void keep(Job<S>& job) noexcept {
    job.watch.look(stage_.low);
    job.watch.look(stage_.band);
    stageMemory(job, kSlot).low = stage_.low;
    stageMemory(job, kSlot).band = stage_.band;
  }

 private:
  typename NonLinear::template Stage<S, Needs::nothing> stage_;
};

struct Ring {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : carrier_(job) {}
    S tap(S y) noexcept { return carrier_() * y; }
    void keep(Job<S>& job) noexcept { carrier_.keep(job); }

   private:
    Oscillator<S, Slot::a> carrier_;
  };
};

struct RingTwice {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : first_(job), second_(job) {}
    S tap(S y) noexcept {
      const S c1 = first_();
      return c1 * y * second_();
    }
    void keep(Job<S>& job) noexcept {
      first_.keep(job);
      second_.keep(job);
    }

   private:
    Oscillator<S, Slot::a> first_;
    Oscillator<S, Slot::b> second_;
  };
};

// Holds a sample for a period of the pitch, at fewer levels as the resonance rises; or what that takes away.
template <bool kRemainder>
struct SampleHold {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : phase_(job.clock.holdPhase),
          step_(job.coefs.hold.step),
          levels_(dsp::both<S>(job.coefs.hold.levels)),
          perLevel_(job.coefs.hold.levels),
          held_(job.memory.held) {}

    S tap(S y) noexcept {
      phase_ += step_;
      if (phase_ >= 1.0) {
        phase_ -= 1.0;
        held_ = dsp::truncated(y * levels_ + 0.5f) / perLevel_;
      }
      return kRemainder ? y - held_ : held_;
    }

    void keep(Job<S>& job) noexcept {
      job.clock.holdPhase = phase_;
      job.watch.keep(job.memory.held, held_);
    }

   private:
    double phase_, step_;
    S levels_;
    float perLevel_;
    S held_;
  };
};

// sin(x) for |x| up to pi, within an ulp or two of the double result: folded to half a turn, then the odd series.
template <class D>
[[nodiscard]] inline D sine(D x) noexcept {
  constexpr double kPiLow = 1.2246467991473532e-16;  // what pi as a double leaves out
  const D m = dsp::magnitude(x);
  const D r = dsp::smaller(m, (std::numbers::pi - m) + kPiLow);
  const D z = r * r;
  D sum = z * 2.8114572543455207632e-15 - 7.6471637318198164759e-13;
  sum = sum * z + 1.6059043836821614599e-10;
  sum = sum * z - 2.5052108385441718775e-08;
  sum = sum * z + 2.7557319223985890653e-06;
  sum = sum * z - 1.9841269841269841270e-04;
  sum = sum * z + 8.3333333333333333333e-03;
  sum = sum * z - 1.6666666666666666667e-01;
  return dsp::withSignOf(r + r * (z * sum), x);
}

// A low-pass whose second step hears the sine of the signal in place of the signal.
struct AddBass {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : drive_(job.coefs),
          a_(job, Slot::a),
          through_(dsp::both<S>(job.coefs.through)),
          wet_(dsp::both<S>(job.coefs.wet)),
          dry_(dsp::both<S>(job.coefs.dry)) {}

    S operator()(S in) noexcept {
      const S y = drive_(in);
      const S c = twoSteps(a_, Low{}, y, sineOfPi(y));
      return (y * through_ - c) * wet_ * kOutput + in * dry_;
    }

    void keep(Job<S>& job) noexcept { a_.keep(job, Slot::a); }

   private:
    static constexpr float kOutput = 0.5f;  // signal and enhancement are two signals of full scale

    // sin(pi y) for y from -1 to 1.
    [[nodiscard]] static S sineOfPi(S y) noexcept { return dsp::narrowed(sine(dsp::widened(y) * std::numbers::pi)); }

    DriveStage<S> drive_;
    typename NonLinear::template Stage<S, Needs::nothing> a_;
    S through_, wet_, dry_;
  };
};

}  // namespace filters::kernels
