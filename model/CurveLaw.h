// The curve law of a graph's segments, and the rendering of a whole graph into its table.
#pragma once

#include <algorithm>
#include <span>

#include "model/Graph.h"

inline constexpr int kGraphTableSize = 65536;  // samples of a rendered graph

// A segment as a piece of an exponential: position 1 at its left end falls by the factor `ratio` a sample and reaches
// `end` at its right end; `scale` stretches 1 - end to 1.
struct CurveCoef {
  double end;
  double scale;
  double ratio;
};

// `curve` 0 to 1, 0.5 straight; `length` in samples, a length below 1 gives a ratio of 1. The cube inside gives fine
// control near the straight line.
[[nodiscard]] CurveCoef calcCurveCoef(double curve, int length) noexcept;

// The samples from one X to the next, rounded; held inside what a table can use, which wild X values are not.
[[nodiscard]] int segmentLength(double from, double to) noexcept;

// Writes one segment behind table index `start`, as far as the table reaches.
template <class Cell>
void renderSegment(std::span<Cell, kGraphTableSize> table, int start, int length, const CurveCoef& c, float y0,
                   float d) noexcept {
  const int count = std::min(length, kGraphTableSize - 1 - start);
  double p = 1.0;
  for (int j = 1; j <= count; ++j) {
    p *= c.ratio;
    const double y = static_cast<double>(d) - (p - c.end) * static_cast<double>(d) * c.scale + static_cast<double>(y0);
    table[static_cast<std::size_t>(start + j)] = static_cast<float>(1.0 - y);
  }
}

// Renders 1 - Y over the table, whose cells are floats or convert to and from them [any]. Where X falls back or leaves
// the range, the walk stays bounded and inside.
template <class Cell>
void renderGraph(const GraphPoints& points, std::span<Cell, kGraphTableSize> table) noexcept {
  const int last = std::clamp(points.lastPoint, 0, kGraphSlots - 1);
  // Behind the last point nothing follows, whatever the slots there hold.
  const auto xOf = [&](int point) {
    return point < kGraphSlots ? points.x[static_cast<std::size_t>(point)] : kGraphWidth;
  };
  table[0] = static_cast<float>(1.0 - points.y[0]);
  int current = 0;
  double x = xOf(0);
  for (int i = 0; i < kGraphTableSize;) {
    if (i > x) {
      current = std::min(current + 1, last + 1);
      x = xOf(current);
    }
    const int length = segmentLength(x, xOf(current + 1));
    if (length < 2 || x >= kGraphWidth || current > last) {  // a vertical line: the later value takes over by a jump
      if (i > 0) table[static_cast<std::size_t>(i)] = static_cast<float>(table[static_cast<std::size_t>(i - 1)]);
      ++i;
      continue;
    }
    const auto from = static_cast<std::size_t>(current);
    const std::size_t to = std::min(from + 1, points.y.size() - 1);
    const auto y0 = static_cast<float>(points.y[from]);
    const auto d = static_cast<float>(points.y[to] - points.y[from]);
    renderSegment(table, i, length, calcCurveCoef(points.curve[from], length), y0, d);
    i += length;
  }
}
