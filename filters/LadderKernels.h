// Ladders: four poles with feedback round all of them.
#pragma once

#include "filters/Kernel.h"

namespace filters::kernels {

// Two passes a sample, the tap averaged as in the state-variable stages; `kTap` is the pole that is heard.
template <int kTap>
struct Ladder {
  template <class S>
  class Of {
   public:
    static constexpr int kPoles = 4;

    explicit Of(Job<S>& job) noexcept
        : input_(dsp::both<S>(job.coefs.chainCoef)),
          previous_(dsp::both<S>(job.coefs.ladderPrev)),
          decay_(dsp::both<S>(job.coefs.ladderFb)),
          feedback_(dsp::both<S>(job.coefs.feedback)),
          inGain_(dsp::both<S>(job.coefs.inGain)) {
      for (int i = 0; i < kPoles; ++i) {
        out_[i] = job.memory.chain[i];
        in_[i] = job.memory.chainPrev[i];
      }
    }

    S tap(S y) noexcept {
      const S g = inGain_ * y;
      const S before = out_[kTap];
      pass(g);
      const S between = out_[kTap];
      pass(g);
      return 0.25f * before + 0.5f * between + 0.25f * out_[kTap];
    }

    void keep(Job<S>& job) noexcept {
      for (int i = 0; i < kPoles; ++i) {
        job.watch.keep(job.memory.chain[i], out_[i]);
        job.watch.keep(job.memory.chainPrev[i], in_[i]);
      }
    }

   private:
    void pass(S g) noexcept {
      constexpr float kLimit = 1.6666666f;
      S x = dsp::limited(g - feedback_ * out_[3], -kLimit, kLimit);
      for (int i = 0; i < kPoles; ++i) {
        const S y = input_ * x + previous_ * in_[i] - decay_ * out_[i];
        in_[i] = x;
        out_[i] = y;
        x = y;
      }
    }

    S input_, previous_, decay_, feedback_, inGain_;
    S out_[kPoles], in_[kPoles];
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
          g_(dsp::both<S>(job.coefs.fB)),
          k_(dsp::both<S>(job.coefs.qA)),
          s1_(job.memory.chain[0]),
          s2_(job.memory.chain[1]),
          s3_(job.memory.chain[2]),
          s4_(job.memory.chain[3]),
          previous_(job.memory.germanPrev) {}

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
      job.watch.keep(job.memory.germanPrev, previous_);
    }

   private:
    // tanh(x) / x as a rational approximation.
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
