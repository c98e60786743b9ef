// The factory set as its definitions say it, and a measurement of its presets: what moves, how far and how often.
#pragma once

#include <string>

#include "presets/generator/Definitions.h"

inline constexpr float kTestRateHz = 48000.0f;
inline constexpr double kTestTempo = 120.0;  // that of the example loop, too

[[nodiscard]] const modrift::factory::FactorySet& factorySet();

[[nodiscard]] bool takesNotes(const modrift::factory::Preset& preset);

// What is wrong with a movement that a preset promises: empty, or a sentence with what was expected and measured.
[[nodiscard]] std::string faultOf(const modrift::factory::Preset& preset, const modrift::factory::Movement& movement);
