// SPDX-License-Identifier: MIT
// Pan and volume by their laws, tick by tick: at rest, and following a graph that moves at each sample.
#include <cmath>

#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "effect/FilterStage.h"
#include "effect/ModulationLaws.h"

using namespace effect;

namespace bench {
namespace {

constexpr float kPanDepth = 0.9f;
constexpr float kVolumeDepth = 1.0f;
constexpr float kKnob = 1.0f;
constexpr std::size_t kGraphValues = 1 << 12;

struct Gains {
  float pan = 0.5f;
  float volume = 1.0f;
  float left = 1.0003273f;
  float right = 1.0003273f;
};

// A triangle from 1 down to 0 and back, as a fresh graph reads.
std::vector<float> triangle() {
  std::vector<float> values(kGraphValues);
  constexpr float kHalf = 0.5f * static_cast<float>(kGraphValues);
  for (std::size_t i = 0; i < kGraphValues; ++i) values[i] = std::abs(static_cast<float>(i) / kHalf - 1.0f);
  return values;
}

TickBuffer tickAt(std::size_t frame) {
  TickBuffer tick;
  const float* const left = stimulus().left(frame, kTickFrames);
  const float* const right = stimulus().right(frame, kTickFrames);
  for (std::size_t j = 0; j < kTickFrames; ++j) {
    tick[2 * j] = left[j];
    tick[2 * j + 1] = right[j];
  }
  return tick;
}

void atRest(benchmark::State& state) {
  Gains gains;
  measure(state, kTickFrames, [&](std::size_t frame) {
    benchmark::DoNotOptimize(gains);
    TickBuffer tick = tickAt(frame);
    for (std::size_t j = 0; j < kTickFrames; ++j) {
      tick[2 * j] *= gains.left;
      tick[2 * j + 1] *= gains.right;
    }
    benchmark::DoNotOptimize(tick);
  });
}

void step(Gains& g, float graph, double smoothing) noexcept {
  const float pan = linearLaw(0.5, depthOf(kPanDepth, kKnob), graph);
  if (g.pan != pan) {
    g.pan = smoothed(g.pan, pan, false, smoothing);
    const dsp::Pair gains = panGains(g.pan);
    g.left = gains[0];
    g.right = gains[1];
  }
  const float volume = volumeLaw(kVolumeDepth, kKnob, graph);
  if (g.volume != volume) g.volume = smoothed(g.volume, volume, false, smoothing);
}

void moving(benchmark::State& state) {
  const std::vector<float> graph = triangle();
  Gains gains;
  double smoothing = gainSmoothing(0.3f);
  measure(state, kTickFrames, [&](std::size_t frame) {
    benchmark::DoNotOptimize(smoothing);
    TickBuffer tick = tickAt(frame);
    for (std::size_t j = 0; j < kTickFrames; ++j) {
      step(gains, graph[(frame + j) % kGraphValues], smoothing);
      tick[2 * j] *= gains.left * gains.volume;
      tick[2 * j + 1] *= gains.right * gains.volume;
    }
    benchmark::DoNotOptimize(tick);
  });
}

}  // namespace

void addGainsRows() {
  addRow("gains/at rest", atRest);
  addRow("gains/pan and volume moving", moving);
}

}  // namespace bench
