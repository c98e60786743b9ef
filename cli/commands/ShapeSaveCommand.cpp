// SPDX-License-Identifier: MIT
#include <fmt/core.h>
#include <variant>

#include "cli/commands/ShapeCommands.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/StoredFiles.h"
#include "cli/terminal/Errors.h"
#include "cli/values/GraphText.h"

using namespace model;

namespace modrift::cli {
namespace {

GraphPoints typedPoints(const std::string& text) {
  const auto parsed = parsePoints(text);
  if (const auto* expected = std::get_if<std::string>(&parsed)) throw UsageError("--points: " + *expected);
  return std::get<GraphPoints>(parsed);
}

}  // namespace

void runShapeSave(const ShapeSaveOptions& options) {
  requireEnding(options.output, ".shp", "-o");
  if (options.points.has_value() == options.preset.has_value()) {
    throw UsageError("--points: either points or a preset (--from) was expected");
  }
  if (options.preset.has_value() != options.graph.has_value()) {
    throw UsageError("--graph: --from and --graph were expected together");
  }
  const GraphPoints points = options.points ? typedPoints(*options.points) : readGraph(*options.preset, options.graph);
  writeShapeFile(options.output, points);
  fmt::print("{}: a shape of {} points\n", options.output, points.lastPoint + 1);
}

}  // namespace modrift::cli
