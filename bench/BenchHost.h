// SPDX-License-Identifier: MIT
// An effect under a host whose song plays at 120 beats a minute, so that a benchmark can play blocks through it.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "bench/Measure.h"
#include "effect/KorvelInDSPEdit.h"
#include "vst2/aeffect.h"

namespace bench {

struct Parameter {
  int index;
  float value;
};

class BenchHost {
 public:
  BenchHost() {
    effect->getAeffect()->resvd1 = reinterpret_cast<VstIntPtr>(this);
    effect->setSampleRate(static_cast<float>(kRateHz));
    effect->resume();
    time_.sampleRate = kRateHz;
    time_.tempo = kTempo;
    time_.flags = kVstTransportPlaying | kVstPpqPosValid | kVstTempoValid;
  }
  BenchHost(const BenchHost&) = delete;
  BenchHost& operator=(const BenchHost&) = delete;

  void set(std::span<const Parameter> parameters) {
    for (const Parameter& p : parameters) effect->setParameter(p.index, p.value);
  }

  // Plays the block at song position `frame` the way a host does, through the effect's record.
  void play(float* left, float* right, std::size_t frame, std::size_t frames) noexcept {
    time_.samplePos = static_cast<double>(frame);
    time_.ppqPos = static_cast<double>(frame) * kBeatsPerFrame;
    AEffect* const record = effect->getAeffect();
    std::array<float*, 2> in = {left, right};
    std::array<float*, 2> out = {left_.data(), right_.data()};
    record->processReplacing(record, in.data(), out.data(), static_cast<VstInt32>(frames));
  }

  const std::unique_ptr<KorvelInDSPEdit> effect = std::make_unique<KorvelInDSPEdit>(answer);

 private:
  static constexpr double kTempo = 120.0;
  static constexpr double kBeatsPerFrame = kTempo / 60.0 / kRateHz;

  static VstIntPtr VSTCALLBACK answer(AEffect* effect, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    // The effect calls before the host could leave its mark.
    auto* const host = effect ? reinterpret_cast<BenchHost*>(effect->resvd1) : nullptr;  // NOLINT: the host's own field
    if (opcode == audioMasterVersion) return kVstVersion;
    if (opcode == audioMasterGetTime && host) return reinterpret_cast<VstIntPtr>(&host->time_);
    return 0;
  }

  VstTimeInfo time_{};
  std::vector<float> left_ = std::vector<float>(effect::kLongestBlock);
  std::vector<float> right_ = std::vector<float>(effect::kLongestBlock);
};

}  // namespace bench
