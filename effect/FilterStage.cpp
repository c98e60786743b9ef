// SPDX-License-Identifier: MIT
#include "effect/FilterStage.h"

#include <algorithm>

namespace effect {

void FilterStage::prepare(const VGlobalCoeffs& tables, float hostRateHz) {
  if (!filter_) filter_ = std::make_unique<filters::FilterCore<dsp::Quad>>(&tables);
  filter_->setSampleRate(2.0f * hostRateHz, 0.5f / hostRateHz);
  filter_->clear();
}

void FilterStage::warmUp() noexcept {
  constexpr float kLastType = 1.0f;
  constexpr std::array<float, filters::kFilterParams> kWarmUpParams = {0.0f, 1.0f, kLastType, 1.0f, 0.001f, 0.0f, 0.0f};
  for (int pass = 0; pass < 2; ++pass) {
    std::array<float, 2 * kWarmUpFrames> silence{};
    filter_->processBuffer(kWarmUpParams.data(), silence.data(), silence.data(), kWarmUpFrames);
  }
}

void FilterStage::process(const float* params, float mix, TickBuffer& tick, int frames) noexcept {
  if (mix >= 1.0f) return filterTick(params, tick, frames);
  const TickBuffer dry = tick;
  filterTick(params, tick, frames);
  const float wet = std::max(mix, 0.0f);
  const auto samples = static_cast<std::size_t>(2 * frames);
  for (std::size_t i = 0; i < samples; ++i) tick[i] = dry[i] * (1.0f - wet) + tick[i] * wet;
}

void FilterStage::filterTick(const float* params, TickBuffer& tick, int frames) noexcept {
  std::array<float, 4 * kTickFrames> twice;
  up_.process(twice.data(), tick.data(), frames);
  filter_->processBuffer(params, twice.data(), twice.data(), 2 * frames);
  down_.process(tick.data(), twice.data(), frames);
  up_.halfBand.flushTraces();
  down_.halfBand.flushTraces();
}

void FilterStage::dropNonFinite() noexcept {
  up_.halfBand.dropNonFinite();
  down_.halfBand.dropNonFinite();
}

}  // namespace effect
