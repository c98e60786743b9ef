// SPDX-License-Identifier: MIT
// Writes the set's files: all that the generator knows of their bytes is behind these two functions.
//
// Both throw `std::runtime_error` with the path when the file cannot be written.
#pragma once

#include <filesystem>

#include "presets/generator/Definitions.h"

namespace modrift::factory {

void writePreset(const std::filesystem::path& path, const Preset& preset);
void writeShape(const std::filesystem::path& path, const Shape& shape);

}  // namespace modrift::factory
