// SPDX-License-Identifier: MIT
// The curve law of a graph's segments, and the rendering of a whole graph into its table.
#pragma once

#include <algorithm>
#include <functional>
#include <span>

#include "model/Graph.h"

namespace model {

inline constexpr int kGraphTableSize = 65536;  // samples of a rendered graph

// A segment as a piece of an exponential: position 1 at its left end falls by the factor `ratio` per sample and reaches
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

// Writes one segment behind table index `start`, as far as the table reaches. `limit` holds its Y where it is wanted.
template <class Cell, class Limit = std::identity>
void renderSegment(std::span<Cell, kGraphTableSize> table, int start, int length, const CurveCoef& c, double y0,
                   double d, Limit limit = {}) noexcept {
  const int count = std::min(length, kGraphTableSize - 1 - start);
  double p = 1.0;
  for (int j = 1; j <= count; ++j) {
    p *= c.ratio;
    const double y = limit(d - (p - c.end) * d * c.scale + y0);
    table[static_cast<std::size_t>(start + j)] = static_cast<float>(1.0 - y);
  }
}

// Walks a graph from table index 0 on, as its table is filled: `onSegment(i, from, to, length)` for the segment between
// two points that begins behind index i, `onJump(i, from)` for an index that repeats the one before it, where the
// segment from that point is too short to have a sample. Where X falls back or leaves the range, the walk stays bounded
// and inside; `from` may then be the slot behind the last one.
template <class OnSegment, class OnJump>
void walkGraph(const GraphPoints& points, OnSegment onSegment, OnJump onJump) noexcept {
  const int last = std::clamp(points.lastPoint, 0, kGraphSlots - 1);
  // Behind the last point nothing follows, whatever the slots there hold.
  const auto xOf = [&](int point) {
    return point < kGraphSlots ? points.x[static_cast<std::size_t>(point)] : kGraphWidth;
  };
  int current = 0;
  double x = xOf(0);
  for (int i = 0; i < kGraphTableSize;) {
    if (i > x) {
      current = std::min(current + 1, last + 1);
      x = xOf(current);
    }
    const int length = segmentLength(x, xOf(current + 1));
    if (length < 2 || x >= kGraphWidth || current > last) {  // a vertical line: the later value takes over by a jump
      onJump(i, current);
      ++i;
      continue;
    }
    const auto from = static_cast<std::size_t>(current);
    onSegment(i, from, std::min(from + 1, points.y.size() - 1), length);
    i += length;
  }
}

// The index's value in a jump: that of the one before it.
template <class Cell>
void repeatSample(std::span<Cell, kGraphTableSize> table, int i) noexcept {
  if (i > 0) table[static_cast<std::size_t>(i)] = static_cast<float>(table[static_cast<std::size_t>(i - 1)]);
}

// How the graph that plays is rendered: from heights rounded to floats, which every table so far hangs on.
struct PlayedShape {
  static double height(double y) noexcept { return static_cast<double>(static_cast<float>(y)); }
  static double limited(double y) noexcept { return y; }
  static void rendered(std::size_t, std::size_t, int, int) noexcept {}
};

// Renders 1 - Y over the table, whose cells are floats or convert to and from them [any]. A `shape` says how heights
// are rounded, how the law's are limited, and hears of each segment behind table index `start` once it is there.
template <class Cell, class Shape = PlayedShape>
void renderGraph(const GraphPoints& points, std::span<Cell, kGraphTableSize> table, const Shape& shape = {}) noexcept {
  table[0] = static_cast<float>(1.0 - points.y[0]);
  const auto limited = [&](double y) { return shape.limited(y); };
  const auto segment = [&](int start, std::size_t from, std::size_t to, int length) {
    renderSegment(table, start, length, calcCurveCoef(points.curve[from], length), shape.height(points.y[from]),
                  shape.height(points.y[to] - points.y[from]), limited);
    shape.rendered(from, to, start, length);
  };
  walkGraph(points, segment, [&](int i, int) { repeatSample(table, i); });
}

}  // namespace model
