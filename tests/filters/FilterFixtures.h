// SPDX-License-Identifier: MIT
// Signals and settings for tests of the filter bank.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <vector>

#include "filters/FilterCore.h"

using FilterParams = std::array<float, filters::kFilterParams>;

inline FilterParams filterParams(int type, float cutoff, float resonance, float var, float drive = 0.0f) {
  return {drive, 1.0f, filters::normalisedType(type), cutoff, resonance, var, 1.0f};
}

// The gain of a filter with this answer to an impulse of 1.
inline double gainAt(const std::vector<float>& taps, double cyclesPerSample) {
  const std::complex<double> turn = std::polar(1.0, -2.0 * std::numbers::pi * cyclesPerSample);
  std::complex<double> sum = 0.0, phase = 1.0;
  for (const float tap : taps) {
    sum += static_cast<double>(tap) * phase;
    phase *= turn;
  }
  return std::abs(sum);
}

// White noise from -1 to 1, the same at each run.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed) {}
  float operator()() {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<float>(static_cast<std::int32_t>(state_)) * (1.0f / 2147483648.0f);
  }

 private:
  std::uint32_t state_;
};

// One tick's length and settings.
struct Tick {
  long first, count;
  FilterParams params;
};

// Settings that jump every fifth tick, drive and mix from the middle on; every fourth tick has an odd length, as at the
// end of a host's block.
inline std::vector<Tick> wanderingTicks(int type, long frames) {
  Noise random(static_cast<std::uint32_t>(type) + 7u);
  const auto unit = [&] { return 0.5f + 0.5f * random(); };
  std::vector<Tick> ticks;
  FilterParams params{};
  for (long first = 0; first < frames;) {
    const bool isOdd = ticks.size() % 4 == 3;
    const long count = std::min(isOdd ? 7L : 24L, frames - first);
    const bool isLate = first > frames / 2;
    if (ticks.size() % 5 == 0)
      params = filterParams(type, 0.2f + 0.6f * unit(), 0.8f * unit(), unit(), isLate ? random() : 0.0f);
    if (ticks.size() % 5 == 0 && isLate) params[filters::kDryWet] = 2.0f * unit();
    ticks.push_back({first, count, params});
    first += count;
  }
  return ticks;
}

// White noise at half level.
inline std::vector<float> noise(std::uint32_t seed, long count) {
  Noise next(seed);
  std::vector<float> out(static_cast<std::size_t>(count));
  for (float& x : out) x = 0.5f * next();
  return out;
}

// A filter as the effect runs it: tables for the host's rate, twice that rate for itself, blocks of a tick.
template <class S>
class TestFilter {
 public:
  static constexpr long kBlock = 24;

  explicit TestFilter(const VGlobalCoeffs& tables, float hostRate) : core_(&tables) {
    core_.setSampleRate(2.0f * hostRate, 0.5f / hostRate);
    core_.clear();
  }

  // Frames in place.
  void run(const FilterParams& params, std::vector<float>& frames) {
    const long count = static_cast<long>(frames.size()) / dsp::kLanes<S>;
    for (long i = 0; i < count; i += kBlock) tick(params, frames, i, std::min(kBlock, count - i));
  }
  void tick(const FilterParams& params, std::vector<float>& frames, long first, long count) {
    float* const at = frames.data() + first * dsp::kLanes<S>;
    core_.processBuffer(params.data(), at, at, count);
  }

  [[nodiscard]] const filters::FilterCore<S>& core() const { return core_; }

 private:
  filters::FilterCore<S> core_;
};
