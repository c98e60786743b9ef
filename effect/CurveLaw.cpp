#include "effect/CurveLaw.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// Keeps the law off its poles: at 0 and 1 the exponential is infinitely bent, at 0.5 infinitely long.
double offThePoles(double curve) noexcept {
  if (curve <= 0.0) return 1e-14;
  if (curve == 0.5) return 0.4999999998;
  if (curve >= 1.0) return 0.9999999998;
  return curve;
}

double bend(double curve) noexcept {
  const double t = curve > 0.5 ? 2.0 * (1.0 - curve) : 2.0 * curve;
  const double half = t * t * t / 2.0;
  const double q = curve > 0.5 ? 1.0 - half : half;
  if (q <= 0.0) return 1e-14;
  if (q >= 1.0) return 0.99999999999999;
  return q;
}

// The samples from one X to the next, rounded; held inside what a table can use, which wild X values are not.
int segmentLength(double from, double to) noexcept {
  const double length = to - from + 0.5;
  if (!(length > 0.0)) return 0;
  return static_cast<int>(std::min(length, 2.0 * kGraphTableSize));
}

// Writes one segment behind table index `start`, as far as the table reaches.
void renderSegment(std::span<Shared<float>, kGraphTableSize> table, int start, int length, const CurveCoef& c, float y0,
                   float d) noexcept {
  const int count = std::min(length, kGraphTableSize - 1 - start);
  double p = 1.0;
  for (int j = 1; j <= count; ++j) {
    p *= c.ratio;
    const double y = static_cast<double>(d) - (p - c.end) * static_cast<double>(d) * c.scale + static_cast<double>(y0);
    table[static_cast<std::size_t>(start + j)] = static_cast<float>(1.0 - y);
  }
}

}  // namespace

CurveCoef calcCurveCoef(double curve, int length) noexcept {
  const double q = bend(offThePoles(curve));
  const double k = std::numbers::pi / std::log(1.0 / q - 1.0);
  const double end = std::exp(-2.0 * std::numbers::pi / k);
  const double ratio = length > 0 ? std::exp(-2.0 * std::numbers::pi / (length * k)) : 1.0;
  return {end, 1.0 / (1.0 - end), ratio};
}

void renderGraph(const GraphPoints& points, std::span<Shared<float>, kGraphTableSize> table) noexcept {
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
