// SPDX-License-Identifier: MIT
#include "cli/commands/PresetState.h"

#include <cstddef>
#include <fmt/core.h>
#include <optional>
#include <string_view>

#include "cli/commands/ModriftCalls.h"
#include "cli/files/StoredFiles.h"
#include "cli/terminal/Errors.h"
#include "cli/values/Numbers.h"

using namespace model;

namespace modrift::cli {

void applyPreset(host::Plugin& plugin, const std::string& path) {
  std::vector<std::byte> chunk = readPresetChunk(path);
  // Refusals are negative; what else plug-ins answer means nothing.
  if (plugin.dispatch(effSetChunk, static_cast<VstInt32>(host::ChunkKind::program),
                      static_cast<VstIntPtr>(chunk.size()), chunk.data()) < 0) {
    throw RunError(path + ": a state that this plug-in takes was expected in the preset file");
  }
}

void savePreset(const host::Plugin& plugin, const std::string& path) {
  writePresetFile(path, plugin.chunk(host::ChunkKind::program));
  fmt::print("{}: a preset of version {}\n", path, model::kStateVersion);
}

std::vector<ShapeFile> parseShapes(const std::vector<std::string>& typed) {
  std::vector<ShapeFile> shapes;
  for (const std::string& text : typed) {
    const std::size_t equals = text.find('=');
    const std::optional<int> graph = parseInteger(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || equals + 1 == text.size() || !graph || *graph < 1 || *graph > kGraphs) {
      throw UsageError(
          fmt::format("--shape: GRAPH=FILE with a graph from 1 to {} was expected, not '{}'", kGraphs, text));
    }
    shapes.push_back({*graph, text.substr(equals + 1)});
  }
  return shapes;
}

void applyShape(host::Plugin& plugin, const ShapeFile& shape) {
  setModriftPath(plugin, shape.path, "--shape");
  (void)readGraph(shape.path, std::nullopt);  // the plug-in says nothing of a file that it cannot use
  const float shown = plugin.unlistedParameter(static_cast<VstInt32>(Command::currentGraph));
  command(plugin, Command::currentGraph, valueOfGraph(shape.graph - 1));
  command(plugin, Command::loadShape, 1.0f);
  command(plugin, Command::currentGraph, shown);
}

}  // namespace modrift::cli
