// SPDX-License-Identifier: MIT
// How a graph's value becomes cutoff, resonance, Var, pan and volume.
//
// A graph value is 0 to 1 and rests at 0.5; a depth is none at 0.5 and turns the graph upside down below it; the depth
// knob scales all depths towards none. The cubes give cutoff and resonance a soft response round the centre.
#pragma once

#include <algorithm>
#include <cmath>

#include "effect/Helpers.h"
#include "filters/Lanes.h"

namespace effect {

inline constexpr float kNoDepth = 0.5f;

[[nodiscard]] inline double depthOf(float depth, float knob) noexcept {
  return 2.0 * (static_cast<double>(depth) - 0.5) * static_cast<double>(knob);
}

[[nodiscard]] inline float cutoffLaw(float cutoff, float depth, float knob, float graph) noexcept {
  const double m = depthOf(depth, knob);
  return static_cast<float>(static_cast<double>(cutoff) + (static_cast<double>(graph) - 0.5) * (2.0 * (m * m * m)));
}

// How much of its old value the smoothed cutoff keeps at a step: always some, never all.
[[nodiscard]] inline double cutoffSmoothing(float lfoSmooth) noexcept {
  constexpr double kLeast = 0.1;
  constexpr double kMost = 0.99;
  return std::min(static_cast<double>(lfoSmooth) + kLeast, kMost);
}

[[nodiscard]] inline float smoothedCutoff(float value, float target, double keep) noexcept {
  return static_cast<float>(
      model::limit01(static_cast<double>(target) * (1.0 - keep) + keep * static_cast<double>(value)));
}

// The cutoff as seven bits, 0 to 127.
[[nodiscard]] inline int controllerValue(float cutoff) noexcept {
  return model::integerPart(static_cast<double>(cutoff) * 127.0 + 0.5);
}

[[nodiscard]] inline double resonanceLaw(float resonance, float depth, float knob, float graph) noexcept {
  const double m = depthOf(depth, knob);
  return static_cast<double>(resonance) + (static_cast<double>(graph) - 0.5) * (m * m * m);
}

// Var and pan: `rest` is the slider, or the middle.
[[nodiscard]] inline float linearLaw(double rest, double depth, float graph) noexcept {
  return static_cast<float>(model::limit01(rest + (static_cast<double>(graph) - 0.5) * depth));
}

// Full depth swings over all of 0 to 1, no depth stands at 1.
[[nodiscard]] inline float volumeLaw(float depth, float knob, float graph) noexcept {
  const double k = static_cast<double>(depth) - 0.5;
  const double knobbed = static_cast<double>(knob);
  return static_cast<float>(
      model::limit01((1.0 - std::abs(k) * knobbed) + (static_cast<double>(graph) - 0.5) * 2.0 * k * knobbed));
}

// Left and right gain for a pan of 0 to 1: a quadratic near to constant power, 1.0003273 at the centre, 1.413 on the
// hard side and 0 on the other.
[[nodiscard]] inline dsp::Pair panGains(float pan) noexcept {
  constexpr dsp::DoublePair kLinear = {static_cast<double>(1.831783f), static_cast<double>(1.831783f)};
  constexpr dsp::DoublePair kSquare = {static_cast<double>(-0.83178306f), static_cast<double>(-0.83178306f)};
  constexpr dsp::DoublePair kScale = {static_cast<double>(1.413f), static_cast<double>(1.413f)};
  const auto p = static_cast<double>(pan);
  const dsp::DoublePair x = {1.0 - p, p};
  return __builtin_convertvector((x * kLinear + x * kSquare * x) * kScale, dsp::Pair);
}

// Factor of the one-pole smoothing of pan and volume, once a block; held to where the pole is stable.
[[nodiscard]] inline double gainSmoothing(float lfoSmooth) noexcept {
  const double open = model::limit01(1.0 - static_cast<double>(lfoSmooth));
  return open * open * open * 0.06;
}

// One step of `value` towards `target`; takes it at once when `atOnce`, and when it has come within 1e-8.
[[nodiscard]] inline float smoothed(float value, float target, bool atOnce, double a) noexcept {
  constexpr double kArrived = 1e-8;
  if (atOnce) return target;
  const auto next = static_cast<float>(static_cast<double>(value) * (1.0 - a) + a * static_cast<double>(target));
  if (std::abs(static_cast<double>(next) - static_cast<double>(target)) < kArrived) [[unlikely]]
    return target;
  return next;
}

}  // namespace effect
