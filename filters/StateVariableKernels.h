// SPDX-License-Identifier: MIT
// State-variable filters: two integrators in a loop, which give low-pass, band-pass and high-pass at once. A stage
// takes two steps per sample (`twoSteps`).
//
// Good at: all responses from one state, damping apart from the cutoff, cheap, smooth when its cutoff is swept fast.
// Bad at: high cutoffs, where damping has to grow to keep it stable, and steep slopes, which take a second stage. The
// cubic holds a ringing stage in bounds, so resonance sounds thicker and lower the louder it gets. The clean types
// leave the soft clipping out: they are the most exact ones, and clip hard when the band reaches 1.
#pragma once

#include "filters/Kernel.h"

namespace filters::kernels {

// One of the two stages of the filter's memory and coefficients.
enum class Slot { a, b };

[[nodiscard]] inline const StageCoefs& stageCoefs(const FilterCoefs& k, Slot slot) noexcept {
  return slot == Slot::a ? k.a : k.b;
}

template <class S>
[[nodiscard]] StageMemory<S>& stageMemory(Job<S>& job, Slot slot) noexcept {
  return slot == Slot::a ? job.memory.a : job.memory.b;
}

// What a tap reads of a 12 dB stage besides low and band. Only that lives on from sample to sample: every field less is
// a register more.
enum class Needs : unsigned { nothing = 0, high = 1, notch = 2, both = 3 };

[[nodiscard]] constexpr Needs operator|(Needs a, Needs b) noexcept {
  return static_cast<Needs>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
[[nodiscard]] constexpr bool includes(Needs all, Needs one) noexcept {
  return (static_cast<unsigned>(all) & static_cast<unsigned>(one)) != 0;
}

// Taps of a stage.
struct Low {
  static constexpr Needs kNeeds = Needs::nothing;
  template <class Stage>
  [[nodiscard]] auto operator()(const Stage& s) const noexcept {
    return s.low;
  }
};
struct High {
  static constexpr Needs kNeeds = Needs::high;
  template <class Stage>
  [[nodiscard]] auto operator()(const Stage& s) const noexcept {
    return s.high;
  }
};
struct Band {
  static constexpr Needs kNeeds = Needs::nothing;
  template <class Stage>
  [[nodiscard]] auto operator()(const Stage& s) const noexcept {
    return s.band;
  }
};
struct Notch {
  static constexpr Needs kNeeds = Needs::notch;
  template <class Stage>
  [[nodiscard]] auto operator()(const Stage& s) const noexcept {
    return s.notch;
  }
};
struct Peak {
  static constexpr Needs kNeeds = Needs::notch;
  template <class Stage>
  [[nodiscard]] auto operator()(const Stage& s) const noexcept {
    return s.notch + s.band;
  }
};

// 6 dB per octave.
struct Pole {
  template <class S, Needs>
  struct Stage {
    Stage(Job<S>& job, Slot slot) noexcept
        : low(stageMemory(job, slot).low),
          high(stageMemory(job, slot).high),
          f(dsp::both<S>(stageCoefs(job.coefs, slot).f)) {}

    void step(S u) noexcept {
      low += f * high;
      high = u - low;
    }

    void keep(Job<S>& job, Slot slot) noexcept {
      job.watch.keep(stageMemory(job, slot).low, low);
      job.watch.keep(stageMemory(job, slot).high, high);
    }

    S low, high;
    S f;
  };
};

// What the two 12 dB stages share.
template <class S, Needs kNeeds>
struct TwoPole {
  TwoPole(Job<S>& job, Slot slot) noexcept : TwoPole(stageMemory(job, slot), stageCoefs(job.coefs, slot)) {}
  TwoPole(const StageMemory<S>& m, const StageCoefs& k) noexcept
      : low(m.low), band(m.band), high(m.high), notch(m.notch), f(dsp::both<S>(k.f)), q(dsp::both<S>(k.q)) {}

  // Up to what the band moves by, which is the same in all stages.
  [[nodiscard]] S advance(S u) noexcept {
    notch = u - q * band;
    low += f * band;
    high = notch - low;
    return f * high;
  }

  void keep(Job<S>& job, Slot slot) noexcept {
    StageMemory<S>& m = stageMemory(job, slot);
    job.watch.keep(m.low, low);
    job.watch.keep(m.band, band);
    if constexpr (includes(kNeeds, Needs::high)) job.watch.keep(m.high, high);
    if constexpr (includes(kNeeds, Needs::notch)) job.watch.keep(m.notch, notch);
  }

  S low, band, high, notch;
  S f, q;
};

struct Linear {
  template <class S, Needs kNeeds>
  struct Stage : TwoPole<S, kNeeds> {
    using TwoPole<S, kNeeds>::TwoPole;

    void step(S u) noexcept { this->band += this->advance(u); }
  };
};

// 12 dB per octave, held by a cubic and by a limit to what the band may move in one step. The limit stands behind a
// branch that is hardly ever taken, since it lies on the way from one step to the next. The cube of a dying signal is
// left out: it is far below the band's last bit, and its underflow would cost more than all the rest.
struct NonLinear {
  template <class S, Needs kNeeds>
  struct Stage : TwoPole<S, kNeeds> {
    Stage(Job<S>& job, Slot slot) noexcept
        : TwoPole<S, kNeeds>(job, slot), cubic(dsp::both<S>(stageCoefs(job.coefs, slot).cubic)) {}

    void step(S u) noexcept {
      constexpr float kSlew = 0.8333333f;  // 5/6 of full scale in one step
      S move = this->advance(u);
      if (dsp::anyAbove(move, kSlew)) [[unlikely]]
        move = dsp::limited(move, -kSlew, kSlew);
      const S b = this->band + move;
      this->band = dsp::anyAbove(b, kCubeCounts) ? b - cubic * (b * b * b) : b;
    }

    S cubic;
  };
};

// Stage A alone.
template <class Kind, class Tap>
struct Single {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : a_(job, Slot::a), inGain_(dsp::both<S>(job.coefs.inGain)) {}
    S tap(S y) noexcept { return twoSteps(a_, Tap{}, inGain_ * y); }
    void keep(Job<S>& job) noexcept { a_.keep(job, Slot::a); }

   private:
    typename Kind::template Stage<S, Tap::kNeeds> a_;
    S inGain_;
  };
};

// Stage A into stage B.
template <class KindA, class TapA, class KindB, class TapB>
struct Series {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : a_(job, Slot::a), b_(job, Slot::b), inGain_(dsp::both<S>(job.coefs.inGain)) {}
    S tap(S y) noexcept { return twoSteps(b_, TapB{}, clippedBetween(twoSteps(a_, TapA{}, inGain_ * y))); }
    void keep(Job<S>& job) noexcept {
      a_.keep(job, Slot::a);
      b_.keep(job, Slot::b);
    }

   private:
    typename KindA::template Stage<S, TapA::kNeeds> a_;
    typename KindB::template Stage<S, TapB::kNeeds> b_;
    S inGain_;
  };
};

enum class Weights { glide, rest };

// Weighted sums of three taps. The weights glide to their targets; once a glide's step is lost in rounding, they rest.
template <Weights kWeights, class First, class Second, class Third>
struct MorphTaps {
  static constexpr Needs kNeeds = First::kNeeds | Second::kNeeds | Third::kNeeds;

  template <class S>
  [[nodiscard]] static bool rest(const Job<S>& job) noexcept {
    Of<S> next(job);
    next.glide();
    bool allRest = true;
    for (int i = 0; i < kMorphTaps; ++i) {
      const auto moved = dsp::bitsOf(next.weight_[i]) ^ dsp::bitsOf(job.memory.morph[i]);
      allRest = allRest && !dsp::anyBit(moved, -1);
    }
    return allRest;
  }

  template <class S>
  class Of {
   public:
    explicit Of(const Job<S>& job) noexcept
        : rate_(dsp::both<S>(job.coefs.morphRate)), keep_(dsp::both<S>(job.coefs.morphKeep)) {
      for (int i = 0; i < kMorphTaps; ++i) {
        weight_[i] = job.memory.morph[i];
        target_[i] = dsp::both<S>(job.coefs.morphTarget[i]);
      }
    }

    void glide() noexcept {
      for (int i = 0; i < kMorphTaps; ++i) weight_[i] = target_[i] * rate_ + weight_[i] * keep_;
    }
    void next() noexcept {
      if constexpr (kWeights == Weights::glide) glide();
    }

    template <class Stage>
    [[nodiscard]] S operator()(const Stage& s) const noexcept {
      return weight_[0] * First{}(s) + weight_[1] * Second{}(s) + weight_[2] * Third{}(s);
    }

    void keep(Job<S>& job) noexcept {
      if constexpr (kWeights == Weights::glide) {
        for (int i = 0; i < kMorphTaps; ++i) job.watch.keep(job.memory.morph[i], weight_[i]);
      }
    }

   private:
    friend struct MorphTaps;

    S rate_, keep_;
    S weight_[kMorphTaps], target_[kMorphTaps];
  };
};

template <class Taps>
struct Morph12 {
  template <class S>
  [[nodiscard]] static bool appliesTo(const Job<S>& job) noexcept {
    return Taps::rest(job);
  }

  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : taps_(job), a_(job, Slot::a), inGain_(dsp::both<S>(job.coefs.inGain)) {}
    S tap(S y) noexcept {
      taps_.next();
      return twoSteps(a_, taps_, inGain_ * y);
    }
    void keep(Job<S>& job) noexcept {
      taps_.keep(job);
      a_.keep(job, Slot::a);
    }

   private:
    typename Taps::template Of<S> taps_;
    typename NonLinear::template Stage<S, Taps::kNeeds> a_;
    S inGain_;
  };
};

template <class Taps>
struct Morph24 {
  template <class S>
  [[nodiscard]] static bool appliesTo(const Job<S>& job) noexcept {
    return Taps::rest(job);
  }

  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : taps_(job), a_(job, Slot::a), b_(job, Slot::b), inGain_(dsp::both<S>(job.coefs.inGain)) {}
    S tap(S y) noexcept {
      taps_.next();
      return twoSteps(b_, taps_, clippedBetween(twoSteps(a_, taps_, inGain_ * y)));
    }
    void keep(Job<S>& job) noexcept {
      taps_.keep(job);
      a_.keep(job, Slot::a);
      b_.keep(job, Slot::b);
    }

   private:
    typename Taps::template Of<S> taps_;
    typename NonLinear::template Stage<S, Taps::kNeeds> a_;
    typename Linear::template Stage<S, Taps::kNeeds> b_;
    S inGain_;
  };
};

template <template <class> class Order, class First, class Second, class Third>
inline constexpr Kernels kMorph = kEither<Mixed<Order<MorphTaps<Weights::rest, First, Second, Third>>>,
                                          Mixed<Order<MorphTaps<Weights::glide, First, Second, Third>>>>;

// Low-pass at the lower and high-pass at the upper edge, side by side.
struct BandReject {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : a_(job, Slot::a), b_(job, Slot::b), inGain_(dsp::both<S>(job.coefs.inGain)) {}
    S tap(S y) noexcept {
      const S g = inGain_ * y;
      return twoSteps(a_, Low{}, g) + twoSteps(b_, High{}, g);
    }
    void keep(Job<S>& job) noexcept {
      a_.keep(job, Slot::a);
      b_.keep(job, Slot::b);
    }

   private:
    typename NonLinear::template Stage<S, Needs::nothing> a_;
    typename NonLinear::template Stage<S, Needs::high> b_;
    S inGain_;
  };
};

// The drive stage alone.
struct Bypass {
  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept : drive_(job.coefs) {}
    S operator()(S in) noexcept { return drive_(in); }
    void keep(Job<S>&) noexcept {}

   private:
    DriveStage<S> drive_;
  };
};

// The clean filter: the drive acts as the strength of the cubic only, and the band is limited to +-1. It flushes within
// the step.
template <class Tap, bool kDriven>
struct Clean {
  template <class S>
  [[nodiscard]] static bool appliesTo(const Job<S>& job) noexcept {
    return job.coefs.driveRaw == 0.0f;
  }

  template <class S>
  class Of {
   public:
    explicit Of(Job<S>& job) noexcept
        : low(job.memory.chain[0]),
          band(job.memory.chain[1]),
          high(dsp::both<S>(0.0f)),
          mix_(job.coefs),
          f_(dsp::both<S>(job.coefs.a.f)),
          q_(dsp::both<S>(job.coefs.a.q)),
          drive_(dsp::both<S>(job.coefs.driveRaw)) {}

    S operator()(S in) noexcept {
      constexpr float kInput = 0.9999f;  // just below where the band is cut off
      const S x = dsp::limited(in, -kInput, kInput);
      low += f_ * band;
      const S b = dsp::limited(bent(band + f_ * (x - q_ * band - low), band), -1.0f, 1.0f);
      const S notch = x - q_ * b;
      low += f_ * b;
      high = notch - low;
      band = dsp::limited(flushedBySum(bent(b + f_ * high, b)), -1.0f, 1.0f);
      return mix_(Tap{}(*this), x);
    }

    void keep(Job<S>& job) noexcept {
      job.watch.keep(job.memory.chain[0], low);
      job.watch.keep(job.memory.chain[1], band);
    }

    S low, band, high;

   private:
    [[nodiscard]] S bent(S moved, S from) const noexcept {
      if constexpr (!kDriven) return moved;
      return moved - drive_ * (from * from * from);
    }
    // In single precision throughout, so that traces end on exactly zero.
    [[nodiscard]] static S flushedBySum(S x) noexcept {
      const S offset = dsp::both<S>(dsp::kTrace);
      return (x + offset) - offset;
    }

    MixStage<S> mix_;
    S f_, q_, drive_;
  };
};

template <class Tap>
inline constexpr Kernels kClean = kEither<Clean<Tap, false>, Clean<Tap, true>>;

}  // namespace filters::kernels
