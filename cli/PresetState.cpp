#include "cli/PresetState.h"

#include <cstdint>
#include <fmt/format.h>
#include <optional>
#include <string_view>

#include "cli/Errors.h"
#include "cli/InputFile.h"
#include "cli/ModriftCalls.h"
#include "cli/Numbers.h"

namespace modrift::cli {
namespace {

// A preset file is a head, whose last number is the size of the state, highest byte first, and the state.
constexpr std::size_t kHeadBytes = 60;
constexpr std::size_t kSizeAt = 56;
constexpr std::uint32_t kMostStateBytes = 4048576;

constexpr std::size_t kShapeBytes = 2056;          // of the present form
constexpr std::size_t kShortestShapeBytes = 1544;  // of the old one
constexpr std::size_t kMostShapeBytes = std::size_t{1} << 20;

constexpr int kGraphs = 12;

std::uint32_t stateBytes(std::string_view file) {
  std::uint32_t size = 0;
  for (const char byte : file.substr(kSizeAt, 4)) size = size << 8 | static_cast<std::uint8_t>(byte);
  return size;
}

}  // namespace

void applyPreset(host::Plugin& plugin, const std::string& path) {
  std::string file = readInputFile(path, kHeadBytes + kMostStateBytes, "a preset file");
  const std::uint32_t size = file.size() > kHeadBytes ? stateBytes(file) : 0;
  if (size < 1 || size > kMostStateBytes || size > file.size() - kHeadBytes) {
    throw RunError(path + ": a preset file was expected, whole and with a state in it");
  }
  // Refusals are negative; what else plug-ins answer means nothing.
  if (plugin.dispatch(effSetChunk, static_cast<VstInt32>(host::ChunkKind::program), static_cast<VstIntPtr>(size),
                      file.data() + kHeadBytes) < 0) {
    throw RunError(path + ": a state that this plug-in takes was expected in the preset file");
  }
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
  const std::size_t size = readInputFile(shape.path, kMostShapeBytes, "a shape file").size();
  if (size < kShortestShapeBytes || size > kMostShapeBytes) {
    throw RunError(fmt::format("{}: a shape file was expected, which has {} bytes", shape.path, kShapeBytes));
  }
  const float shown = plugin.unlistedParameter(static_cast<VstInt32>(Command::currentGraph));
  command(plugin, Command::currentGraph, static_cast<float>(shape.graph - 1) / static_cast<float>(kGraphs - 1));
  command(plugin, Command::loadShape, 1.0f);
  command(plugin, Command::currentGraph, shown);
}

}  // namespace modrift::cli
