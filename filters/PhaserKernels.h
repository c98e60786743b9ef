// SPDX-License-Identifier: MIT
// Phasers: a chain of first-order all-passes with feedback round the chain, mixed with the plain signal.
//
// Good at: few wide notches that stand in no harmonic row, so they colour without a pitch; cheap, however low they
// stand. Bad at: sharp or many notches, since each takes two sections.
#pragma once

#include "filters/AllPass.h"
#include "filters/StateVariableKernels.h"

namespace filters::kernels {

template <class S, std::size_t kSections>
class AllPassChain {
 public:
  explicit AllPassChain(Job<S>& job) noexcept
      : coef_(dsp::both<S>(job.coefs.phaser.allPass)), feedback_(dsp::both<S>(job.coefs.phaser.feedback)) {
    for (std::size_t i = 0; i < kSections; ++i) {
      out_[i] = job.memory.chain[i];
      in_[i] = job.memory.chainPrev[i];
    }
  }

  S operator()(S x) noexcept {
    S w = dsp::limited(feedback_ * out_[kSections - 1] + x, -kLoopLimit, kLoopLimit);
    for (std::size_t i = 0; i < kSections; ++i) {
      const S y = dsp::allPass(w, out_[i], coef_, in_[i]);
      in_[i] = w;
      out_[i] = y;
      w = y;
    }
    return w;
  }

  void keep(Job<S>& job) noexcept {
    for (std::size_t i = 0; i < kSections; ++i) {
      job.watch.keep(job.memory.chain[i], out_[i]);
      job.watch.keep(job.memory.chainPrev[i], in_[i]);
    }
  }

 private:
  S coef_, feedback_;
  S out_[kSections], in_[kSections];
};

// What may stand in front of a phaser's chain and in a comb's loop.

// A one-pole high-pass at 1 Hz.
struct DcBlock {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : a_(job, Slot::a) {}
    S operator()(S x) noexcept {
      a_.step(x);
      return a_.high;
    }
    void keep(Job<S>& job) noexcept { a_.keep(job, Slot::a); }

   private:
    typename Pole::template Stage<S, Needs::high> a_;
  };
};

template <class Tap, Slot kSlot>
struct PoleFilter {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : stage_(job, kSlot) {}
    S operator()(S x) noexcept { return twoSteps(stage_, Tap{}, x); }
    void keep(Job<S>& job) noexcept { stage_.keep(job, kSlot); }

   private:
    typename Pole::template Stage<S, Needs::high> stage_;
  };
};
using LowPass = PoleFilter<Low, Slot::b>;
using HighPass = PoleFilter<High, Slot::a>;

template <class First, class Second>
struct Both {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : first_(job), second_(job) {}
    S operator()(S x) noexcept { return second_(first_(x)); }
    void keep(Job<S>& job) noexcept {
      first_.keep(job);
      second_.keep(job);
    }

   private:
    typename First::template Of<S> first_;
    typename Second::template Of<S> second_;
  };
};
using DcBlockLowPass = Both<DcBlock, LowPass>;
using HighPassLowPass = Both<HighPass, LowPass>;

template <class Front, std::size_t kSections>
struct Phaser {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : front_(job), chain_(job) {}
    S tap(S y) noexcept { return chain_(front_(y)); }
    void keep(Job<S>& job) noexcept {
      front_.keep(job);
      chain_.keep(job);
    }

   private:
    typename Front::template Of<S> front_;
    AllPassChain<S, kSections> chain_;
  };
};

}  // namespace filters::kernels
