// SPDX-License-Identifier: MIT
// The rate change round the filter: the pair form of the audio path, tick by tick, and the mono class, twice.
#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "effect/FilterStage.h"
#include "filters/Downsampler2Flt.h"
#include "filters/StereoRateChange.h"

using namespace effect;

namespace bench {
namespace {

constexpr int kBlock = 128;

// The stimulus interleaved as the audio path has it, made outside the timed part; two ticks fit behind each position.
struct InterleavedStimulus {
  InterleavedStimulus() {
    const float* const left = stimulus().left(0, kFrames);
    const float* const right = stimulus().right(0, kFrames);
    for (std::size_t i = 0; i < kFrames; ++i) {
      samples[2 * i] = left[i];
      samples[2 * i + 1] = right[i];
    }
  }
  const float* at(std::size_t frame) const { return samples.data() + 2 * (frame % (kFrames - 2 * kTickFrames)); }

  static constexpr std::size_t kFrames = 1 << 14;
  std::vector<float> samples = std::vector<float>(2 * kFrames);
};

void stereoUp(benchmark::State& state) {
  const InterleavedStimulus in;
  rspl::StereoUpsampler2 up;
  std::array<float, 4 * std::size_t{kTickFrames}> twice;
  measure(state, kTickFrames, [&](std::size_t frame) {
    up.process(twice.data(), in.at(frame), kTickFrames);
    benchmark::ClobberMemory();
  });
}

void stereoDown(benchmark::State& state) {
  const InterleavedStimulus in;
  rspl::StereoDownsampler2 down;
  TickBuffer out;
  measure(state, kTickFrames, [&](std::size_t frame) {
    down.process(out.data(), in.at(2 * frame), kTickFrames);
    benchmark::ClobberMemory();
  });
}

void stereoBoth(benchmark::State& state) {
  const InterleavedStimulus in;
  rspl::StereoUpsampler2 up;
  rspl::StereoDownsampler2 down;
  std::array<float, 4 * std::size_t{kTickFrames}> twice;
  TickBuffer out;
  measure(state, kTickFrames, [&](std::size_t frame) {
    up.process(twice.data(), in.at(frame), kTickFrames);
    down.process(out.data(), twice.data(), kTickFrames);
    benchmark::ClobberMemory();
  });
}

void monoTwice(benchmark::State& state) {
  std::array<rspl::Downsampler2Flt, 2> up, down;
  for (auto* const directions : {&up, &down}) {
    for (rspl::Downsampler2Flt& channel : *directions) {
      channel.set_coefs(rspl::Mydwnspl_coef_arr);
      channel.clear_buffers();
    }
  }
  std::array<float, 2 * std::size_t{kBlock}> twice;
  std::array<float, kBlock> out;
  measure(state, kBlock, [&](std::size_t frame) {
    for (std::size_t c = 0; c < 2; ++c) {
      const float* const in = c == 0 ? stimulus().left(frame, kBlock) : stimulus().right(frame, kBlock);
      up[c].tarnel_upsampleblock(twice.data(), in, kBlock);
      down[c].downsample_block(out.data(), twice.data(), kBlock);
      benchmark::ClobberMemory();
    }
  });
}

}  // namespace

void addRateChangeRows() {
  addRow("rate change/stereo up", stereoUp);
  addRow("rate change/stereo down", stereoDown);
  addRow("rate change/stereo up and down", stereoBoth);
  addRow("rate change/mono class twice, up and down", monoTwice);
}

}  // namespace bench
