// SPDX-License-Identifier: MIT
// What a filter type does to sound, measured on the running filter: at twice the host's rate as in the plug-in, in the
// plug-in's ticks, with nothing before and behind it.
#pragma once

#include <span>
#include <vector>

#include "cli/pictures/PowerSpectrum.h"
#include "filters/VFilter.h"

namespace modrift::cli {

// All but the type 0 to 1, as the plug-in's parameters.
struct FilterSettings {
  int type = 0;  // 0 to filters::kFilterTypes - 1
  float cutoff = 0.6f;
  float resonance = 0.5f;
  float var = 0.5f;
  float drive = 0.0f;
};

inline constexpr float kQuietestGainDb = -140.0f;

class FilterMeasurement {
 public:
  static constexpr float kHostRateHz = 44100.0f;
  static constexpr float kImpulse = 0.01f;  // small enough that soft clipping does not matter without drive
  static constexpr double kToneHz = 220.0;
  static constexpr float kToneLevel = 0.5f;

  FilterMeasurement();

  // Whether the type turns sounds into others, so that there is no response to speak of.
  [[nodiscard]] static bool makesNewTones(int type) noexcept;

  // The gain in decibels at each frequency: what an impulse adds to what the filter does without one.
  [[nodiscard]] std::vector<float> response(const FilterSettings& settings, std::span<const double> hz);
  // What comes of a sine, in decibels of full scale: between each frequency and the next the loudest tone.
  [[nodiscard]] std::vector<float> spectrumOfTone(const FilterSettings& settings, std::span<const double> hz);

 private:
  [[nodiscard]] std::vector<float> play(const FilterSettings& settings, std::vector<float> signal) const;

  VGlobalCoeffs tables_;
  PowerSpectrum impulseSpectrum_, toneSpectrum_;
};

}  // namespace modrift::cli
