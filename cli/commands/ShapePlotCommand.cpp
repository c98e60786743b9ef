// SPDX-License-Identifier: MIT
#include <filesystem>
#include <fmt/core.h>

#include "cli/commands/ShapeCommands.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/StoredFiles.h"
#include "cli/pictures/GraphPicture.h"

using namespace model;

namespace modrift::cli {

void runShapePlot(const ShapePlotOptions& options) {
  const std::filesystem::path target = pictureTarget(options.input, options.output);
  makeFolder(options.output);
  const GraphPoints points = readGraph(options.input, options.graph);
  std::string title = std::filesystem::path(options.input).stem().string();
  if (options.graph) title += fmt::format(", graph {}", *options.graph);
  PendingFile pending(target);
  writeGraphPicture(pending.path(), points, title);
  pending.commit();
  fmt::print("{} -> {}: {} points\n", options.input, target.string(), points.lastPoint + 1);
}

}  // namespace modrift::cli
