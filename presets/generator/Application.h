// Brings a preset of the definitions into an effect, through the doors that hosts and the editor use.
#pragma once

#include <memory>

#include "effect/LfoDSP.h"
#include "presets/generator/Definitions.h"

namespace modrift::factory {

// An effect as a host finds it at first, without a host behind it.
[[nodiscard]] std::unique_ptr<LfoDSP> freshEffect();
// Settings and graphs over those of a fresh effect; its tables are rendered then [not during a block].
void apply(const Preset& preset, LfoDSP& effect);

}  // namespace modrift::factory
