// SPDX-License-Identifier: MIT
// One graph as a PNG: its curve as the plug-in plays it, its points, and a grid in quarters of the cycle and the
// height.
#pragma once

#include <filesystem>
#include <string>

#include "model/Graph.h"

namespace modrift::cli {

// Writes straight to `png`, so callers pass the path of a PendingFile. Throws RunError.
void writeGraphPicture(const std::filesystem::path& png, const model::GraphPoints& points, const std::string& title);

}  // namespace modrift::cli
