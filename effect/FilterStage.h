// SPDX-License-Identifier: MIT
// The filter stage of the audio path: up to twice the rate, through the filter, back down, and the mix.
//
// Life: construction (rate changes clear); `prepare` [host, not during a block] makes the filter at the first call and
// tells it the rate at each; `warmUp` once, then `process` tick by tick [audio].
#pragma once

#include <array>
#include <memory>

#include "filters/FilterCore.h"
#include "filters/StereoRateChange.h"

namespace effect {

inline constexpr int kTickFrames = 12;  // host samples between two settings of the filter

// Interleaved frames of one tick: left, right, left, right.
using TickBuffer = std::array<float, 2 * kTickFrames>;

class FilterStage {
 public:
  // `hostRateHz` is above 0.
  void prepare(const VGlobalCoeffs& tables, float hostRateHz);
  // Lets the filter run in, so that the first sound meets settled states.
  void warmUp() noexcept;
  // `params` holds kFilterParams entries; `mix` is the share of the filtered signal; `frames` is 1 to kTickFrames.
  void process(const float* params, float mix, TickBuffer& tick, int frames) noexcept;
  // Clears the rate changes when a NaN or an infinity circulates in them.
  void dropNonFinite() noexcept;

 private:
  static constexpr int kWarmUpFrames = 64;

  void filterTick(const float* params, TickBuffer& tick, int frames) noexcept;

  rspl::StereoUpsampler2 up_;
  rspl::StereoDownsampler2 down_;
  std::unique_ptr<filters::FilterCore<dsp::Quad>> filter_;  // both channels
};

}  // namespace effect
