// SPDX-License-Identifier: MIT
// The whole effect under a playing host: block sizes with only the cutoff modulated, what comes on top,
// and each type of filter.
#include <string>
#include <vector>

#include "bench/BenchHost.h"
#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "effect/ParameterTable.h"

using namespace model;

namespace bench {
namespace {

// A row of the table below: parameters on top of the modulated cutoff, and what parameters do not reach.
struct Variant {
  const char* name;
  std::vector<Parameter> parameters;
  bool withScope = false;
  bool isSilent = false;
};

constexpr int kBlockSizes[] = {1, 12, 13, 64, 128, 512, 4096};
constexpr int kUsualBlock = 128;
constexpr std::size_t kRunInFrames = 96000;  // 2 s: smoothed values have arrived, decaying states are at rest

// A cycle of 16 beats; at the usual rate it is half a beat. The scope fills all places of the graph that a frame
// passes: five and a half of them at the usual rate, one every sixth frame at this one.
constexpr float kSlowRate = 0.2f;

const std::vector<Variant>& variants() {
  static const std::vector<Variant> rows = {
      {"nothing modulated", {{kDepthCut, 0.5f}}},
      {"pan and volume moving", {{kDepthVol, 1.0f}, {kDepthPan, 0.9f}}},
      {"five destinations", {{kDepthRes, 0.8f}, {kDepthVol, 1.0f}, {kDepthPan, 0.9f}, {kDepthVar, 0.8f}}},
      {"crossover", {{kXoverOn, 1.0f}}},
      {"scope", {}, true},
      {"scope, slow rate", {{kRate, kSlowRate}}, true},
      {"silence", {}, false, true},
      {"crossover, silence", {{kXoverOn, 1.0f}}, false, true},
  };
  return rows;
}

std::vector<Parameter> filterOnWith(int type) {
  return {{kFilterOn, 1.0f}, {kFilterType, filters::normalisedType(type)}};
}

void play(benchmark::State& state, int blockFrames, const Variant& variant) {
  BenchHost host;
  host.effect->setParameter(kDepthCut, 0.9f);
  host.set(variant.parameters);
  host.effect->bScopeOn = variant.withScope;
  const auto block = static_cast<std::size_t>(blockFrames);
  std::vector<float> silence(block);
  const auto playAt = [&](std::size_t frame, bool isSilent) {
    host.play(isSilent ? silence.data() : stimulus().left(frame, block),
              isSilent ? silence.data() : stimulus().right(frame, block), frame, block);
  };
  playAt(0, false);
  for (std::size_t frame = 0; frame < kRunInFrames; frame += block) playAt(frame, variant.isSilent);
  measure(state, blockFrames, [&](std::size_t frame) { playAt(frame, variant.isSilent); });
}

}  // namespace

void addWholePathRows() {
  static const Variant kPlain{"filter off", {}};
  for (const int frames : kBlockSizes)
    addRow("whole path/filter off/" + std::to_string(frames),
           [frames](benchmark::State& s) { play(s, frames, kPlain); });
  for (const Variant& variant : variants())
    addRow(std::string("whole path/") + variant.name,
           [&variant](benchmark::State& s) { play(s, kUsualBlock, variant); });
  for (int type = 0; type < filters::kFilterTypes; ++type)
    addRow(std::string("filter/") + filters::typeAt(type).name, [type](benchmark::State& s) {
      play(s, kUsualBlock, {"", filterOnWith(type)});
    });
}

}  // namespace bench
