// SPDX-License-Identifier: MIT
// How a row is measured: slice after slice of the subject, and slices of the yardstick right before and after.
//
//   void row(benchmark::State& state) {
//     Subject subject;
//     measure(state, 128, [&](std::size_t frame) { subject.play(stimulus().left(frame, 128), ...); });
//   }
//
// The benchmark library decides how many slices a repeat takes and how many repeats there are. A figure is the median
// over slices, which leaves out those during which the scheduler took the processor away; the library's own time, a
// mean, does not.
#pragma once

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

inline constexpr double kRateHz = 48000.0;
inline constexpr int kSliceFrames = 4800;  // far shorter than a scheduler's time slice

// What a row reports, by the library's counters.
inline constexpr char kNsPerFrame[] = "ns_per_frame";
inline constexpr char kXYardstick[] = "x_yardstick";

// Stereo input that is never silent: white noise at -18 dB on two sines at -12 dB, different on left and right. The
// noise keeps every state far from denormal numbers.
class Stimulus {
 public:
  Stimulus();
  // Start of `frames` samples in a row at song position `at`; wraps round within the stored length.
  float* left(std::size_t at, std::size_t frames) noexcept { return from(0, at, frames); }
  float* right(std::size_t at, std::size_t frames) noexcept { return from(1, at, frames); }

 private:
  static constexpr std::size_t kFrames = std::size_t{1} << 17;
  float* from(std::size_t channel, std::size_t at, std::size_t frames) noexcept {
    return samples_[channel].data() + at % (kFrames - frames + 1);
  }
  std::array<std::vector<float>, 2> samples_;
};

[[nodiscard]] Stimulus& stimulus();

// ns per frame, one entry a slice.
using Slices = std::vector<double>;

[[nodiscard]] double median(Slices slices);

// Appends some milliseconds of the yardstick.
void timeYardstick(Slices& slices);

void report(benchmark::State& state, const Slices& subject, const Slices& yardstick);

// Calls `play(frame)` once a block with the song position of its first frame.
template <class Play>
void measure(benchmark::State& state, int blockFrames, Play play) {
  using Clock = std::chrono::steady_clock;
  const int blocks = std::max(1, kSliceFrames / blockFrames);
  const auto block = static_cast<std::size_t>(blockFrames);
  Slices subject, yardstick;
  std::size_t frame = 0;
  timeYardstick(yardstick);
  for ([[maybe_unused]] auto slice : state) {
    const Clock::time_point start = Clock::now();
    for (int b = 0; b < blocks; ++b, frame += block) play(frame);
    benchmark::ClobberMemory();
    const std::chrono::duration<double> time = Clock::now() - start;
    state.SetIterationTime(time.count());
    subject.push_back(time.count() * 1e9 / (blocks * blockFrames));
  }
  timeYardstick(yardstick);
  report(state, subject, yardstick);
}

// Adds a row with the settings that all share. `row` takes the benchmark's state.
template <class Row>
void addRow(const std::string& name, Row row) {
  benchmark::RegisterBenchmark(name.c_str(), row)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

}  // namespace bench
