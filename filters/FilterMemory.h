// SPDX-License-Identifier: MIT
// What a filter remembers of its signal, for one channel (S = float) or a left/right pair (S = dsp::Quad).
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

#include "filters/FilterCoefs.h"
#include "filters/SampleTypes.h"
#include "filters/VSmoothLog.h"

namespace filters::kernels {

// A ring of frames: left and right side by side in a pair. A position is reduced into it by AND with the mask only.
template <class S>
struct DelayLine {
  float* data = nullptr;
  long size = 0;  // frames, a power of two; 0 while empty
  long mask = -1;

  // Keeps the contents of a line that has the size already; else allocates and zeroes. Lines of one network get a place
  // each: written side by side at addresses a power of two apart, they would push each other out of the cache.
  void resize(long frames, int place = 0) {
    constexpr std::size_t kStagger = 5 * 16;  // floats: five cache lines
    if (size == frames) return;
    const std::size_t offset = static_cast<std::size_t>(place) * kStagger;
    memory_ = std::make_unique<float[]>(offset + static_cast<std::size_t>(frames * dsp::kLanes<S>));
    data = memory_.get() + offset;
    size = frames;
    mask = frames - 1;
  }

  [[nodiscard]] float* slot(long position) const noexcept { return &data[index(position)]; }
  [[nodiscard]] S read(long position) const noexcept { return dsp::loadFrame<S>(slot(position)); }
  void zero() const noexcept { std::fill_n(data, size * dsp::kLanes<S>, 0.0f); }
  void zero(int lane) const noexcept {
    for (long i = 0; i < size; ++i) data[i * dsp::kLanes<S> + lane] = 0.0f;
  }

 private:
  [[nodiscard]] std::size_t index(long position) const noexcept {
    return static_cast<std::size_t>(position & mask) * static_cast<std::size_t>(dsp::kLanes<S>);
  }

  std::unique_ptr<float[]> memory_;
};

inline constexpr int kChainSections = 8;  // of the longest phaser

template <class S>
struct StageMemory {
  S low, band, high, notch;
};

template <class S>
struct ResonatorMemory {
  S y1, y2;
};

// Everything but the delay lines; each field holds one value a channel.
template <class S>
struct SignalMemory {
  StageMemory<S> a, b;
  S chain[kChainSections];      // the last outputs of ladder or all-pass sections; the clean stage's low and band
  S chainPrev[kChainSections];  // the last inputs of those sections
  S previous;                   // the zero-delay ladder's input of the sample before
  S late;                       // what the dry path of combs and flangers gives next
  S back;                       // what comes back from the delays of the low-pass with delay feedback
  S morph[kMorphTaps];
  S held;
  S damp[kCombs];     // low-pass in each loop
  S dcTrack[kCombs];  // slow estimate of each loop's DC
  S inputs[2];        // the resonators' last inputs, newest first
  ResonatorMemory<S> resonator[kResonators];
};

template <class S>
struct DelayLines {
  DelayLine<S> main;
  DelayLine<S> comb[kCombs];
  DelayLine<S> ap[kAllPasses];
};

// What runs on whether or not there is a signal, the same in both channels.
struct FilterClock {
  VSmoothLog delaySmooth{50.0f};  // the delay time in samples, and its glide
  double holdPhase = 0.0;         // 0 to 1
  long writePos = 0;
};

}  // namespace filters::kernels
