// SPDX-License-Identifier: MIT
// The grid on the graph: where its cells lie, for its picture, for snapping and for drawing by segments. Pure
// functions.
#pragma once

#include <algorithm>
#include <cmath>

#include "editor/graph/GraphGeometry.h"
#include "model/Graph.h"

namespace editor {

// Cells an axis.
inline constexpr int kMostCells = 32;
inline constexpr int kFreshCells = 8;

[[nodiscard]] constexpr int limitedCells(int cells) noexcept {
  return std::clamp(cells, model::kFewestGridCells, kMostCells);
}

// The parameter's cells.
[[nodiscard]] inline int cellsOf(float parameter) noexcept { return limitedCells(model::gridCells(parameter)); }

struct GraphGrid {
  double width, height;  // of the graph, pixels
  int cells;             // an axis

  [[nodiscard]] double cellWidth() const noexcept { return width / cells; }
  [[nodiscard]] double cellHeight() const noexcept { return height / cells; }

  // How many cells lie between two bright lines.
  [[nodiscard]] int majorStep() const noexcept {
    if (cells == 8) return 4;
    return cells % 4 == 0 ? cells / 4 : cells / 2;
  }

  // The crossing that is nearest, its y on a whole pixel.
  [[nodiscard]] VSTGUI::CPoint nearest(const VSTGUI::CPoint& where) const noexcept {
    return {nearestLine(where.x, width), std::trunc(nearestLine(where.y, height) + 0.5)};
  }

  struct Column {
    double left, right;  // pixels
  };
  // The cells above and below `x`. A column is whole pixels wide, so that its right edge may fall short of the next
  // one.
  [[nodiscard]] Column columnAt(double x) const noexcept {
    const double cell = std::floor(std::clamp(linesBefore(x, width), 0.0, cells - 1.0));
    const double left = single(1.0 / cells * cell * width);
    return {left, std::min(width, left + std::floor(cellWidth()))};
  }

 private:
  [[nodiscard]] double linesBefore(double position, double extent) const noexcept {
    return static_cast<double>(static_cast<float>(position / extent) * static_cast<float>(cells));
  }
  [[nodiscard]] double nearestLine(double position, double extent) const noexcept {
    const int line = static_cast<int>(linesBefore(position, extent) + 0.5);
    return single(line * (1.0 / cells) * extent);
  }
};

}  // namespace editor
