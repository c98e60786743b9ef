// SPDX-License-Identifier: MIT
// The factory set, as its definitions say it and as the build made it, and a measurement of its presets: what moves,
// how far and how often.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "presets/generator/Definitions.h"

inline constexpr float kTestRateHz = 48000.0f;
inline constexpr double kTestTempo = 120.0;  // that of the example loop, too

[[nodiscard]] const modrift::factory::FactorySet& factorySet();

// The state in the file that the build made of a preset.
[[nodiscard]] std::vector<std::byte> builtChunk(const modrift::factory::Preset& preset);
[[nodiscard]] bool takesNotes(const modrift::factory::Preset& preset);

// What is wrong with a movement that a preset promises: empty, or a sentence with what was expected and measured.
[[nodiscard]] std::string faultOf(const modrift::factory::Preset& preset, const modrift::factory::Movement& movement);
