// SPDX-License-Identifier: MIT
// Ladders: four poles in a row with feedback round all of them.
//
// Good at: the round, singing resonance of one loop, and slopes of 6 to 24 dB from the same four poles. Bad at: lows,
// which the feedback takes away as resonance rises. The first form hears its own output a step late, which costs tuning
// and stability at high cutoffs; the zero-delay form stays in tune and saturates softly, at about twice the price.
#pragma once

#include "filters/Kernel.h"

namespace filters::kernels {

// `kTap` is the pole that is heard, counted from 0.
template <int kTap>
struct Ladder {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : input_(dsp::both<S>(job.coefs.ladder.input)),
          previous_(dsp::both<S>(job.coefs.ladder.previous)),
          decay_(dsp::both<S>(job.coefs.ladder.decay)),
          feedback_(dsp::both<S>(job.coefs.ladder.feedback)),
          inGain_(dsp::both<S>(job.coefs.inGain)) {
      for (int i = 0; i < kLadderPoles; ++i) {
        out_[i] = job.memory.chain[i];
        in_[i] = job.memory.chainPrev[i];
      }
    }

    S tap(S y) noexcept {
      return twoSteps(
          *this, [](const Of& ladder) { return ladder.out_[kTap]; }, inGain_ * y);
    }

    void step(S u) noexcept {
      constexpr float kLimit = 1.6666666f;  // 5/3 at the first pole
      S x = dsp::limited(u - feedback_ * out_[kLadderPoles - 1], -kLimit, kLimit);
      for (int i = 0; i < kLadderPoles; ++i) {
        const S y = input_ * x + previous_ * in_[i] - decay_ * out_[i];
        in_[i] = x;
        out_[i] = y;
        x = y;
      }
    }

    void keep(Job<S>& job) noexcept {
      for (int i = 0; i < kLadderPoles; ++i) {
        job.watch.keep(job.memory.chain[i], out_[i]);
        job.watch.keep(job.memory.chainPrev[i], in_[i]);
      }
    }

   private:
    S input_, previous_, decay_, feedback_, inGain_;
    S out_[kLadderPoles], in_[kLadderPoles];
  };
};

// Four stages shaped by tanh, solved for the sample without a delay in the feedback: the gains that tanh has at the
// state are taken as constant, which leaves a linear system with a closed solution.
struct German {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : drive_(job.coefs),
          mix_(job.coefs),
          g_(dsp::both<S>(job.coefs.zeroDelay.g)),
          k_(dsp::both<S>(job.coefs.zeroDelay.feedback)),
          s1_(job.memory.chain[0]),
          s2_(job.memory.chain[1]),
          s3_(job.memory.chain[2]),
          s4_(job.memory.chain[3]),
          previous_(job.memory.previous) {}

    S operator()(S in) noexcept {
      const S y = drive_(in);
      const S average = (previous_ + y) * 0.5f;
      previous_ = y;
      const S t0 = tanhGain(average - k_ * s4_);
      const S t1 = tanhGain(s1_), t2 = tanhGain(s2_), t3 = tanhGain(s3_), t4 = tanhGain(s4_);
      const S d1 = 1.0f / (1.0f + g_ * t1), d2 = 1.0f / (1.0f + g_ * t2);
      const S d3 = 1.0f / (1.0f + g_ * t3), d4 = 1.0f / (1.0f + g_ * t4);
      const S e3 = g_ * t3 * d4, e2 = g_ * t2 * d3 * e3, e1 = g_ * t1 * d2 * e2, e0 = g_ * t0 * d1 * e1;
      const S y4 = (y * e0 + e1 * d1 * s1_ + e2 * d2 * s2_ + e3 * d3 * s3_ + d4 * s4_) / (1.0f + k_ * e0);
      const S u0 = (y - k_ * y4) * t0;
      const S u1 = (g_ * u0 + s1_) * d1 * t1;
      const S u2 = (g_ * u1 + s2_) * d2 * t2;
      const S u3 = (g_ * u2 + s3_) * d3 * t3;
      const S twice = 2.0f * g_;
      s1_ += twice * (u0 - u1);
      s2_ += twice * (u1 - u2);
      s3_ += twice * (u2 - u3);
      s4_ += twice * (u3 - t4 * y4);
      return mix_(y4, in);
    }

    void keep(Job<S>& job) noexcept {
      job.watch.keep(job.memory.chain[0], s1_);
      job.watch.keep(job.memory.chain[1], s2_);
      job.watch.keep(job.memory.chain[2], s3_);
      job.watch.keep(job.memory.chain[3], s4_);
      job.watch.keep(job.memory.previous, previous_);
    }

   private:
    // tanh(x) / x: the continued fraction of tanh, broken off after its fifth term.
    [[nodiscard]] static S tanhGain(S x) noexcept {
      const auto w = dsp::widened(x);
      const auto square = w * w;
      return dsp::narrowed(((square + 105.0) * square + 945.0) / ((15.0 * square + 420.0) * square + 945.0));
    }

    DriveStage<S> drive_;
    MixStage<S> mix_;
    S g_, k_;
    S s1_, s2_, s3_, s4_, previous_;
  };
};

}  // namespace filters::kernels
