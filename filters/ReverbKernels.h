// SPDX-License-Identifier: MIT
// Networks of tuned delays: combs side by side, all-passes in a row, both together, and a low-pass that feeds back
// through two delays. Delays are whole samples; all lines share one write position.
//
// Good at: tuned, metallic resonance and small rooms, whose size sweeps with the cutoff. Bad at: natural halls: eight
// combs are few echoes a second, and a moving size clicks from sample to sample.
#pragma once

#include "filters/StateVariableKernels.h"

namespace filters::kernels {

// The lines of a network in a kernel's registers: all but the main one are of the same length.
template <class S, std::size_t kLines>
class Lines {
 public:
  Lines(const DelayLine<S>* lines, const long* delays) noexcept : mask_(lines[0].mask) {
    for (std::size_t i = 0; i < kLines; ++i) {
      data_[i] = lines[i].data;
      delay_[i] = delays[i];
    }
  }

  void moveTo(long position) noexcept { position_ = position; }
  [[nodiscard]] S read(int line) const noexcept { return dsp::loadFrame<S>(slot(line, position_ - delay_[line])); }
  // Flushed, so that no loop ends in denormal numbers.
  void write(int line, S value) const noexcept { dsp::storeFrame(slot(line, position_), dsp::flushed(value)); }

 private:
  [[nodiscard]] float* slot(int line, long position) const noexcept {
    return data_[line] + (position & mask_) * dsp::kLanes<S>;
  }

  long mask_, position_ = 0;
  float* data_[kLines];
  long delay_[kLines];
};

// The position of the sample under way, in all lines.
template <class S>
class LineClock {
 public:
  explicit LineClock(Job<S>& job) noexcept : position_(job.clock.writePos), mask_(job.lines.main.mask) {}
  long next() noexcept { return position_ = (position_ + 1) & mask_; }
  void keep(Job<S>& job) noexcept { job.clock.writePos = position_; }

 private:
  long position_, mask_;
};

// How fast the loops' DC is followed: a hundredth of the way per sample, or per block in the bank of combs.
inline constexpr float kDcShare = 0.01f;

// Eight damped feedback combs.
template <class S>
class CombBank {
 public:
  explicit CombBank(Job<S>& job) noexcept
      : lines_(job.lines.comb, job.coefs.network.combSamples),
        damping_(dsp::both<S>(job.coefs.network.damping)),
        feedback_(dsp::both<S>(job.coefs.network.combFeedback)) {
    for (int i = 0; i < kCombs; ++i) damp_[i] = job.memory.damp[i];
  }

  S operator()(S x, long p) noexcept {
    S sum = dsp::both<S>(0.0f);
    lines_.moveTo(p);
    for (int i = 0; i < kCombs; ++i) {
      const S r = lines_.read(i);
      damp_[i] += (r - damp_[i]) * damping_;
      lines_.write(i, damp_[i] * feedback_ + x);
      sum = sum + r;
    }
    return sum;
  }

  // Takes the DC out of the loops, slowly: once a block.
  void trackDc(Job<S>& job) noexcept {
    for (int i = 0; i < kCombs; ++i) {
      const S dc = job.memory.dcTrack[i] + (damp_[i] - job.memory.dcTrack[i]) * kDcShare;
      damp_[i] = damp_[i] - dc;
      job.watch.keep(job.memory.dcTrack[i], dc);
    }
  }

  void keep(Job<S>& job) noexcept {
    for (int i = 0; i < kCombs; ++i) job.watch.keep(job.memory.damp[i], damp_[i]);
  }

 private:
  Lines<S, kCombs> lines_;
  S damping_, feedback_;
  S damp_[kCombs];
};

struct Combs {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : clock_(job), bank_(job), input_(dsp::both<S>(job.coefs.network.input)) {}
    S tap(S y) noexcept { return bank_(input_ * y, clock_.next()); }
    void keep(Job<S>& job) noexcept {
      clock_.keep(job);
      bank_.trackDc(job);
      bank_.keep(job);
    }

   private:
    LineClock<S> clock_;
    CombBank<S> bank_;
    S input_;
  };
};

// The damping in loops of their own: a low-pass, less a slow estimate of the DC.
template <class S, std::size_t kLoops>
class DampedLoops {
 public:
  explicit DampedLoops(const Job<S>& job) noexcept : damping_(dsp::both<S>(job.coefs.network.damping)) {
    for (std::size_t i = 0; i < kLoops; ++i) {
      damp_[i] = job.memory.damp[i];
      dc_[i] = job.memory.dcTrack[i];
    }
  }

  S operator()(int loop, S r) noexcept {
    damp_[loop] += (r - damp_[loop]) * damping_;
    dc_[loop] += (damp_[loop] - dc_[loop]) * kDcShare;
    return damp_[loop] - dc_[loop];
  }

  void keep(Job<S>& job) noexcept {
    for (std::size_t i = 0; i < kLoops; ++i) {
      job.watch.keep(job.memory.damp[i], damp_[i]);
      job.watch.keep(job.memory.dcTrack[i], dc_[i]);
    }
  }

 private:
  S damping_;
  S damp_[kLoops], dc_[kLoops];
};

// Delays in a row that pass every frequency at its level: h = d - a u, and the line takes u + a h. Before that, the
// delayed signal d of each line i becomes `shape(i, d)`.
template <class S>
class AllPassRow {
 public:
  explicit AllPassRow(const Job<S>& job) noexcept
      : lines_(job.lines.ap, job.coefs.network.allPassSamples), coef_(dsp::both<S>(job.coefs.network.allPass)) {}

  template <class Shape>
  S operator()(S u, long p, Shape shape) noexcept {
    lines_.moveTo(p);
    for (int i = 0; i < kAllPasses; ++i) {
      const S h = shape(i, lines_.read(i)) - u * coef_;
      lines_.write(i, coef_ * h + u);
      u = h;
    }
    return u;
  }

 private:
  Lines<S, kAllPasses> lines_;
  S coef_;
};

struct AllPasses {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : row_(job), clock_(job), loops_(job), input_(dsp::both<S>(job.coefs.network.input)) {}

    S tap(S y) noexcept {
      return row_(input_ * y, clock_.next(), [this](int i, S delayed) noexcept { return loops_(i, delayed); });
    }

    void keep(Job<S>& job) noexcept {
      clock_.keep(job);
      loops_.keep(job);
    }

   private:
    AllPassRow<S> row_;
    LineClock<S> clock_;
    DampedLoops<S, kAllPasses> loops_;
    S input_;
  };
};

struct Reverb {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : row_(job), clock_(job), bank_(job), input_(dsp::both<S>(job.coefs.network.input)) {}

    S tap(S y) noexcept {
      const long p = clock_.next();
      return row_(bank_(input_ * y, p), p, [](int, S delayed) noexcept { return delayed; });
    }

    void keep(Job<S>& job) noexcept {
      clock_.keep(job);
      bank_.keep(job);
    }

   private:
    AllPassRow<S> row_;
    LineClock<S> clock_;
    CombBank<S> bank_;
    S input_;
  };
};

// A 12 dB stage of coefficients so small that its band never meets the limit of a step, and that its cube is lost in
// rounding until the band is large.
struct NearlyStill {
  template <class S, Needs kNeeds>
  struct Stage : TwoPole<S, kNeeds> {
    Stage(Job<S>& job, Slot slot) noexcept
        : TwoPole<S, kNeeds>(job, slot), cubic(dsp::both<S>(stageCoefs(job.coefs, slot).cubic)) {}

    void step(S u) noexcept {
      constexpr float kCubeIsLost = 0.1f;  // cubic b^2 is below 2^-25 up to here
      this->low += this->f * this->band;
      const S b = this->band + this->f * (u - this->q * this->band - this->low);
      this->band = dsp::anyAbove(b, kCubeIsLost) ? b - cubic * (b * b * b) : b;
    }

    S cubic;
  };
};

// A resonant low-pass into a second stage that stands nearly still, and back to its input through two damped delays.
// Good at: grit and a hollow, wavering body round a plain low-pass. Bad at: clean resonance, since what comes back is
// driven again.
struct French {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : lines_(job.lines.ap, job.coefs.network.allPassSamples),
          clock_(job),
          loops_(job),
          drive_(job.coefs),
          a_(job, Slot::a),
          b_(job, Slot::b),
          return_(dsp::both<S>(job.coefs.network.comesBack)),
          wet_(dsp::both<S>(job.coefs.wet * kOutput)),
          dry_(dsp::both<S>(job.coefs.dry)),
          back_(job.memory.back) {}

    S operator()(S in) noexcept {
      const S y = drive_(in);
      const S a = twoSteps(a_, Low{}, drive_.between(return_ * back_ + y));
      const S u = clippedBetween(a);
      b_.step(u);
      const S l1 = b_.low;
      b_.step(u);
      const S s = a + 0.5f * l1 + 0.25f * b_.low;
      feedBack(clippedBetween(s));
      return dsp::limited(wet_ * s, -1.0f, 1.0f) + y * dry_;
    }

    void keep(Job<S>& job) noexcept {
      clock_.keep(job);
      a_.keep(job, Slot::a);
      b_.keep(job, Slot::b);
      job.watch.keep(job.memory.back, back_);
      loops_.keep(job);
    }

   private:
    static constexpr float kOutput = 0.25f;  // for a sum of three taps

    void feedBack(S u) noexcept {
      lines_.moveTo(clock_.next());
      for (int i = 0; i < kFrenchDelays; ++i) {
        const S r = lines_.read(i);
        lines_.write(i, u);
        u = loops_(i, r);
      }
      back_ = u;
    }

    Lines<S, kFrenchDelays> lines_;
    LineClock<S> clock_;
    DampedLoops<S, kFrenchDelays> loops_;
    DriveStage<S> drive_;
    typename NonLinear::template Stage<S, Needs::nothing> a_;
    typename NearlyStill::template Stage<S, Needs::nothing> b_;
    S return_, wet_, dry_, back_;
  };
};

}  // namespace filters::kernels
