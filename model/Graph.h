// SPDX-License-Identifier: MIT
// One of the twelve LFO graphs as plain values: a chain of points joined by curved segments.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/Numbers.h"

namespace model {

inline constexpr int kGraphs = 12;
inline constexpr int kLastGraph = kGraphs - 1;
inline constexpr int kGraphSlots = 65;  // point slots; the last one is not stored
inline constexpr int kStoredSlots = 64;
inline constexpr double kGraphWidth = 65536.0;  // X of a graph's last point
// A straight line, as fresh graphs and old files have it: not quite 0.5, where the curve law has a pole.
inline constexpr double kStraightCurve = 0.4999999701976776;

// Old files have their points in pixels of a graph of 388 by 240.
inline constexpr float kPixelWidth = 388.0f;
inline constexpr float kPixelHeight = 240.0f;
inline constexpr float kXPerPixel = static_cast<float>(kGraphWidth) / kPixelWidth;
inline constexpr float kYPerPixel = 1.0f / kPixelHeight;

// X rises from 0 to kGraphWidth; Y is upside down, 0 at the top. Slots behind the last point keep what they had.
struct GraphPoints {
  int lastPoint = 0;  // an index, not a count
  std::array<double, kGraphSlots> x{};
  std::array<double, kGraphSlots> y{};
  std::array<double, kGraphSlots> curve{};
};

// The parameters that choose a graph spread all of them over 0 to 1.
[[nodiscard]] inline int nearestGraph(float value) noexcept {
  return std::clamp(integerPart(static_cast<double>(value) * kLastGraph + 0.5), 0, kLastGraph);
}
[[nodiscard]] constexpr float valueOfGraph(int graph) noexcept {
  return static_cast<float>(graph) / static_cast<float>(kLastGraph);
}

// The snap grid's parameter goes by these steps; cells an axis, 1 to 16. Nobody sees less than two of them.
inline constexpr int kGridSteps = 15;
inline constexpr int kFewestGridCells = 2;
[[nodiscard]] inline int gridStep(float gridSize) noexcept {
  return integerPart(static_cast<double>(gridSize) * kGridSteps + 0.5);
}
[[nodiscard]] inline int gridCells(float gridSize) noexcept { return gridStep(gridSize) + 1; }

// From the top down to the bottom at the middle and back, in straight lines.
[[nodiscard]] constexpr GraphPoints freshGraph() noexcept {
  GraphPoints points;
  points.lastPoint = 2;
  points.x.fill(kGraphWidth);
  points.x[0] = 0.0;
  points.x[1] = kGraphWidth / 2.0;
  points.y[1] = 1.0;
  points.curve.fill(kStraightCurve);
  return points;
}

}  // namespace model
