// SPDX-License-Identifier: MIT
// Preset and shape files as values.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/Graph.h"
#include "model/StateChunk.h"

namespace modrift::cli {

// The state's bytes inside a preset file, as they are. Throws RunError.
[[nodiscard]] std::vector<std::byte> readPresetChunk(const std::string& path);

// Any version and layout, brought to the present one. Throws RunError.
[[nodiscard]] model::LoadedState readPreset(const std::string& path);

// A graph from 1 to 12 of a preset file, or, without a number, a shape file. Throws RunError.
[[nodiscard]] model::GraphPoints readGraph(const std::string& path, std::optional<int> graph);

// The old file stays until the new one is whole. Throws RunError.
void writePresetFile(const std::string& path, std::span<const std::byte> chunk);
void writeShapeFile(const std::string& path, const model::GraphPoints& points);

}  // namespace modrift::cli
