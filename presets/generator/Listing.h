// SPDX-License-Identifier: MIT
// The set as the tables of docs/presets.md.
#pragma once

#include <string>

#include "presets/generator/Definitions.h"

namespace modrift::factory {

[[nodiscard]] std::string listing(const FactorySet& set);

}  // namespace modrift::factory
