// SPDX-License-Identifier: MIT
// What the program may ask of Modrift itself beyond what every host may ask of a plug-in.
#pragma once

#include <optional>
#include <string>

#include "host/Plugin.h"
#include "model/ParameterIndex.h"

namespace modrift::cli {

[[nodiscard]] bool isModrift(const host::Plugin& plugin) noexcept;

// Numbers behind the listed parameters: settings and commands of the plug-in's own editor, up to this count.
inline constexpr VstInt32 kModriftNumbers = model::kParameterRows;
enum class Command : VstInt32 {
  loadShape = model::kLoadShape,        // into the current graph; 1 does it
  currentGraph = model::kCurrentGraph,  // number / 11
  exportMidi = model::kExportMidi,      // 1 at full height, 0 at the cutoff's depth
};

// The file of the next command. Throws RunError, naming `option`, for another plug-in than Modrift and for a path that
// is longer than the plug-in takes.
void setModriftPath(const host::Plugin& plugin, const std::string& path, const std::string& option);

void command(host::Plugin& plugin, Command command, float value);

struct PictureSize {
  int widthPx;
  int heightPx;
};

// Writes the editor's picture as a PNG straight to `path`, without a display, in the size of the state if none is
// given. Throws RunError, also for another plug-in than Modrift.
void drawModriftEditor(const host::Plugin& plugin, const std::string& path, std::optional<PictureSize> size);

}  // namespace modrift::cli
