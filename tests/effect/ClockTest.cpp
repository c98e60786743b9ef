// SPDX-License-Identifier: MIT
// The edges of the clock: one sample at a known beat, and the position it reads. Expected positions are worked out by
// hand from the cycle's length; what the formulas give in between is GoldenTest's.
#include <gtest/gtest.h>

#include "tests/effect/TestHost.h"

using namespace model;

namespace {

// The read position of the sample at `beat`, 120 beats a minute, on the beat clock, after `settings`.
struct ClockCase {
  const char* name;
  double beat, expected;
  std::vector<std::pair<int, double>> settings;
};

constexpr double kDottedStep = 22.5 / 42.0, kTripletStep = 23.5 / 42.0;  // rates between two steps of the divider
constexpr double kDottedBeat = 64.0 / (128 * 1.33333) / 4, kTripletBeat = 64.0 / 192 / 4;

TEST(BeatClock, ReadsThePositionOfTheBeat) {
  const ClockCase kCases[] = {
      {"half a beat by default", 0.125, 0.25, {}},
      {"64 beats at the slowest", 16.0, 0.25, {{kRate, 0.0}}},
      {"a 256th of a beat at the fastest", 3.0 + 1.0 / 1024, 0.25, {{kRate, 1.0}}},
      {"triplet", kTripletBeat, 0.25, {{kRate, kTripletStep}}},
      {"dotted", kDottedBeat, 0.25, {{kRate, kDottedStep}}},
      {"steps are counted in float", kTripletBeat, 0.25, {{kRate, 0.5476190447807312}}},
      {"dotted where triplet is off", kDottedBeat, 0.25, {{kRate, kTripletStep}, {kTriplet, 0.0}}},
      {"no dots on a triplet step of one", 0.125, 0.25, {{kRate, kDottedStep}, {kDotted, 0.0}}},
      {"straight", 0.125, 0.25, {{kRate, kTripletStep}, {kDotted, 0.0}, {kTriplet, 0.0}}},
      {"phase wraps", 57.6, 0.15, {{kRate, 0.0}, {kPhase, 0.25}}},
      {"a whole turn of phase", 0.125, 0.25, {{kPhase, 1.0}}},
      {"a closed gate", 0.125, 0.0, {{kGateMode, 1.0}}},
      {"long before the start", -1000.0, 24.0 / 64.0, {{kRate, 0.0}}},
      {"swung early", 0.125, 0.5, {{kSwing, 0.25}}},
      {"swung early, second cycle", 0.75, 0.5 + 0.5 / 3, {{kSwing, 0.25}}},
      {"no swing", 0.375, 0.375, {{kSwing, 0.0}}},
      {"all swing", 0.375, 0.375, {{kSwing, 1.0}}},
      {"PWM up", 0.125, 0.25 * 0.004 + 0.996 / 4294967296.0, {{kPwm, 1.0}}},
      {"PWM down", 0.125, 0.9870174944, {{kPwm, 0.0}}},
      {"PWM half up", 0.125, 0.25 * 0.502 + 0.498 / 4294967296.0, {{kPwm, 0.75}}},
      {"PWM half down", 0.125, 0.25 * 0.502 + 0.498 * 0.9899774042424, {{kPwm, 0.25}}},
      {"timing late", 0.125, 0.25 + 2048.0 / 22050 * 2, {{kTiming, 0.75}}},
      {"timing early", 0.125 + 2048.0 / 22050, 0.25, {{kTiming, 0.25}}}};
  for (const auto& [name, beat, expected, settings] : kCases) {
    EffectRig rig;
    for (const auto& [index, value] : settings) rig.set(index, value);
    rig.at(beat, 120.0);
    rig.playOnes(1);
    EXPECT_NEAR(rig.fx().lfoPhase, expected, 2e-7) << name;
    const int index = rig.fx().displayIndex;
    EXPECT_NEAR(index, expected * 65535.0, 1.02) << name;
    EXPECT_FLOAT_EQ(rig.fx().displayPos, static_cast<float>(index) * 1.5258789e-5f) << name;
  }
}

}  // namespace
