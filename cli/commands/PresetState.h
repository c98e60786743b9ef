// SPDX-License-Identifier: MIT
// Preset and shape files into a plug-in, before it plays, and its state into a preset file.
#pragma once

#include <string>
#include <vector>

#include "host/Plugin.h"

namespace modrift::cli {

// Hands the state in a preset file to the plug-in, as hosts hand over what they stored. Throws RunError.
void applyPreset(host::Plugin& plugin, const std::string& path);

// Stores Modrift's state as a host would, and says so. The old file stays until the new one is whole. Throws RunError.
void savePreset(const host::Plugin& plugin, const std::string& path);

struct ShapeFile {
  int graph = 1;  // 1 to 12
  std::string path;
};

// "GRAPH=FILE" each. Throws UsageError.
[[nodiscard]] std::vector<ShapeFile> parseShapes(const std::vector<std::string>& typed);

// Lets Modrift load the file into the graph. Throws RunError, also for a plug-in that is not Modrift.
void applyShape(host::Plugin& plugin, const ShapeFile& shape);

}  // namespace modrift::cli
