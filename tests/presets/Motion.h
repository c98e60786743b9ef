// Plays presets of the factory set through the effect and measures what moves, how far and how often.
#pragma once

#include <string>

#include "presets/generator/Definitions.h"
#include "tests/effect/TestHost.h"

inline constexpr float kTestRateHz = 48000.0f;
inline constexpr double kTestTempo = 120.0;  // that of the example loop, too

// The one way in which the tests bring a preset into an effect.
void load(const modrift::factory::Preset& preset, EffectRig& rig);
[[nodiscard]] bool takesNotes(const modrift::factory::Preset& preset);

// What is wrong with a movement that a preset promises: empty, or a sentence with what was expected and measured.
[[nodiscard]] std::string faultOf(const modrift::factory::Preset& preset, const modrift::factory::Movement& movement);
