// SPDX-License-Identifier: MIT
// Small steps that all of the graph's files share: indexes, rounding, rectangles. Pure functions.
#pragma once

#include <cmath>
#include <cstddef>

#include "toolkit/base/Geometry.h"

namespace editor {

[[nodiscard]] constexpr std::size_t at(int i) noexcept { return static_cast<std::size_t>(i); }

// Rounded to a float, where a position has always been one, so that points come to lie on the same spots.
[[nodiscard]] constexpr double single(double x) noexcept { return static_cast<double>(static_cast<float>(x)); }

// Whole pixels between two positions, the rest cut off.
[[nodiscard]] inline int wholePixels(double distance) noexcept { return std::abs(static_cast<int>(distance)); }

[[nodiscard]] constexpr VSTGUI::CRect grown(VSTGUI::CRect rect, double margin) noexcept {
  return rect.inset(-margin, -margin);
}

[[nodiscard]] constexpr VSTGUI::CRect around(const VSTGUI::CPoint& center, double half) noexcept {
  return {center.x - half, center.y - half, center.x + half, center.y + half};
}

}  // namespace editor
