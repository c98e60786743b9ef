// From pixels of the graph editor to cells, hits and stored units; pure functions. Float where the value has always
// been rounded to one, so that points come to lie on the same spots.
#pragma once

#include <cmath>

#include "model/Graph.h"
#include "toolkit/base/Geometry.h"

namespace graphgeometry {

// Whole pixels between two positions, the rest cut off.
[[nodiscard]] inline int wholePixels(double distance) noexcept { return std::abs(static_cast<int>(distance)); }

// The nearest grid line of `cells` over `extent`.
[[nodiscard]] inline float onGridLine(double position, double extent, int cells) noexcept {
  const auto share = static_cast<float>(position / extent);
  const int line = static_cast<int>(static_cast<double>(share * static_cast<float>(cells)) + 0.5);
  return static_cast<float>(line * (1.0 / cells) * extent);
}

[[nodiscard]] inline double snappedX(double x, double width, int cells) noexcept {
  return static_cast<double>(onGridLine(x, width, cells));
}

// On a whole pixel.
[[nodiscard]] inline double snappedY(double y, double height, int cells) noexcept {
  return std::trunc(static_cast<double>(onGridLine(y, height, cells)) + 0.5);
}

[[nodiscard]] inline VSTGUI::CRect grown(VSTGUI::CRect rect, double margin) noexcept {
  return rect.inset(-margin, -margin);
}

[[nodiscard]] inline VSTGUI::CRect around(const VSTGUI::CPoint& center, double half) noexcept {
  return {center.x - half, center.y - half, center.x + half, center.y + half};
}

// Stored X and Y of a pixel position, and back. The right end of the graph meets exactly.
[[nodiscard]] inline double storedX(double x, double width) noexcept {
  return x >= width ? model::kGraphWidth : x * static_cast<double>(static_cast<float>(model::kGraphWidth / width));
}
[[nodiscard]] inline double storedY(double y, double height) noexcept {
  return y * static_cast<double>(static_cast<float>(1.0 / height));
}
[[nodiscard]] inline double pixelX(double x, double width) noexcept {
  return x >= model::kGraphWidth ? width : x * static_cast<double>(static_cast<float>(width / model::kGraphWidth));
}
[[nodiscard]] inline double pixelY(double y, double height) noexcept {
  return y * static_cast<double>(static_cast<float>(height));
}

}  // namespace graphgeometry
