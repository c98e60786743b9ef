// SPDX-License-Identifier: MIT
// Combs and flangers: one fractional delay of a period of the pitch, read by cubic Hermite interpolation, with feedback
// and a filter in the loop.
//
// Good at: pitch, as a plucked string or a pipe: peaks or notches on every overtone, for the price of one delay. Bad
// at: highs, which the interpolation dulls with each turn round the loop, and sudden jumps of pitch, to which the delay
// glides.
#pragma once

#include <utility>

#include "filters/PhaserKernels.h"

namespace filters::kernels {

// The line, its gliding read position and its write position. Where the next sample reads is known a sample ahead, so
// that finding the place does not lie on the way from input to output.
template <class S>
class FractionalDelay {
 public:
  explicit FractionalDelay(Job<S>& job) noexcept
      : data_(job.lines.main.data),
        mask_(job.lines.main.mask),
        target_(job.clock.delaySmooth.target),
        coef_(job.clock.delaySmooth.coef),
        current_(job.clock.delaySmooth.current),
        bias_(job.clock.delaySmooth.denormalBias),
        nextBias_(VSmoothLog::turned(bias_)),
        position_(job.clock.writePos & mask_),
        newest_(job.lines.main.read(position_ - 1)) {
    lookAhead();
  }

  // Stores the newest sample and reads the one a delay time behind it.
  S operator()(S newest) noexcept {
    behind_ = newest_;
    newest_ = newest;
    dsp::storeFrame(slot(position_), newest);
    const long i = nextPlace_;
    const S t = dsp::both<S>(nextFraction_);
    current_ = nextCurrent_;
    std::swap(bias_, nextBias_);  // it alternates between two values
    written_ = position_;
    position_ = (position_ + 1) & mask_;
    lookAhead();
    return interpolated(i, t);
  }

  // The loop closes one slot behind the newest sample.
  void feedBack(S x) noexcept { dsp::storeFrame(slot((written_ - 1) & mask_), dsp::flushed(behind_ + x)); }

  void keep(Job<S>& job) noexcept {
    job.clock.delaySmooth.current = current_;
    job.clock.delaySmooth.denormalBias = bias_;
    job.clock.writePos = position_;
  }

 private:
  void lookAhead() noexcept {
    nextCurrent_ = current_ + ((target_ - current_) * coef_ + nextBias_);
    const float p = static_cast<float>(position_) - nextCurrent_;
    nextPlace_ = floorOf(p);
    nextFraction_ = p - static_cast<float>(nextPlace_);
  }

  [[nodiscard]] static long floorOf(float p) noexcept {
    const auto truncated = static_cast<int>(p);
    return truncated - (static_cast<float>(truncated) > p ? 1 : 0);
  }
  [[nodiscard]] float* slot(long reduced) const noexcept { return data_ + reduced * dsp::kLanes<S>; }

  // Four neighbours from i - 1 on, t of the way from the second to the third.
  [[nodiscard]] S interpolated(long i, S t) const noexcept {
    const long first = (i - 1) & mask_;
    if (first + 3 <= mask_) [[likely]] {
      const float* const from = slot(first);
      constexpr int k = dsp::kLanes<S>;
      return hermite(dsp::loadFrame<S>(from), dsp::loadFrame<S>(from + k), dsp::loadFrame<S>(from + 2 * k),
                     dsp::loadFrame<S>(from + 3 * k), t);
    }
    const auto at = [this](long j) { return dsp::loadFrame<S>(slot(j & mask_)); };
    return hermite(at(i - 1), at(i), at(i + 1), at(i + 2), t);
  }

  [[nodiscard]] static S hermite(S a, S b, S c, S d, S t) noexcept {
    const S h = (c - a) * 0.5f;
    const S k = (d - a) * 0.5f + (b - c) * 1.5f;
    return ((k * t + (a - b + h - k)) * t + h) * t + b;
  }

  float* data_;
  long mask_;
  float target_, coef_, current_, bias_, nextBias_;
  float nextCurrent_ = 0.0f, nextFraction_ = 0.0f;
  long nextPlace_ = 0;
  long position_, written_ = 0;
  S newest_, behind_{};  // the last two samples stored
};

enum class Loop { comb, flanger };

// A comb scales the delayed signal before everything else, a flanger only what goes back into the line. The dry path
// is one sample late.
template <Loop kLoop, class Post>
struct Comb {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : drive_(job.coefs),
          mix_(job.coefs),
          delay_(job),
          post_(job),
          feedback_(dsp::both<S>(job.coefs.delay.feedback)),
          late_(job.memory.late) {}

    S operator()(S in) noexcept {
      const S y = drive_(in);
      S r = delay_(y);
      if constexpr (kLoop == Loop::comb) r *= feedback_;
      const S s = post_(dsp::limited(r, -kLoopLimit, kLoopLimit));
      delay_.feedBack(kLoop == Loop::comb ? s : feedback_ * s);
      const S out = mix_(s, late_);
      late_ = y;
      return out;
    }

    void keep(Job<S>& job) noexcept {
      delay_.keep(job);
      post_.keep(job);
      job.watch.keep(job.memory.late, late_);
    }

   private:
    DriveStage<S> drive_;
    MixStage<S> mix_;
    FractionalDelay<S> delay_;
    typename Post::template Of<S> post_;
    S feedback_, late_;
  };
};

// A flanger with a short phaser inside its loop.
struct ShortPhaser {
  template <class S>
  using Of = AllPassChain<S, 2>;
};
using FlangerPhaser = Comb<Loop::flanger, Both<HighPassLowPass, ShortPhaser>>;

}  // namespace filters::kernels
