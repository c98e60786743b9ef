// SPDX-License-Identifier: MIT
// `modrift shape`: shape files shown, made and drawn. One function a command, each in a file of its own.
#pragma once

#include <optional>
#include <string>

namespace modrift::cli {

struct ShapeShowOptions {
  std::string input;
  bool json = false;
};

struct ShapeSaveOptions {
  std::string output;
  std::optional<std::string> points;  // "x y [curve]; ..."
  std::optional<std::string> preset;  // the other way: a preset
  std::optional<int> graph;           // and its graph, 1 to 12
};

struct ShapePlotOptions {
  std::string input;  // a preset where `graph` is given, else a shape
  std::string output;
  std::optional<int> graph;  // 1 to 12
};

// Throws RunError.
void runShapeShow(const ShapeShowOptions& options);

// Throws UsageError and RunError.
void runShapeSave(const ShapeSaveOptions& options);
void runShapePlot(const ShapePlotOptions& options);

}  // namespace modrift::cli
