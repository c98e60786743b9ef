// SPDX-License-Identifier: MIT
// Where the program finds what belongs to it.
#pragma once

#include <filesystem>
#include <string>

namespace modrift::cli {

// The plug-in to use: the one that the user named, else the environment's MODRIFT_PLUGIN, else the bundle Modrift.vst
// beside the program's folder. Throws RunError if that is not there.
[[nodiscard]] std::filesystem::path pluginPath(const std::string& named);

// The loop that the run without arguments renders, `share/modrift/example-loop.wav` beside the program's folder.
// Throws RunError if it is not there.
[[nodiscard]] std::filesystem::path exampleLoop();

}  // namespace modrift::cli
