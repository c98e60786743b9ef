// The curve law of a graph's segments, and the rendering of a whole graph into its table.
#pragma once

#include <array>
#include <span>

#include "effect/Shared.h"

inline constexpr int kGraphSlots = 65;  // point slots; the last one is not stored
inline constexpr int kStoredSlots = 64;
inline constexpr int kGraphTableSize = 65536;   // samples of a rendered graph
inline constexpr double kGraphWidth = 65536.0;  // X of a graph's last point
// A straight line, as fresh graphs and old files have it: not quite 0.5, where the law has a pole.
inline constexpr double kStraightCurve = 0.4999999701976776;

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

// One graph's points, read off the shared arrays. X rises from 0 to kGraphWidth; Y is upside down, 0 at the top.
struct GraphPoints {
  int lastPoint = 0;  // an index, not a count
  std::array<double, kGraphSlots> x{};
  std::array<double, kGraphSlots> y{};
  std::array<double, kGraphSlots> curve{};
};

// Renders 1 - Y over the table [any]. Where X falls back or leaves the range, the walk stays bounded and inside.
void renderGraph(const GraphPoints& points, std::span<Shared<float>, kGraphTableSize> table) noexcept;
