// SPDX-License-Identifier: MIT
#include "cli/files/StoredFiles.h"

#include <cstring>
#include <fmt/core.h>
#include <string_view>
#include <variant>

#include "cli/files/PendingFile.h"
#include "cli/terminal/Errors.h"
#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"

using namespace model;

namespace modrift::cli {
namespace {

std::vector<std::byte> bytesOf(const std::string& path, std::size_t most, const char* what) {
  auto bytes = model::readFile(path, most);
  if (!bytes) throw RunError(fmt::format("{}: {} was expected, a readable one of at most {} bytes", path, what, most));
  return *std::move(bytes);
}

// Shapes before the present form have no mark and any size, so a preset would pass for one.
bool isMarkedAsPreset(std::span<const std::byte> file) {
  constexpr std::string_view kMark = "CcnK";
  return file.size() >= kMark.size() && std::memcmp(file.data(), kMark.data(), kMark.size()) == 0;
}

const char* expectedInstead(model::Refusal refusal) {
  switch (refusal) {
    case model::Refusal::empty:
      return "10 bytes and more";
    case model::Refusal::cutShort:
      return "its whole size";
    case model::Refusal::noVersion:
      break;
  }
  return "a version in it";
}

}  // namespace

std::vector<std::byte> readPresetChunk(const std::string& path) {
  const std::vector<std::byte> file = bytesOf(path, model::kLargestPresetFile, "a preset file");
  const auto chunk = model::chunkOfPreset(file);
  if (!chunk) throw RunError(path + ": a preset file was expected, whole and with a state in it");
  return {chunk->begin(), chunk->end()};
}

model::LoadedState readPreset(const std::string& path) {
  const model::ChunkReading reading = model::readChunk(readPresetChunk(path));
  if (const auto* refusal = std::get_if<model::Refusal>(&reading)) {
    throw RunError(fmt::format("{}: a state of Modrift was expected in the preset file, with {}", path,
                               expectedInstead(*refusal)));
  }
  return std::get<model::LoadedState>(reading);
}

GraphPoints readGraph(const std::string& path, std::optional<int> graph) {
  if (graph) return model::pointsOf(readPreset(path).state, *graph - 1);
  const std::vector<std::byte> file = bytesOf(path, model::kLargestShapeFile, "a shape file");
  if (isMarkedAsPreset(file)) {
    throw RunError(path + ": a shape file was expected, not a preset (shape save --from takes a graph out of one)");
  }
  const auto points = model::readShape(file);
  if (!points) {
    throw RunError(fmt::format("{}: a shape file was expected, which has {} bytes", path, model::kShapeBytes));
  }
  return *points;
}

void writePresetFile(const std::string& path, std::span<const std::byte> chunk) {
  writeFile(path, model::writePreset(chunk));
}

void writeShapeFile(const std::string& path, const GraphPoints& points) { writeFile(path, model::writeShape(points)); }

}  // namespace modrift::cli
