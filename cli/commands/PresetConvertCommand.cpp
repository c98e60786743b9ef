// SPDX-License-Identifier: MIT
#include <fmt/core.h>

#include "cli/commands/PresetCommands.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/StoredFiles.h"

namespace modrift::cli {

void runPresetConvert(const PresetConvertOptions& options) {
  requireEnding(options.output, ".fxp", "NEW");
  const model::LoadedState loaded = readPreset(options.input);
  writePresetFile(options.output, model::writeChunk(loaded.state));
  fmt::print("{} -> {}: version {}{}, now {}\n", options.input, options.output, loaded.version,
             loaded.layout == model::Layout::old ? " in the old layout" : "", model::kStateVersion);
}

}  // namespace modrift::cli
