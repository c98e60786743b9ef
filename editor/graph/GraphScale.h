// SPDX-License-Identifier: MIT
// The one way between pixels of a graph on show and the units of stored graphs: X 0 to 65536, Y 0 to 1.
#pragma once

#include "editor/graph/GraphGeometry.h"
#include "model/Graph.h"

namespace editor {

enum class Rounding {
  none,    // of what is rendered, undone and told to hosts
  factor,  // of what goes into the effect and comes from it: over a factor that is a float, as projects have their
           // points. Full precision there would move each of them by some bits.
};

struct GraphScale {
  double width, height;  // of the graph, pixels

  [[nodiscard]] constexpr VSTGUI::CPoint toStored(const VSTGUI::CPoint& pixels, Rounding rounding) const noexcept {
    return {converted(pixels.x, width, model::kGraphWidth, rounding, End::meets),
            converted(pixels.y, height, 1.0, rounding, End::asRounded)};
  }
  [[nodiscard]] constexpr VSTGUI::CPoint toPixels(const VSTGUI::CPoint& stored, Rounding rounding) const noexcept {
    return {converted(stored.x, model::kGraphWidth, width, rounding, End::meets),
            converted(stored.y, 1.0, height, rounding, End::asRounded)};
  }

 private:
  // The right end of a graph meets exactly, or a cycle would end before its last point; the bottom is off by a last
  // bit.
  enum class End { meets, asRounded };

  // `value` out of `from`, as the same share of `to`. All that is lost on the way is lost here.
  [[nodiscard]] static constexpr double converted(double value, double from, double to, Rounding rounding,
                                                  End end) noexcept {
    if (rounding == Rounding::none) return value / from * to;
    if (end == End::meets && value >= from) return to;
    return value * single(to / from);
  }
};

}  // namespace editor
