// SPDX-License-Identifier: MIT
// Brings a preset of the definitions into an effect, through the doors that hosts and the editor use.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "effect/LfoDSP.h"
#include "presets/generator/Definitions.h"

namespace modrift::factory {

// An effect as a host finds it at first, without a host behind it.
[[nodiscard]] std::unique_ptr<LfoDSP> freshEffect();
// Settings and graphs over those of a fresh effect; its tables are rendered then [not during a block].
void apply(const Preset& preset, LfoDSP& effect);

// The state that a host would store of a fresh effect with the preset.
[[nodiscard]] std::vector<std::byte> chunkOf(const Preset& preset);

}  // namespace modrift::factory
