// SPDX-License-Identifier: MIT
// Vowels: band-pass resonators side by side on the undriven input.
//
// Good at: the colour of a voice on anything that has overtones. Bad at: sounds without energy round the formants,
// which come out as next to nothing; there is no dry part unless the mix adds it.
#pragma once

#include "filters/Kernel.h"

namespace filters::kernels {

template <std::size_t kFormants>
struct Formant {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : mix_(job.coefs), mixed_(job.coefs.wet < 1.0f) {
      x1_ = job.memory.inputs[0];
      x2_ = job.memory.inputs[1];
      for (std::size_t i = 0; i < kFormants; ++i) {
        const dsp::Filter2p& k = job.coefs.resonator[i];
        b0_[i] = dsp::both<S>(k.zB[0]);
        b2_[i] = dsp::both<S>(k.zB[2]);
        a1_[i] = dsp::both<S>(k.zA[1]);
        a2_[i] = dsp::both<S>(k.zA[2]);
        y1_[i] = job.memory.resonator[i].y1;
        y2_[i] = job.memory.resonator[i].y2;
      }
    }

    // The numerator of a band-pass has no term of x1.
    S operator()(S x) noexcept {
      S sum = dsp::both<S>(0.0f);
      for (std::size_t i = 0; i < kFormants; ++i) {
        const S y = b0_[i] * x + b2_[i] * x2_ - (a1_[i] * y1_[i] + a2_[i] * y2_[i]);
        y2_[i] = y1_[i];
        y1_[i] = y;
        sum = sum + y;
      }
      x2_ = x1_;
      x1_ = x;
      return mixed_ ? mix_(sum, x) : sum;
    }

    void keep(Job<S>& job) noexcept {
      job.watch.keep(job.memory.inputs[0], x1_);
      job.watch.keep(job.memory.inputs[1], x2_);
      for (std::size_t i = 0; i < kFormants; ++i) {
        job.watch.keep(job.memory.resonator[i].y1, y1_[i]);
        job.watch.keep(job.memory.resonator[i].y2, y2_[i]);
      }
    }

   private:
    MixStage<S> mix_;
    bool mixed_;
    S x1_, x2_;
    S b0_[kFormants], b2_[kFormants], a1_[kFormants], a2_[kFormants];
    S y1_[kFormants], y2_[kFormants];
  };
};

}  // namespace filters::kernels
