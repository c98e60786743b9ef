// SPDX-License-Identifier: MIT
#include "bench/Measure.h"

#include <cmath>
#include <cstdint>
#include <numbers>

#include "bench/Yardstick.h"

namespace bench {

Stimulus::Stimulus() {
  std::uint64_t seed = 0x9e3779b97f4a7c15u;
  const auto noise = [&seed] {
    seed ^= seed << 13;
    seed ^= seed >> 7;
    seed ^= seed << 17;
    return static_cast<double>(seed >> 11) * 0x1p-53 * 2.0 - 1.0;
  };
  constexpr std::array<double, 2> kPitchHz = {220.0, 331.7};
  for (std::size_t c = 0; c < samples_.size(); ++c) {
    const double step = 2.0 * std::numbers::pi * kPitchHz[c] / kRateHz;
    samples_[c].resize(kFrames);
    for (std::size_t i = 0; i < kFrames; ++i)
      samples_[c][i] = static_cast<float>(0.25 * std::sin(step * static_cast<double>(i)) + 0.125 * noise());
  }
}

Stimulus& stimulus() {
  static Stimulus one;
  return one;
}

double median(Slices slices) {
  if (slices.empty()) return std::nan("");
  const std::size_t above = slices.size() / 2;
  const std::size_t below = (slices.size() - 1) / 2;
  std::sort(slices.begin(), slices.end());
  return 0.5 * (slices[below] + slices[above]);
}

void timeYardstick(Slices& slices) {
  using Clock = std::chrono::steady_clock;
  constexpr int kBlock = 128;
  constexpr int kBlocks = 30;
  constexpr int kSlices = 25;
  static YardstickVoice voice;
  std::array<float, kBlock> left, right;
  float* const out[2] = {left.data(), right.data()};
  for (int s = 0; s < kSlices; ++s) {
    const Clock::time_point start = Clock::now();
    for (std::size_t b = 0; b < kBlocks; ++b) {
      const float* const in[2] = {stimulus().left(b * kBlock, kBlock), stimulus().right(b * kBlock, kBlock)};
      voice.process(in, out, kBlock);
      benchmark::DoNotOptimize(left);
      benchmark::DoNotOptimize(right);
    }
    const std::chrono::duration<double> time = Clock::now() - start;
    slices.push_back(time.count() * 1e9 / (kBlock * kBlocks));
  }
}

void report(benchmark::State& state, const Slices& subject, const Slices& yardstick) {
  const double ns = median(subject);
  state.counters[kNsPerFrame] = ns;
  state.counters[kXYardstick] = ns / median(yardstick);
}

}  // namespace bench
